// What the dialogs share: message boxes, forms on the screen, and colours.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "system/Run.h"
#include "ui/Form.h"

namespace tessary {

/// Shows a message box under the product's name and gives the button that was pressed (host/Desktop.h). A box
/// that nobody could see leaves its first line in the log, with the answer that the machine gave for them.
std::int32_t ShowMessage(Run& run, const std::string& text, std::int32_t flags);

/// Shows a form and returns when it is unloaded. Where nobody can see it, which gives false, its OK button is
/// pressed at once; a form that stays open then is cancelled, and the log says so.
bool ShowModal(Run& run, Form& form);

/// A packed colour as `#RRGGBB`, upper case.
std::string ColorToHex(std::int32_t color);

/// The channels of a colour text, with or without "#"; a pair that is missing or no hexadecimal byte reads as
/// 0.
void HexToRGB(std::string_view text, std::int32_t& red, std::int32_t& green, std::int32_t& blue);
/// The same as a packed colour: red + 256 green + 65536 blue.
std::int32_t HexToColor(std::string_view text);

/// What a person typed, as a colour text: one that is short is padded with zeros, and behind a character that
/// is no hexadecimal digit nothing is kept, so that it comes back short. Blanks alone give nothing.
std::string NormalizeColor(std::string_view text);

}  // namespace tessary
