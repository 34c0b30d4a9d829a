// The report of a job for the program that ordered it.
//
// The file has the form of an INI file with the sections "Status", "Files" and "PDF Printer", but its text is
// stored as it was in memory once: 16-bit units, the low byte first, without a byte-order mark. Readers count
// on that. It holds all settings of the job, the passwords too.
#pragma once

#include <cstdint>
#include <string>

#include "config/modConfig.h"
#include "system/Run.h"

namespace tessary {

/// Writes the file that the setting `statusfile` names, in one step, so that a program may wait for it; does
/// nothing when there is none. A new file is for its owner alone. `fileList` holds the lines "  File1=…" of the
/// documents, parted by CR LF. Raises the platform's number with "Error writing status file '" in front.
void WriteStatusFile(Run& run, bool success, const Settings& config, std::int32_t pageCount,
                     std::int32_t fileCount, const std::string& fileList);

}  // namespace tessary
