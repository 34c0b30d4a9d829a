#include "desktop/ScreenNotificationArea.h"

#include "desktop/Wire.h"
#include "host/posix/ChildProcess.h"

namespace tessary {

namespace {

constexpr std::int64_t kMomentMilliseconds = 300;

}  // namespace

ScreenNotificationArea::ScreenNotificationArea(Helper& helper, PosixNotificationArea& terminal)
    : helper_(helper), terminal_(terminal) {
  helper_.notice = [this](const Message& message) { Hear(message); };
}

bool ScreenNotificationArea::Notify(std::int32_t what, const NotifyIconData& record) {
  record_ = record;
  if (what == notify::kDelete) {
    if (!sent_.empty()) Send(MessageKind::HideTray, {});
    sent_.clear();
    wantedSince_.reset();
    balloon_ = false;
    return terminal_.Notify(what, record);
  }
  if (!wantedSince_) wantedSince_ = MonotonicMilliseconds();
  balloon_ = balloon_ || (record.flags & notify::kFlagInfo) != 0;
  if (place_ == Place::Undecided && (balloon_ || helper_.IsRunning())) Decide();
  return Show();
}

void ScreenNotificationArea::RunQueue() {
  if (place_ == Place::Undecided && wantedSince_ &&
      MonotonicMilliseconds() - *wantedSince_ >= kMomentMilliseconds) {
    Decide();
    Show();
  }
  if (place_ == Place::Screen && !helper_.IsRunning()) {
    place_ = Place::Terminal;
    if (balloon_) record_.flags |= notify::kFlagInfo;
    if (wantedSince_) Show();
  }
  terminal_.RunQueue();
}

void ScreenNotificationArea::Decide() { place_ = helper_.Start() ? Place::Screen : Place::Terminal; }

bool ScreenNotificationArea::Show() {
  if (place_ == Place::Terminal) return terminal_.Notify(notify::kModify, record_);
  if (place_ == Place::Undecided) return true;
  const std::string icon =
      wire::Encode(TrayIconRequest{PosixNotificationArea::PictureName(record_.icon), ValueOf(record_.tip)});
  if (icon != sent_) Send(MessageKind::ShowTray, icon);
  sent_ = icon;
  if ((record_.flags & notify::kFlagInfo) != 0)
    Send(MessageKind::ShowBalloon,
         wire::Encode(BalloonRequest{ValueOf(record_.infoTitle), ValueOf(record_.info)}));
  return true;
}

void ScreenNotificationArea::Send(MessageKind kind, const std::string& content) {
  if (helper_.HasRoom()) helper_.Send(kind, content);
}

void ScreenNotificationArea::Hear(const Message& message) {
  if (message.kind != MessageKind::TrayEvent) return;
  const auto event = wire::Decode<TrayEvent>(message.content);
  cursor_ = {event.x, event.y};
  if (event.what == notify::kBalloonHide || event.what == notify::kBalloonTimeOut ||
      event.what == notify::kBalloonClick)
    balloon_ = false;
  terminal_.Post(event.what);
}

}  // namespace tessary
