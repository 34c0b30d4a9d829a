// One plain-text trace of what a run did, in a file of its own in the temporary folder.
//
// A record is "YYYY-MM-DD HH:MM:SS, computer, user: message" and CR LF, in the machine's code page. There are
// no levels, and nothing turns the log off; whether the file survives the run is decided at its end (modMain).
#pragma once

#include <string>

#include "system/Run.h"

namespace tessary {

/// `<temporary folder>/<SessionId>_printer.log`. Worked out once, so the session id must be settled by then.
std::string GetLogFileName(Run& run);

/// Removes a log of the same name that an earlier run left. Raises the platform's number with
/// "Error removing old log file. Error " in front.
void RemoveOldLogFile(Run& run);

/// Appends one record. While the file cannot be opened it tries again for 20 seconds, then raises the last
/// failure's number with "Unable to open and append to the log file '" in front; the record carries the time of
/// the call, and later records of the run try only once. Any other failure loses the record in silence.
void WriteLog(Run& run, const std::string& message);

/// WriteLog where a log that cannot be written must not turn into a failure of its own.
void LogQuietly(Run& run, const std::string& message);

}  // namespace tessary
