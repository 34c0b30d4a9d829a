// The display that the environment names.
#pragma once

namespace tessary {

/// True if WAYLAND_DISPLAY or DISPLAY names a display and somebody listens there. One on another machine is
/// taken at its word.
bool IsDisplayThere();

}  // namespace tessary
