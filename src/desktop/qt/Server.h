// The line to gui, as the helper's windows see it.
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <map>

#include "desktop/Channel.h"
#include "desktop/Wire.h"

namespace tessary {

/// Hands every message of gui to its handler. When gui is gone, the process ends.
class Server {
 public:
  explicit Server(Channel line);

  /// `handler` gets the content of the messages of that kind.
  void Handle(MessageKind kind, std::function<void(const std::string& content)> handler) {
    handlers_[kind] = std::move(handler);
  }

  /// Says something without a turn, see MessageKind::Notices.
  void Notify(MessageKind kind, const std::string& content) { channel_.Send(kind, content); }
  /// Gives the turn back to gui. While a form is on the screen this returns when gui has given it away again,
  /// and no user's event comes in between; what gui says meanwhile has been handled then.
  void Say(MessageKind kind, const std::string& content);

  /// True if it is the helper's turn since a message of that kind.
  [[nodiscard]] bool Awaits(MessageKind kind) const { return turn_ == kind; }

  int forms = 0;  ///< on the screen

 private:
  void HandleNext();

  Channel channel_;
  QSocketNotifier notifier_;
  std::map<MessageKind, std::function<void(const std::string&)>> handlers_;
  MessageKind turn_ = MessageKind::None;  // what gave it; None: it is gui's
};

}  // namespace tessary
