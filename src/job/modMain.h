// The entry point: one run of the program converts one job, shows one message, or edits one instance's
// settings. It decides which from the command line alone, and holds the one error handler of the run.
#pragma once

#include <cstdint>
#include <string>

#include "system/ExitCodes.h"
#include "system/Run.h"

namespace tessary {

/// One whole run, from the host's command line to the clean-up. Returns one of `exitcodes`.
std::int32_t Main(Run& run);

/// Removes the session's temporary files and every plain file of the temporary folder that is older than two
/// days. Files that cannot be removed stay, without a word. With `keepLogs` the session's ".log" files stay;
/// with the setting `debug` all of the session's files do; in a debug run nothing is removed.
void CleanupSessionFiles(Run& run, bool keepLogs);

/// True if the machine's settings refuse the settings dialog.
bool IsOptionDialogDisabled(Run& run);

/// Opens the vendor's page for a missing component, with the version of the system in its address.
void OpenScriptingDownloadPage(Run& run, const std::string& context);

}  // namespace tessary
