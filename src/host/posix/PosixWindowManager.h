// The windows of a machine without a display: there are none.
#pragma once

#include "host/WindowManager.h"

namespace tessary {

class PosixWindowManager final : public WindowManager {
 public:
  std::int64_t ForegroundWindow() override { return 0; }
  std::uint32_t ThreadOfWindow(std::int64_t) override { return 0; }
  bool AttachInput(std::uint32_t, std::uint32_t, bool) override { return false; }
  bool SetForeground(std::int64_t) override { return false; }
  bool IsMinimised(std::int64_t) override { return false; }
  void Show(std::int64_t, std::int32_t) override {}
  std::int32_t SetPosition(std::int64_t, std::int64_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                           std::uint32_t) override {
    return 0;
  }
};

}  // namespace tessary
