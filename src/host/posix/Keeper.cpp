#include "host/posix/Keeper.h"

#include <cstdlib>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/posix/UniqueFd.h"

namespace tessary {

namespace {

constexpr int kSignalBase = 128;

/// Ends the processes of the group and waits until they are gone. Those that lose their parent are children of
/// this process.
void EndGroup(pid_t group) {
  kill(-group, SIGKILL);
  while (Restarted([&] { return waitpid(-group, nullptr, 0); }) > 0) continue;
}

/// The exit code of `worker` if it has ended, otherwise -1. Only the others that have ended are taken off the
/// list of processes: the number of the worker's group must stay its own.
std::int32_t LookForEnd(pid_t worker) {
  while (true) {
    siginfo_t info{};
    if (waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid == 0) return -1;
    if (info.si_pid == worker)
      return info.si_code == CLD_EXITED ? info.si_status : kSignalBase + info.si_status;
    waitpid(info.si_pid, nullptr, 0);
  }
}

}  // namespace

void Keep(pid_t parent, const std::function<std::int32_t()>& work) {
  sigset_t heard, none;
  sigemptyset(&none);
  sigemptyset(&heard);
  sigaddset(&heard, SIGTERM);
  sigaddset(&heard, SIGCHLD);
  sigprocmask(SIG_SETMASK, &heard, nullptr);
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  if (setsid() < 0 || getppid() != parent) _exit(EXIT_FAILURE);  // it was over before there was a signal

  const pid_t worker = fork();
  if (worker < 0) _exit(EXIT_FAILURE);
  if (worker == 0) {
    setpgid(0, 0);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    _exit(work());
  }
  setpgid(worker, worker);  // whichever of the two comes first
  while (true) {
    const int signal = Restarted([&] { return sigwaitinfo(&heard, nullptr); });
    const std::int32_t code = signal == SIGTERM ? kSignalBase + SIGKILL : LookForEnd(worker);
    if (code < 0) continue;
    EndGroup(worker);
    _exit(code);
  }
}

}  // namespace tessary
