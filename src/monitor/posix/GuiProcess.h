// A spooled job in the hands of `gui`, for programs that have more to do than to wait for it.
#pragma once

#include <string>

#include "host/posix/ChildProcess.h"
#include "host/posix/UniqueFd.h"
#include "monitor/GuiJob.h"

namespace tessary {

/// `gui`, its Ghostscript and its windows run in a session of their own. They all end with this process,
/// however it ends; what `gui` started for the user, such as a reader with the document, runs on.
class GuiProcess {
 public:
  /// Returns at once: the turn of the job's printer instance (RunOnce) is waited for elsewhere. `gui` has the
  /// environment of this process, no input, no output, and the descriptor `errors` as its standard error (-1:
  /// none; messages that nobody sees on a screen go there, and their lines can be anybody's). Fails when there
  /// is no room for another process. For processes of one thread.
  static Result<GuiProcess> Start(Run& run, const GuiJob& job, int errors);

  /// A descriptor that is readable as soon as the job has ended, for poll(2), and stands for its session: a
  /// SIGTERM through it (pidfd_send_signal) ends everything there, whoever sends it.
  [[nodiscard]] int Fd() const { return child_.Fd(); }
  /// The number of the session, and of its process group.
  [[nodiscard]] pid_t Id() const { return child_.Id(); }

  /// Waits for the end.
  GuiOutcome Outcome();

  /// Ends it with everything in its session, waits until that is gone, and removes the temporary files of the
  /// job from the run's temporary folder. A document at the destination is the old one or the new one. Nothing
  /// happens when it has ended.
  void Kill(Run& run);

 private:
  ChildProcess child_;
  UniqueFd problem_;  ///< where the problem is read from
  std::string session_;
};

/// Waits until no process of the group `id` is left, for at most two seconds.
void AwaitGroupGone(pid_t id);

/// Removes the files in `folder` whose names begin with the session's, "<session>_" or "<session>.".
void RemoveSessionFiles(Run& run, const std::string& folder, const std::string& session);

}  // namespace tessary
