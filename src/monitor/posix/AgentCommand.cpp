#include "monitor/posix/AgentCommand.h"

#include <csignal>
#include <fcntl.h>
#include <ostream>
#include <sys/file.h>
#include <sys/signalfd.h>

#include "config/modFolders.h"
#include "host/posix/PosixFailure.h"
#include "monitor/posix/Agent.h"
#include "monitor/posix/AgentDisplay.h"
#include "system/Error.h"

namespace tessary {

namespace {

constexpr const char* kUsage = "usage: tessary-agent [--help]\n";

constexpr const char* kHelp =
    "\n"
    "Shows the dialogs of your print jobs on your desktop. It is started with the\n"
    "session and serves until that ends; without it jobs are printed by the settings,\n"
    "and nothing is asked.\n"
    "\n"
    "Exit code: 0 at the end of the session, or when another one serves already;\n"
    "1 when it cannot serve, 2 for a wrong call.\n";

constexpr int kWaitingCalls = 64;

/// True if the agent that holds the lock serves, or begins to, or hangs; false if this question has made it
/// end.
bool DoesAnotherServe() {
  const Result<UniqueFd> line = CallAgent();
  if (!line.ok() || !SendPacket(line.value.Get(), {kAliveRequest})) return true;
  pollfd entry{line.value.Get(), POLLIN, 0};
  if (!PollUntil(MonotonicMilliseconds() + kAnswerMilliseconds, &entry, 1)) return true;
  return !ReceivePacket(line.value.Get()).fields.empty();
}

/// The lock that only one agent of a user has at a time; no descriptor when another one has it.
Result<UniqueFd> LockAgent(int folder) {
  UniqueFd lock(openat(folder, "agent.lock", O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
  if (!lock) return FailureOf(errno);
  if (flock(lock.Get(), LOCK_EX | LOCK_NB) == 0) return lock;
  if (errno != EWOULDBLOCK) return FailureOf(errno);
  if (DoesAnotherServe()) return UniqueFd();
  if (Restarted([&] { return flock(lock.Get(), LOCK_EX); }) != 0) return FailureOf(errno);
  return lock;
}

/// A descriptor that is readable when one of the signals that end a program has come; they do nothing else
/// then.
UniqueFd SignalDescriptor() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGTERM, SIGHUP, SIGINT}) sigaddset(&signals, signal);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  return UniqueFd(signalfd(-1, &signals, SFD_CLOEXEC));
}

/// Why it cannot serve; empty when it has served, or another one does.
std::string ServeSession(Run& run, const std::function<void(const std::string&)>& log) {
  if (!IsDisplayThere())
    return "there is no display to show anything on: neither WAYLAND_DISPLAY nor DISPLAY leads to one";
  const Result<UniqueFd> folder = OpenAgentFolder(true);
  if (!folder.ok()) return folder.failure.text;
  const UniqueFd stop = SignalDescriptor();
  const Result<UniqueFd> lock = LockAgent(folder.value.Get());
  if (!lock.ok()) return lock.failure.text;
  if (!lock.value) return {};
  Result<UniqueFd> listener = ListenInFolder(folder.value.Get(), kWaitingCalls);
  if (!listener.ok()) return listener.failure.text;
  GetTemporaryFolder(run);  // where there is none no job can be printed
  Agent(run, {std::move(listener.value), stop.Get(), IsDisplayThere, log}).Serve();
  return {};
}

}  // namespace

std::int32_t AgentCommand(Run& run, const std::vector<std::string>& arguments, std::ostream& output,
                          std::ostream& errors) {
  if (arguments.size() == 1 && arguments.front() == "--help") {
    output << kUsage << kHelp;
    return 0;
  }
  if (!arguments.empty()) {
    errors << "tessary-agent: '" << arguments.front() << "' is not understood\n" << kUsage;
    return 2;
  }
  const auto log = [&](const std::string& line) { errors << "tessary-agent: " << line << std::endl; };
  std::string problem;
  try {
    problem = ServeSession(run, log);
  } catch (const Error& error) {
    problem = error.description();
  }
  if (!problem.empty()) log(problem);
  return problem.empty() ? 0 : 1;
}

}  // namespace tessary
