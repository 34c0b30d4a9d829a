// One end of the line between gui and its helper.
#pragma once

#include "desktop/Messages.h"
#include "host/posix/UniqueFd.h"

namespace tessary {

/// Whole messages over a socket. Once the other end is gone nothing can be sent, and None comes for ever.
class Channel {
 public:
  Channel() = default;
  explicit Channel(UniqueFd socket) : socket_(std::move(socket)) {}

  /// The two ends of a new line, not inherited by children; closed ones when there is no room for them.
  static void MakePair(Channel& one, Channel& other);

  [[nodiscard]] bool IsOpen() const { return static_cast<bool>(socket_); }
  [[nodiscard]] int Fd() const { return socket_.Get(); }
  void Close() { socket_ = {}; }

  /// False when the other end is gone; the line is closed then.
  bool Send(MessageKind kind, const std::string& content = {});
  /// The next message, waited for. None when the other end is gone; the line is closed then.
  Message Receive();
  /// True if a small message would be sent at once.
  [[nodiscard]] bool HasRoom() const;
  /// True if Receive would not wait.
  [[nodiscard]] bool HasMessage() const;

 private:
  bool ReadExactly(char* bytes, std::size_t size);

  UniqueFd socket_;
};

}  // namespace tessary
