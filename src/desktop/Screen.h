// All that gui shows things with.
#pragma once

#include "desktop/ScreenDesktop.h"
#include "desktop/ScreenNotificationArea.h"
#include "desktop/ScreenWindowManager.h"
#include "host/posix/PosixDesktop.h"
#include "host/posix/PosixMachine.h"

namespace tessary {

/// Nothing is started before something has to be shown.
struct Screen {
  PosixDesktop terminal{[this] { notificationArea.RunQueue(); }};
  PosixNotificationArea terminalArea{terminal.terminal()};
  Helper helper{HelperProgram()};
  ScreenNotificationArea notificationArea{helper, terminalArea};
  ScreenDesktop desktop{helper, terminal};
  ScreenWindowManager windowManager{helper};

  Display display{desktop, notificationArea, windowManager};
};

}  // namespace tessary
