#include "monitor/posix/Agent.h"

#include <algorithm>
#include <limits>
#include <sys/socket.h>
#include <vector>

#include "config/modFolders.h"

namespace tessary {

namespace {

constexpr std::size_t kMostClients = 64;

bool HasSomething(int socket) {
  pollfd entry{socket, POLLIN, 0};
  return poll(&entry, 1, 0) > 0;
}

}  // namespace

void Agent::Serve() {
  while (!over_) {
    StartNext();
    if (!over_) Step();
  }
  if (gui_ && HasSomething(gui_->Fd())) FinishCurrent();  // what is done is not to be done again
  KillCurrent();
  queue_.clear();
  newcomers_.clear();
}

void Agent::Step() {
  std::vector<pollfd> watched{
      {parts_.stop, POLLIN, 0}, {parts_.listener.Get(), POLLIN, 0}, {gui_ ? gui_->Fd() : -1, POLLIN, 0}};
  for (const Clients* clients : {&queue_, &newcomers_})
    for (const Client& client : *clients) watched.push_back({client.socket.Get(), POLLIN, 0});
  std::int64_t deadline = std::numeric_limits<std::int64_t>::max();
  for (const Client& client : newcomers_) deadline = std::min(deadline, client.deadline);
  PollUntil(deadline, watched.data(), static_cast<unsigned>(watched.size()));

  over_ = watched[0].revents != 0;
  if (over_) return;
  auto entry = watched.cbegin() + 3;
  // Those in the queue have nothing more to say but that they hang up.
  for (auto client = queue_.begin(); client != queue_.end(); ++entry) {
    const auto current = client++;
    if (entry->revents == 0) continue;
    if (gui_ && current == queue_.begin()) KillCurrent();
    queue_.erase(current);
  }
  for (auto client = newcomers_.begin(); entry != watched.cend(); ++entry) {
    const auto current = client++;
    if (entry->revents != 0)
      TakeRequest(current);
    else if (current->deadline <= MonotonicMilliseconds())
      newcomers_.erase(current);
  }
  if (watched[2].revents != 0 && gui_) FinishCurrent();
  if (watched[1].revents != 0) Admit();
}

void Agent::Admit() {
  while (true) {
    UniqueFd socket(Restarted(
        [&] { return accept4(parts_.listener.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK); }));
    if (!socket) return;
    const std::int64_t user = PeerUser(socket.Get());
    if (user != 0 && user != static_cast<std::int64_t>(geteuid())) {
      parts_.log("a caller of user " + std::to_string(user) + " was turned away");
    } else if (newcomers_.size() + queue_.size() >= kMostClients) {
      SendPacket(socket.Get(), {"refused", std::to_string(kMostClients) + " jobs are waiting already"});
    } else {
      newcomers_.push_back({std::move(socket), MonotonicMilliseconds() + kAnswerMilliseconds, {}});
    }
  }
}

void Agent::TakeRequest(Clients::iterator newcomer) {
  Clients taken;
  taken.splice(taken.end(), newcomers_, newcomer);
  Client& client = taken.front();
  const std::vector<std::string> fields = ReceivePacket(client.socket.Get()).fields;
  if (fields.empty()) return;
  if (fields.front() == kAliveRequest) {
    over_ = !parts_.isUseful();
    if (!over_) SendPacket(client.socket.Get(), {"alive"});
    return;
  }
  std::string problem;
  client.job = JobOfFields(fields, problem);
  if (!problem.empty()) {
    SendPacket(client.socket.Get(), {"refused", problem});
    return;
  }
  if (SendPacket(client.socket.Get(), {"queued"})) queue_.splice(queue_.end(), taken);
}

void Agent::StartNext() {
  // One that did not wait runs its job itself by now.
  while (!gui_ && !queue_.empty() && HasSomething(queue_.front().socket.Get())) queue_.pop_front();
  if (gui_ || queue_.empty()) return;
  over_ = !parts_.isUseful();
  if (over_) return;

  const Client& client = queue_.front();
  Result<GuiProcess> gui = GuiProcess::Start(run_, client.job, STDERR_FILENO);
  if (!gui.ok()) {
    SendPacket(client.socket.Get(), {"refused", gui.failure.text});
    queue_.pop_front();
    return;
  }
  gui_ = std::move(gui.value);
  const std::vector<std::string> started{"started", GetTemporaryFolder(run_)};
  if (SendPacket(client.socket.Get(), started, gui_->Fd())) return;
  KillCurrent();
  queue_.pop_front();
}

void Agent::FinishCurrent() {
  const GuiOutcome outcome = gui_->Outcome();
  SendPacket(queue_.front().socket.Get(), {"ended", std::to_string(outcome.exitCode), outcome.problem});
  gui_.reset();
  queue_.pop_front();
}

void Agent::KillCurrent() {
  if (gui_) gui_->Kill(run_);
  gui_.reset();
}

}  // namespace tessary
