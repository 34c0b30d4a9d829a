// The icon in the notification area, with its tool tip, its balloon and what the user does with them.
//
//   CBalloonToolTipNotify tt(run);
//   tt.events.BalloonHide = [] { … };
//   tt.SetText("Working");
//   tt.SetVisible(true);
//   tt.ShowNotifyBalloonTip("The file is there.", "Done", notify::kIconInfo, 0);
//
// It owns the platform's record and a hidden window; both live as long as the object, and the icon goes with
// it. Nothing here fails: without a notification area, or without the window, the calls have no visible effect.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "system/Run.h"

namespace tessary {

/// A menu that the icon pops up.
struct PopupMenu {
  std::function<void()> popUp;
};

struct TrayPicture {
  IconHandle handle = 0;
};

class CBalloonToolTipNotify {
 public:
  explicit CBalloonToolTipNotify(Run& run);
  ~CBalloonToolTipNotify();
  CBalloonToolTipNotify(const CBalloonToolTipNotify&) = delete;
  CBalloonToolTipNotify& operator=(const CBalloonToolTipNotify&) = delete;

  /// Raised while the message queue runs; an empty one is passed over. A button is 0 for the left one, 1 for
  /// the right one and 2 for the middle one; x and y are the cursor on the screen.
  struct Events {
    using Button = std::function<void(std::int16_t button, std::int32_t x, std::int32_t y)>;
    using Position = std::function<void(std::int32_t x, std::int32_t y)>;
    std::function<void()> Click;  ///< any button has gone up; after MouseUp
    Button DblClick;
    Button MouseDown;
    Button MouseUp;
    Position MouseMove;
    std::function<void()> BalloonShow;
    std::function<void()> BalloonHide;
    std::function<void()> BalloonTimeOut;
    Position BalloonClick;
    std::function<void()> TaskbarCreated;  ///< never comes: the window hears of the icon alone
  };
  Events events;

  std::shared_ptr<PopupMenu> ContextMenu;  ///< pops up when the right button goes up; may be null

  // A new value is shown at once while the icon is visible.
  [[nodiscard]] IconHandle TrayIcon() const { return iconHandle_; }
  void SetTrayIcon(IconHandle icon);
  void SetTrayIconPic(std::shared_ptr<const TrayPicture> picture);  ///< keeps the picture, too
  [[nodiscard]] std::int16_t BalloonTimeOut() const { return timeOut_; }
  void SetBalloonTimeOut(std::int16_t timeOut);
  [[nodiscard]] std::int32_t BalloonIconType() const { return iconType_; }
  void SetBalloonIconType(std::int32_t iconType);
  // The texts are given back in their fixed width, NUL and blanks included.
  [[nodiscard]] const std::string& Text() const { return record_.tip; }
  void SetText(const std::string& text);
  [[nodiscard]] const std::string& BalloonTitle() const { return record_.infoTitle; }
  void SetBalloonTitle(const std::string& title);
  [[nodiscard]] const std::string& BalloonText() const { return record_.info; }
  void SetBalloonText(const std::string& text);

  [[nodiscard]] bool Visible() const { return visible_; }
  /// Adds or removes the icon, each time, whether or not it is there.
  void SetVisible(bool visible);

  /// Shows the balloon once, and the icon where it is not visible. The properties stand in for a text or title
  /// that is "" and for an icon type or time that is -1.
  void ShowNotifyBalloonTip(const std::string& text, const std::string& title, std::int16_t iconType,
                            std::int16_t timeOut);

 private:
  void Changed(std::uint32_t flag);
  void Receive(std::uint32_t message, std::int64_t low);
  void ButtonUp(std::int16_t button) const;

  Run& run_;
  NotifyIconData record_;
  ScreenPoint cursor_;  ///< where it was at the last notification
  bool visible_ = false;
  std::int16_t timeOut_ = 0;
  std::int32_t iconType_ = 0;
  IconHandle iconHandle_ = 0;
  std::shared_ptr<const TrayPicture> picture_;
};

}  // namespace tessary
