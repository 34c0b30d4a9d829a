#include "monitor/posix/AgentClient.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <limits>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include "host/posix/ChildProcess.h"
#include "monitor/posix/AgentSocket.h"
#include "monitor/posix/GuiProcess.h"
#include "system/ExitCodes.h"

namespace tessary {

namespace {

constexpr std::int64_t kWithoutLimit = std::numeric_limits<std::int64_t>::max();

/// One job in the hands of the agent.
class Errand {
 public:
  Errand(Run& run, UniqueFd line, int cancelFd, const AgentNotice& notice)
      : run_(run), line_(std::move(line)), cancelFd_(cancelFd), notice_(notice) {}

  std::optional<GuiOutcome> Await(const GuiJob& job);

 private:
  enum class Event : std::uint8_t { Packet, Cancel, TooLate };

  Event AwaitEvent(const GuiJob& job, std::int64_t deadline);
  /// True if the packet says how the errand has ended; the outcome is set then, or `why_`.
  bool Take(AgentPacket packet);
  void Cancel();
  /// Ends what the agent has started, and waits until it is gone.
  void EndSession(const std::string& session);

  Run& run_;
  UniqueFd line_;
  int cancelFd_;
  const AgentNotice& notice_;
  bool queued_ = false;
  UniqueFd gui_;                 ///< that of GuiProcess, once it was started
  std::string temporaryFolder_;  ///< that of the agent
  std::optional<GuiOutcome> outcome_;
  std::string why_;  ///< there is no outcome
};

/// `gui` cleans up what has lain in the temporary folder for two days; a dialog may wait longer for its user.
void KeepYoung(const GuiJob& job) {
  for (const char* ending : {"", ".pdf"}) utimensat(AT_FDCWD, (job.psFile + ending).c_str(), nullptr, 0);
}

Errand::Event Errand::AwaitEvent(const GuiJob& job, std::int64_t deadline) {
  constexpr std::int64_t kDay = 24 * 3600 * 1000;
  std::array<pollfd, 2> entries{pollfd{line_.Get(), POLLIN, 0}, pollfd{cancelFd_, POLLIN, 0}};
  do {
    if (PollUntil(std::min(deadline, MonotonicMilliseconds() + kDay), entries.data(), entries.size()))
      return entries[1].revents != 0 ? Event::Cancel : Event::Packet;
    KeepYoung(job);
  } while (MonotonicMilliseconds() < deadline);
  return Event::TooLate;
}

bool Errand::Take(AgentPacket packet) {
  const std::vector<std::string>& fields = packet.fields;
  if (fields.empty()) {
    why_ = "the agent went away";
    return true;
  }
  if (fields[0] == "queued") {
    queued_ = true;
    notice_(AgentState::Queued, {});
  } else if (fields[0] == "started" && fields.size() == 2 && packet.fd) {
    gui_ = std::move(packet.fd);
    temporaryFolder_ = fields[1];
    notice_(AgentState::Started, {});
  } else if (fields[0] == "ended" && fields.size() == 3) {
    outcome_ = GuiOutcome{std::atoi(fields[1].c_str()), fields[2]};
    return true;
  } else {
    why_ = fields[0] == "refused" && fields.size() == 2 ? fields[1] : "the agent is not understood";
    return true;
  }
  return false;
}

void Errand::Cancel() {
  // The agent hears of it, and hangs up itself as soon as all is over. On its way may be that it has started.
  shutdown(line_.Get(), SHUT_WR);
  const std::int64_t deadline = MonotonicMilliseconds() + kAnswerMilliseconds;
  pollfd entry{line_.Get(), POLLIN, 0};
  while (PollUntil(deadline, &entry, 1) && !Take(ReceivePacket(line_.Get()))) continue;
  outcome_ = GuiOutcome{exitcodes::kNothingDone, {}};
}

void Errand::EndSession(const std::string& session) {
  for (const int signal : {SIGTERM, SIGCONT}) syscall(SYS_pidfd_send_signal, gui_.Get(), signal, nullptr, 0);
  pollfd entry{gui_.Get(), POLLIN, 0};
  while (!PollUntil(kWithoutLimit, &entry, 1)) continue;
  RemoveSessionFiles(run_, temporaryFolder_, session);
}

std::optional<GuiOutcome> Errand::Await(const GuiJob& job) {
  if (!SendPacket(line_.Get(), JobFields(job))) {
    const std::vector<std::string> answer = ReceivePacket(line_.Get()).fields;
    notice_(AgentState::Without, answer.size() == 2 ? answer[1] : "the agent does not take the job");
    return std::nullopt;
  }
  const std::int64_t deadline = MonotonicMilliseconds() + kAnswerMilliseconds;
  bool over = false, whole = false;
  while (!over) {
    switch (AwaitEvent(job, queued_ ? kWithoutLimit : deadline)) {
      case Event::Packet:
        over = Take(ReceivePacket(line_.Get()));
        whole = over && outcome_;
        break;
      case Event::Cancel:
        Cancel();
        over = true;
        break;
      case Event::TooLate:
        why_ = "the agent does not answer";
        over = true;
    }
  }
  if (gui_ && !whole) EndSession(job.session);
  if (!outcome_) notice_(AgentState::Without, why_);
  return std::move(outcome_);
}

}  // namespace

std::optional<GuiOutcome> PrintThroughAgent(Run& run, const GuiJob& job, int cancelFd,
                                            const AgentNotice& notice) {
  Result<UniqueFd> line = CallAgent();
  if (line.ok()) return Errand(run, std::move(line.value), cancelFd, notice).Await(job);
  notice(AgentState::Without, "there is no agent to ask: " + line.failure.text);
  return std::nullopt;
}

}  // namespace tessary
