// The program that shows things, as gui sees it: started when the first thing has to be shown, and not before.
#pragma once

#include <functional>
#include <string>

#include "desktop/Channel.h"

namespace tessary {

/// The helper of this run. When it cannot be started, or ends for whatever reason, it is not tried again.
class Helper {
 public:
  /// `program` is its full path.
  explicit Helper(std::string program) : program_(std::move(program)) {}
  /// One that runs and listens already, at the other end of `channel`.
  explicit Helper(Channel channel) : tried_(true), listens_(true), channel_(std::move(channel)) {}

  /// True if the helper runs. It is started if it has not been yet, the program is there and so is a display.
  bool Start();
  [[nodiscard]] bool IsRunning() const { return channel_.IsOpen(); }

  /// Says something to a helper that runs; nothing otherwise. False if it is gone.
  bool Send(MessageKind kind, const std::string& content = {}) { return channel_.Send(kind, content); }
  /// True if a small message would reach the helper without a wait.
  [[nodiscard]] bool HasRoom() const { return channel_.HasRoom(); }
  /// Gives the turn away with a message and waits until it comes back. None if the helper is gone.
  Message SendAndWait(MessageKind kind, const std::string& content = {});
  /// Waits for the turn. None if the helper is gone, or has not reached its display within 20 seconds.
  Message Wait();
  /// Handles the notices that wait, and returns. Costs nothing before the helper has been started.
  void Pump();

  std::function<void(const Message&)> notice{};  ///< takes what comes without a turn

 private:
  Message Receive();

  std::string program_;
  bool tried_ = false;
  bool listens_ = false;  ///< it has said something
  Channel channel_;
};

/// The path of the helper: beside the running program.
std::string HelperProgram();

}  // namespace tessary
