// A spooled job on its way through `gui`.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "system/Run.h"

namespace tessary {

struct GuiJob {
  std::string session;  ///< what the names of the job's temporary files and of its log begin with
  std::string psFile;   ///< the spooled job, full path; `gui` leaves it, unless its name begins with `session`
  std::string title;    ///< of the document; any text
  std::string printer;  ///< with the instance in brackets: "PDF Printer [Sales]"
  std::vector<std::pair<std::string, std::string>> settings;  ///< for this job alone; keys in lower case
};

/// What became of a job.
struct GuiOutcome {
  std::int32_t exitCode = 0;  ///< that of `gui` (system/ExitCodes.h); kError when it could not be run
  std::string problem;        ///< why it could not be run, for people; empty when it ran
};

/// Runs `gui`, which lies beside this program, for the job and waits for its end. The run's instance is that of
/// the job's printer. Gives the exit code of `gui`; raises kCommon when it cannot be started, and what the
/// settings code raises.
std::int32_t RunGui(Run& run, const GuiJob& job);

/// What an exit code other than success means to the one who prints.
std::string ExplainExitCode(std::int32_t exitCode);

}  // namespace tessary
