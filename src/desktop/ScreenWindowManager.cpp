#include "desktop/ScreenWindowManager.h"

#include "desktop/Wire.h"

namespace tessary {

bool ScreenWindowManager::SetForeground(std::int64_t window) {
  return window != 0 && helper_.Send(MessageKind::RaiseWindow, wire::Encode(window));
}

}  // namespace tessary
