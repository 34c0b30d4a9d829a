// The notification area of a desktop: one icon with a tool tip and a balloon, the hidden window that hears of
// them, and the timer behind the animation.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace tessary {

/// A picture of the program; 0 is none.
using IconHandle = std::int32_t;
/// A hidden window; 0 is none.
using MessageWindow = std::int64_t;

/// Values of notifications, those of the Windows platform.
namespace notify {
inline constexpr std::int32_t kAdd = 0, kModify = 1, kDelete = 2;                               // what to do
inline constexpr std::uint32_t kFlagMessage = 1, kFlagIcon = 2, kFlagTip = 4, kFlagInfo = 16;   // what counts
inline constexpr std::uint32_t kIconNone = 0, kIconInfo = 1, kIconWarning = 2, kIconError = 3;  // in a balloon
inline constexpr std::uint32_t kCallbackMessage = 1025;
// What the low parameter of the callback message tells.
inline constexpr std::uint32_t kMouseMove = 512;
inline constexpr std::uint32_t kLeftDown = 513, kLeftUp = 514, kLeftDouble = 515;
inline constexpr std::uint32_t kRightDown = 516, kRightUp = 517, kRightDouble = 518;
inline constexpr std::uint32_t kMiddleDown = 519, kMiddleUp = 520, kMiddleDouble = 521;
inline constexpr std::uint32_t kBalloonShow = 1026, kBalloonHide = 1027, kBalloonTimeOut = 1028,
                               kBalloonClick = 1029;
// Characters of the fixed-width texts.
inline constexpr std::size_t kTipWidth = 128, kInfoWidth = 256, kTitleWidth = 64;
}  // namespace notify

/// The record of an icon. Each text fills its width: a NUL stands behind its value, blanks behind that; a value
/// that fills the width has no NUL.
struct NotifyIconData {
  std::uint32_t size = 488;  ///< of the platform's record, in bytes; it names the version
  MessageWindow window = 0;
  std::uint32_t id = 0;
  std::uint32_t flags = 0;
  std::uint32_t callbackMessage = 0;
  IconHandle icon = 0;
  std::string tip;
  std::string info;             ///< text of the balloon, shown where kFlagInfo is set
  std::uint32_t timeout = 0;    ///< of the balloon; the desktop keeps to its own limits
  std::string infoTitle;        ///< title of the balloon
  std::uint32_t infoFlags = 0;  ///< icon in the balloon
};

struct ScreenPoint {
  std::int32_t x = 0, y = 0;
};

/// A machine has one timer of this kind. Whatever calls back does so while the message queue runs.
class NotificationArea {
 public:
  /// Gets each message of a window with its two parameters.
  using Procedure = std::function<void(std::uint32_t message, std::int64_t high, std::int64_t low)>;

  virtual ~NotificationArea() = default;
  /// Makes a window that is never shown and calls `procedure`; 0 when it cannot be made.
  virtual MessageWindow OpenWindow(Procedure procedure) = 0;
  /// Ends a window; its procedure is not called any more. 0 does nothing.
  virtual void CloseWindow(MessageWindow window) = 0;
  /// Adds, changes or takes away the icon of record.window. False when it cannot be done, which harms nobody. A
  /// balloon that nobody can see reports kBalloonHide at once.
  virtual bool Notify(std::int32_t what, const NotifyIconData& record) = 0;
  /// The number of a message that all programs of the desktop know by `name`.
  virtual std::uint32_t MessageNumber(const std::string& name) = 0;
  virtual ScreenPoint CursorPosition() = 0;
  /// The picture "working0" to "working11", the frames of the animation, or "finished"; 0 for another name.
  virtual IconHandle IconNamed(const std::string& name) = 0;
  /// Calls `tick` every `milliseconds` from now on, in the place of an earlier one; late ticks are not made up
  /// for.
  virtual void StartTimer(std::int32_t milliseconds, std::function<void()> tick) = 0;
  virtual void StopTimer() = 0;
};

}  // namespace tessary
