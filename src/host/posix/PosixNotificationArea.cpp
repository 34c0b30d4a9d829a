#include "host/posix/PosixNotificationArea.h"

#include <utility>

#include "host/posix/ChildProcess.h"

namespace tessary {

namespace {

constexpr MessageWindow kWindow = 1;
constexpr std::uint32_t kFirstMessageNumber = 0xC000;
constexpr IconHandle kFrames = 12, kFinished = kFrames + 1;

}  // namespace

MessageWindow PosixNotificationArea::OpenWindow(Procedure procedure) {
  procedure_ = std::move(procedure);
  return kWindow;
}

void PosixNotificationArea::CloseWindow(MessageWindow window) {
  if (window == 0) return;
  procedure_ = nullptr;
  posted_.clear();
}

bool PosixNotificationArea::Notify(std::int32_t what, const NotifyIconData& record) {
  if (what == notify::kDelete) {
    terminal_.EraseLine();
    return true;
  }
  if ((record.flags & notify::kFlagInfo) != 0) {
    terminal_.EraseLine();
    Post(notify::kBalloonHide);
    return true;
  }
  return terminal_.ShowLine(ValueOf(record.tip));
}

std::uint32_t PosixNotificationArea::MessageNumber(const std::string&) { return kFirstMessageNumber; }

IconHandle PosixNotificationArea::IconNamed(const std::string& name) {
  for (IconHandle icon = 1; icon <= kFinished; ++icon)
    if (PictureName(icon) == name) return icon;
  return 0;
}

void PosixNotificationArea::StartTimer(std::int32_t milliseconds, std::function<void()> tick) {
  interval_ = milliseconds;
  due_ = MonotonicMilliseconds() + interval_;
  tick_ = std::move(tick);
}

void PosixNotificationArea::RunQueue() {
  if (tick_ && MonotonicMilliseconds() >= due_) {
    due_ = MonotonicMilliseconds() + interval_;
    const auto tick = tick_;  // it may stop the timer
    tick();
  }
  while (!posted_.empty() && procedure_) {
    const std::uint32_t low = posted_.front();
    posted_.pop_front();
    procedure_(notify::kCallbackMessage, 0, low);
  }
}

std::string PosixNotificationArea::PictureName(IconHandle icon) {
  if (icon < 1 || icon > kFinished) return {};
  return icon == kFinished ? "finished" : "working" + std::to_string(icon - 1);
}

std::string ValueOf(const std::string& fixedWidth) { return fixedWidth.substr(0, fixedWidth.find('\0')); }

}  // namespace tessary
