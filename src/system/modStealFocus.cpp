#include "system/modStealFocus.h"

namespace tessary {

bool ForceForeground(Run& run, std::int64_t window) {
  WindowManager& manager = run.host.windowManager;
  const std::int64_t foreground = manager.ForegroundWindow();
  if (window != 0 && foreground == window) return true;
  const std::uint32_t theirs = manager.ThreadOfWindow(foreground), ours = manager.ThreadOfWindow(window);
  // A thread that shares the input of the foreground may pass it on.
  if (theirs != ours) manager.AttachInput(theirs, ours, true);
  const bool done = manager.SetForeground(window);
  if (theirs != ours) manager.AttachInput(theirs, ours, false);
  manager.Show(window, manager.IsMinimised(window) ? windows::kRestore : windows::kShow);
  return done;
}

std::int32_t SetTopMost(Run& run, std::int64_t window, bool topMost, std::uint32_t flags) {
  const std::int32_t result = run.host.windowManager.SetPosition(
      window, topMost ? windows::kTopMost : windows::kNotTopMost, 0, 0, 0, 0, flags);
  return topMost ? result : 0;
}

}  // namespace tessary
