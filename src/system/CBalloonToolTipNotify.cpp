#include "system/CBalloonToolTipNotify.h"

#include <utility>

namespace tessary {

namespace {

constexpr std::uint32_t kFirstTimeOut = 3;

bool StartsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

/// `text`, a NUL, and blanks up to `width` characters; a longer text is cut there.
std::string FixedWidth(std::string text, std::size_t width) {
  text += '\0';
  std::size_t count = 0, at = 0;
  for (; at < text.size(); ++at)
    if (StartsCharacter(text[at]) && ++count > width) break;
  text.resize(at);
  if (count < width) text.append(width - count, ' ');
  return text;
}

template <typename Event, typename... Values>
void Raise(const Event& event, Values... values) {
  if (event) event(values...);
}

}  // namespace

CBalloonToolTipNotify::CBalloonToolTipNotify(Run& run) : run_(run) {
  NotificationArea& area = run_.host.notificationArea;
  record_.window = area.OpenWindow([this](std::uint32_t message, std::int64_t, std::int64_t low) {
    // Nothing else is passed on, the news of a restarted task bar included: the icon is lost then.
    if (message == notify::kCallbackMessage) Receive(message, low);
  });
  record_.flags = notify::kFlagMessage | notify::kFlagIcon | notify::kFlagTip;
  record_.callbackMessage = notify::kCallbackMessage;
  record_.tip = FixedWidth("", notify::kTipWidth);
  record_.info = FixedWidth("", notify::kInfoWidth);
  record_.infoTitle = FixedWidth("", notify::kTitleWidth);
  record_.timeout = kFirstTimeOut;
  if (record_.window != 0 && run_.tray.taskbarCreatedMessage == 0)
    run_.tray.taskbarCreatedMessage = area.MessageNumber("TaskbarCreated");
}

CBalloonToolTipNotify::~CBalloonToolTipNotify() {
  SetVisible(false);
  run_.host.notificationArea.CloseWindow(record_.window);
}

void CBalloonToolTipNotify::SetTrayIcon(IconHandle icon) {
  iconHandle_ = icon;
  record_.icon = icon;
  Changed(notify::kFlagIcon);
}

void CBalloonToolTipNotify::SetTrayIconPic(std::shared_ptr<const TrayPicture> picture) {
  picture_ = std::move(picture);
  SetTrayIcon(picture_ ? picture_->handle : 0);
}

void CBalloonToolTipNotify::SetBalloonTimeOut(std::int16_t timeOut) {
  timeOut_ = timeOut;
  record_.timeout = static_cast<std::uint32_t>(timeOut);
  Changed(notify::kFlagTip);
}

void CBalloonToolTipNotify::SetBalloonIconType(std::int32_t iconType) {
  iconType_ = iconType;
  record_.infoFlags = static_cast<std::uint32_t>(iconType);
  Changed(notify::kFlagTip);
}

void CBalloonToolTipNotify::SetText(const std::string& text) {
  record_.tip = FixedWidth(text, notify::kTipWidth);
  Changed(notify::kFlagTip);
}

void CBalloonToolTipNotify::SetBalloonTitle(const std::string& title) {
  record_.infoTitle = FixedWidth(title, notify::kTitleWidth);
  Changed(notify::kFlagTip);
}

void CBalloonToolTipNotify::SetBalloonText(const std::string& text) {
  record_.info = FixedWidth(text, notify::kInfoWidth);
  Changed(notify::kFlagTip);
}

void CBalloonToolTipNotify::SetVisible(bool visible) {
  run_.host.notificationArea.Notify(visible ? notify::kAdd : notify::kDelete, record_);
  visible_ = visible;
}

void CBalloonToolTipNotify::ShowNotifyBalloonTip(const std::string& text, const std::string& title,
                                                 std::int16_t iconType, std::int16_t timeOut) {
  record_.flags |= notify::kFlagInfo;
  record_.timeout = static_cast<std::uint32_t>(timeOut == -1 ? timeOut_ : timeOut);
  if (!text.empty()) record_.info = FixedWidth(text, notify::kInfoWidth);
  if (!title.empty()) record_.infoTitle = FixedWidth(title, notify::kTitleWidth);
  record_.infoFlags = static_cast<std::uint32_t>(iconType == -1 ? iconType_ : iconType);
  if (visible_)
    run_.host.notificationArea.Notify(notify::kModify, record_);
  else
    SetVisible(true);
  record_.flags &= ~notify::kFlagInfo;  // later changes must not repeat the balloon
}

void CBalloonToolTipNotify::Changed(std::uint32_t flag) {
  record_.flags |= flag;
  if (visible_) run_.host.notificationArea.Notify(notify::kModify, record_);
}

void CBalloonToolTipNotify::Receive(std::uint32_t message, std::int64_t low) {
  cursor_ = run_.host.notificationArea.CursorPosition();
  const auto button = [this](const Events::Button& event, std::int16_t number) {
    Raise(event, number, cursor_.x, cursor_.y);
  };
  if (message == run_.tray.taskbarCreatedMessage) return Raise(events.TaskbarCreated);
  switch (low) {
    case notify::kMouseMove:
      return Raise(events.MouseMove, cursor_.x, cursor_.y);
    case notify::kLeftDown:
      return button(events.MouseDown, 0);
    case notify::kRightDown:
      return button(events.MouseDown, 1);
    case notify::kMiddleDown:
      return button(events.MouseDown, 2);
    case notify::kLeftUp:
      return ButtonUp(0);
    case notify::kRightUp:
      ButtonUp(1);
      if (ContextMenu) Raise(ContextMenu->popUp);
      return;
    case notify::kMiddleUp:
      return ButtonUp(2);
    case notify::kLeftDouble:
      return button(events.DblClick, 0);
    case notify::kRightDouble:
      return button(events.DblClick, 1);
    case notify::kMiddleDouble:
      return button(events.DblClick, 2);
    case notify::kBalloonShow:
      return Raise(events.BalloonShow);
    case notify::kBalloonHide:
      return Raise(events.BalloonHide);
    case notify::kBalloonTimeOut:
      return Raise(events.BalloonTimeOut);
    case notify::kBalloonClick:
      return Raise(events.BalloonClick, cursor_.x, cursor_.y);
    default:
      return;
  }
}

void CBalloonToolTipNotify::ButtonUp(std::int16_t button) const {
  Raise(events.MouseUp, button, cursor_.x, cursor_.y);
  Raise(events.Click);
}

}  // namespace tessary
