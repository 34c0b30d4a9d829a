// The notification area of a desktop, shown by the helper.
#pragma once

#include <optional>

#include "desktop/Helper.h"
#include "desktop/Messages.h"
#include "host/posix/PosixNotificationArea.h"

namespace tessary {

/// What the helper cannot show goes to `terminal`, also when the display or the helper is lost in between.
///
/// A short job is over before anybody has looked, so the icon comes up when it has been wanted for a moment; a
/// balloon comes at once. Nothing here waits for the helper: what it has no room for is left out.
class ScreenNotificationArea final : public NotificationArea {
 public:
  ScreenNotificationArea(Helper& helper, PosixNotificationArea& terminal);

  MessageWindow OpenWindow(Procedure procedure) override { return terminal_.OpenWindow(std::move(procedure)); }
  void CloseWindow(MessageWindow window) override { terminal_.CloseWindow(window); }
  bool Notify(std::int32_t what, const NotifyIconData& record) override;
  std::uint32_t MessageNumber(const std::string& name) override { return terminal_.MessageNumber(name); }
  ScreenPoint CursorPosition() override { return cursor_; }
  IconHandle IconNamed(const std::string& name) override { return terminal_.IconNamed(name); }
  void StartTimer(std::int32_t milliseconds, std::function<void()> tick) override {
    terminal_.StartTimer(milliseconds, std::move(tick));
  }
  void StopTimer() override { terminal_.StopTimer(); }

  /// What the message queue does for it.
  void RunQueue();

 private:
  enum class Place { Undecided, Screen, Terminal };

  void Decide();
  bool Show();
  void Send(MessageKind kind, const std::string& content);
  void Hear(const Message& message);

  Helper& helper_;
  PosixNotificationArea& terminal_;
  Place place_ = Place::Undecided;
  std::optional<std::int64_t> wantedSince_;  ///< empty: the icon is not wanted
  NotifyIconData record_;                    ///< as it was notified last
  std::string sent_;                         ///< the icon as the helper has it; empty: not shown
  bool balloon_ = false;                     ///< it has been sent, and no end of it has been heard of
  ScreenPoint cursor_;
};

}  // namespace tessary
