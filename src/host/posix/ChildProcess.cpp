#include "host/posix/ChildProcess.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/posix/Keeper.h"
#include "host/posix/PosixFailure.h"

namespace tessary {

namespace {

/// What a child is given on its way: its folder, its streams and the signal actions that it starts with.
class SpawnPlan {
 public:
  explicit SpawnPlan(const ChildSetup& setup) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawnattr_init(&attributes_);
    if (!setup.folder.empty()) posix_spawn_file_actions_addchdir_np(&actions_, setup.folder.c_str());
    if (setup.hidden) {
      for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions_, fd, "/dev/null", O_RDWR, 0);
    }
    if (setup.output >= 0) posix_spawn_file_actions_adddup2(&actions_, setup.output, STDOUT_FILENO);
    if (setup.error >= 0) posix_spawn_file_actions_adddup2(&actions_, setup.error, STDERR_FILENO);
    if (setup.hidden) posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);

    // The two signals that this process ignores (PosixMachine) mean something to other programs.
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    sigaddset(&defaults, SIGXFSZ);
    posix_spawnattr_setsigdefault(&attributes_, &defaults);
    const int session = setup.ownSession ? POSIX_SPAWN_SETSID : 0;
    posix_spawnattr_setflags(&attributes_, static_cast<short>(POSIX_SPAWN_SETSIGDEF | session));
  }
  ~SpawnPlan() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;

  /// 0, or a value of errno.
  int Run(pid_t& id, char* const* arguments) const {
    return posix_spawn(&id, arguments[0], &actions_, &attributes_, arguments, environ);
  }

 private:
  posix_spawn_file_actions_t actions_;
  posix_spawnattr_t attributes_;
};

}  // namespace

Result<ChildProcess> ChildProcess::Start(const ChildSetup& setup) {
  if (setup.arguments.empty() || setup.folder.find('\0') != std::string::npos) return PathFailureOf(EINVAL);
  if (Failure failure = CheckPath(setup.arguments.front())) return failure;
  std::vector<char*> arguments;
  for (const std::string& argument : setup.arguments) {
    if (argument.find('\0') != std::string::npos) return PathFailureOf(EINVAL);
    arguments.push_back(const_cast<char*>(argument.c_str()));  // posix_spawn leaves them as they are
  }
  arguments.push_back(nullptr);

  ChildProcess child;
  // A child starts with the mask of this process, and there is no other way to give it one.
  const mode_t mask = setup.privateFiles ? umask(S_IRWXG | S_IRWXO) : 0;
  const int code = SpawnPlan(setup).Run(child.id_, arguments.data());
  if (setup.privateFiles) umask(mask);
  if (code != 0) return PathFailureOf(code);
  if (Failure failure = child.Watch()) return failure;
  return child;
}

Result<ChildProcess> ChildProcess::Fork(const std::function<std::int32_t()>& work) {
  const pid_t parent = getpid();
  ChildProcess child;
  child.id_ = fork();
  if (child.id_ < 0) return FailureOf(errno);
  if (child.id_ == 0) Keep(parent, work);
  if (Failure failure = child.Watch()) return failure;
  return child;
}

Failure ChildProcess::Watch() {
  fd_ = UniqueFd(static_cast<int>(syscall(SYS_pidfd_open, id_, 0)));
  if (fd_) return {};
  Failure failure = FailureOf(errno);
  kill(id_, SIGKILL);
  Restarted([&] { return waitpid(id_, nullptr, 0); });
  return failure;
}

bool ChildProcess::Wait(int milliseconds) {
  pollfd entry{fd_.Get(), POLLIN, 0};
  if (ended_ || !PollUntil(MonotonicMilliseconds() + milliseconds, &entry, 1)) return ended_;
  siginfo_t info{};
  exitCode_ = 255;  // of a child that somebody else has waited for
  if (Restarted([&] { return waitid(P_PID, static_cast<id_t>(id_), &info, WEXITED); }) == 0) {
    exitCode_ = info.si_code == CLD_EXITED ? info.si_status : 128 + info.si_status;
  }
  ended_ = true;
  return true;
}

void ChildProcess::Kill() {
  kill(-id_, SIGKILL);
  Wait(INT_MAX);
}

void ChildProcess::End() {
  if (!fd_) return;
  // It hears the first when the second comes, also while it is stopped.
  for (const int signal : {SIGTERM, SIGCONT}) syscall(SYS_pidfd_send_signal, fd_.Get(), signal, nullptr, 0);
  Wait(INT_MAX);
}

std::int64_t MonotonicMilliseconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

bool PollUntil(std::int64_t deadline, pollfd* entries, unsigned count) {
  while (true) {
    const std::int64_t left = std::clamp<std::int64_t>(deadline - MonotonicMilliseconds(), 0, INT_MAX);
    const int ready = poll(entries, count, static_cast<int>(left));
    if (ready > 0) return true;
    if (ready == 0 || errno != EINTR) return false;
  }
}

}  // namespace tessary
