#include "monitor/posix/BackendCancel.h"

#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>

#include "host/posix/PosixFailure.h"

namespace tessary {

namespace {

Failure Cancelled() { return {failures::kCancelled, "was cancelled"}; }

}  // namespace

BackendCancel::BackendCancel() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&signals, signal);
  signal_ = UniqueFd(signalfd(-1, &signals, SFD_CLOEXEC));
  if (signal_) sigprocmask(SIG_BLOCK, &signals, nullptr);  // otherwise they end the process, as is usual
}

bool BackendCancel::IsDemanded() const {
  pollfd entry{signal_.Get(), POLLIN, 0};
  return Restarted([&] { return poll(&entry, 1, 0); }) > 0;
}

Failure BackendCancel::AwaitReadable(int fd) const {
  pollfd entries[] = {{signal_.Get(), POLLIN, 0}, {fd, POLLIN, 0}};
  if (Restarted([&] { return poll(entries, 2, -1); }) < 0) return FailureOf(errno);
  return entries[0].revents != 0 ? Cancelled() : Failure();
}

}  // namespace tessary
