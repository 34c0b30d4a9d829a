// The notification area and the windows of the simulated machine.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/NotificationArea.h"
#include "host/WindowManager.h"
#include "tests/support/SimulatedClock.h"

namespace tessary {

class SimulatedNotificationArea : public NotificationArea {
 public:
  explicit SimulatedNotificationArea(SimulatedClock& clock) : clock_(clock) {}

  struct Notification {
    std::int32_t what;
    NotifyIconData record;
    std::int64_t at;  ///< in ticks of the clock
  };
  std::vector<Notification> notified;
  bool windowFails = false;
  std::optional<std::int64_t> balloonMs = 0;  ///< how long a balloon stays; empty: as long as the icon
  int openWindows = 0;
  bool iconIsThere = false;
  std::vector<std::string> messageNames;  ///< those asked for so far; their numbers begin at 49152
  ScreenPoint cursor;

  /// The user, or the desktop, does something to the icon: `low` of the callback message. It arrives when the
  /// message queue runs.
  void Post(std::uint32_t low, std::uint32_t message = notify::kCallbackMessage) {
    posted_.emplace_back(message, low);
  }

  /// What the message queue does.
  void RunQueue() {
    if (tick_ && clock_.Ticks() >= due_) {
      due_ = clock_.Ticks() + interval_;
      const auto tick = tick_;
      tick();
    }
    for (; !posted_.empty(); posted_.pop_front())
      if (procedure_) procedure_(posted_.front().first, 0, posted_.front().second);
  }

  MessageWindow OpenWindow(Procedure procedure) override {
    if (windowFails) return 0;
    procedure_ = std::move(procedure);
    ++openWindows;
    return 4711;
  }
  void CloseWindow(MessageWindow window) override {
    if (window == 0) return;
    --openWindows;
    procedure_ = nullptr;
  }
  bool Notify(std::int32_t what, const NotifyIconData& record) override {
    notified.push_back({what, record, clock_.Ticks()});
    if (record.window == 0) return false;
    iconIsThere = what != notify::kDelete;
    if (iconIsThere && (record.flags & notify::kFlagInfo) != 0 && balloonMs)
      clock_.After(*balloonMs, [this] { Post(notify::kBalloonHide); });
    clock_.Advance(0);
    return true;
  }
  std::uint32_t MessageNumber(const std::string& name) override {
    messageNames.push_back(name);
    return static_cast<std::uint32_t>(49151 + messageNames.size());
  }
  ScreenPoint CursorPosition() override { return cursor; }
  /// 100 to 111 for the frames, 200 for the check mark.
  IconHandle IconNamed(const std::string& name) override {
    return name == "finished" ? 200 : 100 + std::stoi(name.substr(std::string("working").size()));
  }
  void StartTimer(std::int32_t milliseconds, std::function<void()> tick) override {
    interval_ = milliseconds;
    due_ = clock_.Ticks() + interval_;
    tick_ = std::move(tick);
  }
  void StopTimer() override { tick_ = nullptr; }

 private:
  SimulatedClock& clock_;
  Procedure procedure_;
  std::deque<std::pair<std::uint32_t, std::uint32_t>> posted_;
  std::function<void()> tick_;
  std::int64_t interval_ = 0;
  std::int64_t due_ = 0;
};

class SimulatedWindows : public WindowManager {
 public:
  std::int64_t foreground = 0;
  bool refuses = false;    ///< SetForeground fails
  bool minimised = false;  ///< every window is
  std::string calls;       ///< what was asked, one after the other

  std::int64_t ForegroundWindow() override { return foreground; }
  /// A thread for every hundred of windows.
  std::uint32_t ThreadOfWindow(std::int64_t window) override {
    return static_cast<std::uint32_t>(window / 100);
  }
  bool AttachInput(std::uint32_t thread, std::uint32_t other, bool attach) override {
    calls += (attach ? "attach " : "detach ") + std::to_string(thread) + " " + std::to_string(other) + "; ";
    return true;
  }
  bool SetForeground(std::int64_t window) override {
    calls += "foreground " + std::to_string(window) + "; ";
    if (!refuses) foreground = window;
    return !refuses;
  }
  bool IsMinimised(std::int64_t) override { return minimised; }
  void Show(std::int64_t window, std::int32_t mode) override {
    calls += "show " + std::to_string(window) + " " + std::to_string(mode) + "; ";
  }
  std::int32_t SetPosition(std::int64_t window, std::int64_t place, std::int32_t left, std::int32_t top,
                           std::int32_t width, std::int32_t height, std::uint32_t flags) override {
    calls += "position " + std::to_string(window) + " " + std::to_string(place) + " " +
             std::to_string(left + top + width + height) + " " + std::to_string(flags) + "; ";
    return 1;
  }
};

}  // namespace tessary
