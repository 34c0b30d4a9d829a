// The windows of a desktop and their order, this program's and others.
#pragma once

#include <cstdint>

namespace tessary {

/// Values of the order of windows, those of the Windows platform.
namespace windows {
inline constexpr std::int64_t kTopMost = -1, kNotTopMost = -2;               // places in the order
inline constexpr std::uint32_t kNoSize = 1, kNoMove = 2, kHideWindow = 128;  // flags of SetPosition
inline constexpr std::int32_t kShow = 5, kRestore = 9;                       // modes of Show
}  // namespace windows

/// A window is the number that Form::window has while the form is shown; 0 is none and makes every call fail.
class WindowManager {
 public:
  virtual ~WindowManager() = default;
  /// The window that the user works with; 0 when that is none or not to be told.
  virtual std::int64_t ForegroundWindow() = 0;
  /// The thread that a window belongs to; 0 for an unknown one.
  virtual std::uint32_t ThreadOfWindow(std::int64_t window) = 0;
  /// Lets two threads share their input, or ends it.
  virtual bool AttachInput(std::uint32_t thread, std::uint32_t other, bool attach) = 0;
  /// Makes a window the one that the user works with. False when the desktop refuses.
  virtual bool SetForeground(std::int64_t window) = 0;
  virtual bool IsMinimised(std::int64_t window) = 0;
  virtual void Show(std::int64_t window, std::int32_t mode) = 0;
  /// Puts a window at a place in the order (kTopMost, kNotTopMost), and on the screen unless the flags say
  /// kNoMove and kNoSize. The platform's result; 0 for a failure.
  virtual std::int32_t SetPosition(std::int64_t window, std::int64_t place, std::int32_t left, std::int32_t top,
                                   std::int32_t width, std::int32_t height, std::uint32_t flags) = 0;
};

}  // namespace tessary
