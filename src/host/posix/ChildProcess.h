// A child program of this process, as the kernel has it.
#pragma once

#include <cstdint>
#include <functional>
#include <poll.h>
#include <string>
#include <sys/types.h>
#include <vector>

#include "host/Failure.h"
#include "host/posix/UniqueFd.h"

namespace tessary {

/// How a child is started.
struct ChildSetup {
  std::vector<std::string> arguments;  ///< the program's path comes first; PATH is not searched
  std::string folder;                  ///< empty: the folder of this process
  bool hidden = true;         ///< it has no streams that lead anywhere; otherwise it has those of this process
  int output = -1;            ///< if not -1: the descriptor that becomes its standard output
  int error = -1;             ///< the same for its standard error
  bool privateFiles = false;  ///< the files that it makes are for their owner alone
  bool ownSession = false;    ///< it is away from the terminal, and from the signals that come from there
};

/// A child that was started. It runs on when the object goes.
class ChildProcess {
 public:
  ChildProcess() = default;

  /// Fails with the system's reason when the program or the folder is missing or may not be used; no process is
  /// left then.
  static Result<ChildProcess> Start(const ChildSetup& setup);

  /// Starts a copy of this process that does `work` and ends with its result, with a keeper over it (Keeper.h):
  /// the child is the keeper, and ends when the work and all that belongs to it have ended. The copy has all
  /// descriptors of this process. For a process of one thread.
  static Result<ChildProcess> Fork(const std::function<std::int32_t()>& work);

  [[nodiscard]] pid_t Id() const { return id_; }
  /// Readable as soon as the child has ended, for poll(2).
  [[nodiscard]] int Fd() const { return fd_.Get(); }
  /// See Process in host/Processes.h.
  bool Wait(int milliseconds);
  [[nodiscard]] std::int32_t ExitCode() const { return exitCode_; }

  /// Ends a child that has its own session, with everything that it started there, and waits for its end.
  void Kill();
  /// Tells a child to end, one of Fork with all that belongs to it, and waits for its end. Nothing
  /// happens where there is none.
  void End();

 private:
  /// Opens the descriptor of the child that was just started. A child that cannot have one is ended.
  Failure Watch();

  pid_t id_ = 0;
  UniqueFd fd_;
  bool ended_ = false;
  std::int32_t exitCode_ = 0;
};

/// Milliseconds on a clock that never goes back.
std::int64_t MonotonicMilliseconds();

/// poll(2) on `entries` until something happens or the clock of MonotonicMilliseconds reaches `deadline`. False
/// when it is over.
bool PollUntil(std::int64_t deadline, pollfd* entries, unsigned count);

}  // namespace tessary
