#include "desktop/Channel.h"

#include <array>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>

#include "host/posix/ChildProcess.h"

namespace tessary {

namespace {

constexpr std::uint32_t kLargestMessage = 1u << 30;
/// An end that takes nothing for so long hangs, and is given up.
constexpr int kSendMilliseconds = 20000;

struct Head {
  std::uint32_t size = 0;
  MessageKind kind = MessageKind::None;
};

}  // namespace

void Channel::MakePair(Channel& one, Channel& other) {
  std::array<int, 2> ends{-1, -1};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return;
  one = Channel(UniqueFd(ends[0]));
  other = Channel(UniqueFd(ends[1]));
}

bool Channel::Send(MessageKind kind, const std::string& content) {
  const Head head{static_cast<std::uint32_t>(content.size()), kind};
  std::string bytes(sizeof head, '\0');
  std::memcpy(bytes.data(), &head, sizeof head);
  bytes += content;
  std::size_t sent = 0;
  while (IsOpen() && sent < bytes.size()) {
    const ssize_t count = Restarted(
        [&] { return send(Fd(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT); });
    if (count > 0) {
      sent += static_cast<std::size_t>(count);
      continue;
    }
    pollfd entry{Fd(), POLLOUT, 0};
    const bool full = count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
    if (!full || !PollUntil(MonotonicMilliseconds() + kSendMilliseconds, &entry, 1)) Close();
  }
  return IsOpen();
}

Message Channel::Receive() {
  Head head;
  Message message;
  if (!ReadExactly(reinterpret_cast<char*>(&head), sizeof head)) return {};
  if (head.size > kLargestMessage) {
    Close();
    return {};
  }
  message.kind = head.kind;
  message.content.resize(head.size);
  if (!ReadExactly(message.content.data(), message.content.size())) return {};
  return message;
}

bool Channel::HasMessage() const {
  pollfd entry{Fd(), POLLIN, 0};
  return IsOpen() && poll(&entry, 1, 0) > 0;
}

bool Channel::HasRoom() const {
  pollfd entry{Fd(), POLLOUT, 0};
  return IsOpen() && poll(&entry, 1, 0) > 0;
}

bool Channel::ReadExactly(char* bytes, std::size_t size) {
  while (IsOpen() && size > 0) {
    const ssize_t count = Restarted([&] { return read(Fd(), bytes, size); });
    if (count <= 0) {
      Close();
      break;
    }
    bytes += count;
    size -= static_cast<std::size_t>(count);
  }
  return IsOpen();
}

}  // namespace tessary
