// The word of the print server that a job is cancelled.
#pragma once

#include "host/Failure.h"
#include "host/posix/UniqueFd.h"

namespace tessary {

/// From its making on the signals that cancel a job do not end the process any more; it has to look. Programs
/// that the process starts are ended by them as always.
class BackendCancel {
 public:
  BackendCancel();

  /// A descriptor that is readable from the moment of the signal on, for poll(2).
  [[nodiscard]] int Fd() const { return signal_.Get(); }
  [[nodiscard]] bool IsDemanded() const;
  /// Waits until `fd` is readable, or at its end. kCancelled if the signal is there first.
  [[nodiscard]] Failure AwaitReadable(int fd) const;

 private:
  UniqueFd signal_;
};

}  // namespace tessary
