// Brings a window to the front against a desktop's wish to leave the user where they are.
#pragma once

#include <cstdint>

#include "system/Run.h"

namespace tessary {

/// True if the window is, or was made, the one that the user works with. A minimised one is restored.
bool ForceForeground(Run& run, std::int64_t window);

/// Keeps a window above all others, or ends that; `flags` are those of the WindowManager. The platform's result
/// where `topMost` is true, else 0.
std::int32_t SetTopMost(Run& run, std::int64_t window, bool topMost, std::uint32_t flags);

}  // namespace tessary
