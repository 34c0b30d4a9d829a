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

  /// A descriptor that is readable as soon as all has ended, for poll(2). A SIGTERM through it
  /// (pidfd_send_signal) ends it, whoever sends it.
  [[nodiscard]] int Fd() const { return child_.Fd(); }

  /// Waits for the end.
  GuiOutcome Outcome();

  /// Ends it, waits until `gui` and its own are gone, and removes the temporary files of the job from the run's
  /// temporary folder. A document at the destination is the old one or the new one. Nothing happens when it has
  /// ended.
  void Kill(Run& run);

 private:
  ChildProcess child_;
  UniqueFd problem_;  ///< where the problem is read from
  std::string session_;
};

/// Removes the files in `folder` whose names begin with the session's, "<session>_" or "<session>.".
void RemoveSessionFiles(Run& run, const std::string& folder, const std::string& session);

}  // namespace tessary
