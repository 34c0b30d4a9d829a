// The windows that the helper shows.
#pragma once

#include "desktop/Helper.h"
#include "host/WindowManager.h"

namespace tessary {

/// Of the order of windows a program can only ask the window system to bring one of its own to the front; which
/// one of others' the user works with is not told.
class ScreenWindowManager final : public WindowManager {
 public:
  explicit ScreenWindowManager(Helper& helper) : helper_(helper) {}

  std::int64_t ForegroundWindow() override { return 0; }
  std::uint32_t ThreadOfWindow(std::int64_t) override { return 0; }
  bool AttachInput(std::uint32_t, std::uint32_t, bool) override { return false; }
  bool SetForeground(std::int64_t window) override;  ///< restores a minimised one, too
  bool IsMinimised(std::int64_t) override { return false; }
  void Show(std::int64_t, std::int32_t) override {}
  std::int32_t SetPosition(std::int64_t window, std::int64_t, std::int32_t, std::int32_t, std::int32_t,
                           std::int32_t, std::uint32_t) override {
    return window != 0 ? 1 : 0;
  }

 private:
  Helper& helper_;
};

}  // namespace tessary
