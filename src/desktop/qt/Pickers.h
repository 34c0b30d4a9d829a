// The platform's pickers for files and colours.
#pragma once

#include "desktop/qt/Server.h"

namespace tessary {

class Pickers {
 public:
  /// Handles PickFile and PickColor.
  explicit Pickers(Server& server);
};

}  // namespace tessary
