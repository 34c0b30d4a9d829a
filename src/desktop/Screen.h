// All that gui shows things with.
#pragma once

#include "desktop/ScreenDesktop.h"
#include "host/posix/PosixDesktop.h"

namespace tessary {

/// Nothing is started before something has to be shown.
struct Screen {
  PosixDesktop terminal{};
  Helper helper{HelperProgram()};
  ScreenDesktop desktop{helper, terminal};
};

}  // namespace tessary
