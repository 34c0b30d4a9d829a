// What the dialogs share: message boxes and colours.
#pragma once

#include <cstdint>
#include <string>

#include "system/Run.h"

namespace tessary {

/// Shows a message box under the product's name and gives the button that was pressed (host/Desktop.h). A box
/// that nobody could see leaves its first line in the log, with the answer that the machine gave for them.
std::int32_t ShowMessage(Run& run, const std::string& text, std::int32_t flags);

/// A packed colour as `#RRGGBB`, upper case.
std::string ColorToHex(std::int32_t color);

}  // namespace tessary
