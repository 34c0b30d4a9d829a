// The settings of one job on their way to `gui`: the user's own, and over them those that were given for the
// job.
//
// They travel in the run-once file, which the next job of the printer takes, whoever started it. So one job at
// a time has the file: a lock is held from before it is written until `gui` has taken it. Every job goes this
// way, also one without settings of its own, since it would otherwise take the file of another.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/Files.h"
#include "host/Processes.h"
#include "system/Run.h"

namespace tessary {

class RunOnce {
 public:
  /// Waits for its turn and writes the run-once file of the run's instance. A run-once file that another
  /// program has left for the next job is meant for this one and takes the place of the user's settings; the
  /// settings file is made when there is neither. Raises what the settings code raises, or the platform's
  /// error.
  RunOnce(Run& run, const std::vector<std::pair<std::string, std::string>>& settings);
  /// Removes the file if nobody has taken it.
  ~RunOnce();
  RunOnce(const RunOnce&) = delete;
  RunOnce& operator=(const RunOnce&) = delete;

  /// Waits until the file is taken, or `gui` has ended without taking it.
  void AwaitTaken(Process& gui);

 private:
  Run& run_;
  std::unique_ptr<FileLock> lock_;
  std::string file_;
  std::string written_;  ///< bytes of the file
};

}  // namespace tessary
