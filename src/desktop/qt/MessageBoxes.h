// Message boxes.
#pragma once

#include "desktop/qt/Server.h"

namespace tessary {

class MessageBoxes {
 public:
  /// Handles ShowBox.
  explicit MessageBoxes(Server& server);
};

}  // namespace tessary
