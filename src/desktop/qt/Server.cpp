#include "desktop/qt/Server.h"

#include <unistd.h>

namespace tessary {

Server::Server(Channel line) : channel_(std::move(line)), notifier_(channel_.Fd(), QSocketNotifier::Read) {
  QObject::connect(&notifier_, &QSocketNotifier::activated, [this] {
    while (channel_.HasMessage()) HandleNext();
  });
}

void Server::Say(MessageKind kind, const std::string& content) {
  turn_ = MessageKind::None;
  channel_.Send(kind, content);
  while (turn_ == MessageKind::None && forms > 0) HandleNext();
}

void Server::HandleNext() {
  const Message message = channel_.Receive();
  // Nobody is left to answer to, and an orderly end could wait for a dialog in a loop of its own.
  if (message.kind == MessageKind::None) _exit(0);
  if (message.kind <= MessageKind::Resume) turn_ = message.kind;
  const auto found = handlers_.find(message.kind);
  if (found != handlers_.end()) found->second(message.content);
}

}  // namespace tessary
