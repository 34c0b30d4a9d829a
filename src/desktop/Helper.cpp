#include "desktop/Helper.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <poll.h>
#include <unistd.h>

#include "host/posix/ChildProcess.h"

namespace tessary {

namespace {

constexpr int kStartMilliseconds = 20000;

bool IsDisplayNamed() {
  constexpr std::array kVariables{"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
  return std::any_of(kVariables.begin(), kVariables.end(), [](const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
  });
}

}  // namespace

bool Helper::Start() {
  if (tried_) return IsRunning();
  tried_ = true;
  if (!IsDisplayNamed() || access(program_.c_str(), X_OK) != 0) return false;

  Channel other;
  Channel::MakePair(channel_, other);
  ChildSetup setup;
  setup.arguments = {program_};
  setup.output = other.Fd();
  if (!channel_.IsOpen() || !ChildProcess::Start(setup).ok()) channel_.Close();
  return IsRunning();
}

Message Helper::SendAndWait(MessageKind kind, const std::string& content) {
  return Send(kind, content) ? Wait() : Message{};
}

Message Helper::Receive() {
  listens_ = true;
  return channel_.Receive();
}

Message Helper::Wait() {
  // A display can take the connection and never answer.
  pollfd entry{channel_.Fd(), POLLIN, 0};
  if (!listens_ && IsRunning() && !PollUntil(MonotonicMilliseconds() + kStartMilliseconds, &entry, 1))
    channel_.Close();
  while (true) {
    Message message = Receive();
    if (message.kind < MessageKind::Notices) return message;
    if (notice) notice(message);
  }
}

void Helper::Pump() {
  while (channel_.HasMessage()) {
    const Message message = Receive();
    if (message.kind > MessageKind::Notices && notice) notice(message);
  }
}

std::string HelperProgram() {
  std::array<char, PATH_MAX> path{};
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
  const std::string program(path.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
  return program.substr(0, program.rfind('/') + 1) + "tessary-desktop";
}

}  // namespace tessary
