// The notification area of a machine without a display: the tool tip is a line on the terminal, and nobody sees
// a balloon. Its window, its timer and its pictures serve a screen's notification area as well.
#pragma once

#include <deque>

#include "host/NotificationArea.h"
#include "host/posix/Terminal.h"

namespace tessary {

class PosixNotificationArea final : public NotificationArea {
 public:
  explicit PosixNotificationArea(Terminal& terminal) : terminal_(terminal) {}

  MessageWindow OpenWindow(Procedure procedure) override;
  void CloseWindow(MessageWindow window) override;
  bool Notify(std::int32_t what, const NotifyIconData& record) override;
  std::uint32_t MessageNumber(const std::string& name) override;
  ScreenPoint CursorPosition() override { return {}; }
  IconHandle IconNamed(const std::string& name) override;
  void StartTimer(std::int32_t milliseconds, std::function<void()> tick) override;
  void StopTimer() override { tick_ = nullptr; }

  /// Lets the window hear of something, see NotifyIconData, when the message queue runs.
  void Post(std::uint32_t low) { posted_.push_back(low); }
  /// What the message queue does for it.
  void RunQueue();
  /// The name of a picture of IconNamed; empty for 0.
  static std::string PictureName(IconHandle icon);

 private:
  Terminal& terminal_;
  Procedure procedure_;
  std::deque<std::uint32_t> posted_;
  std::function<void()> tick_;
  std::int64_t interval_ = 0;
  std::int64_t due_ = 0;
};

/// The value of a text of fixed width.
std::string ValueOf(const std::string& fixedWidth);

}  // namespace tessary
