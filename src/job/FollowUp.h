// What a person has asked for once the document is there: programs that are started, and the document shown.
#pragma once

#include <cstdint>
#include <string>

#include "system/Run.h"

namespace tessary {

/// Starts `command` by the machine's command interpreter, hidden, in `folder` or, where that is empty, in the
/// folder of this process. It is not waited for, and lives on when this process ends. "%1" in it stands for
/// `file`, "%2" for `pageCount`, "%3" for `fileCount` (Processes::ShellCommand). Raises kCommon if it cannot be
/// started; what it does then is not looked at.
void RunProgram(Run& run, const std::string& command, const std::string& folder, const std::string& file,
                std::int32_t pageCount, std::int32_t fileCount);

/// Shows the document with its default program. A failure is told in a box, even where errors are suppressed.
/// Always true.
bool ShowDocument(Run& run, const std::string& file);

}  // namespace tessary
