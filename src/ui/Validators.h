// What becomes of a field when the user leaves it. Nothing is refused: the field is rewritten, or cleared.
#pragma once

#include <string>
#include <string_view>

#include "ui/Form.h"

namespace tessary {

/// A shift in percent as it is kept: a number from -100 to 100 in plain writing. 0 and what lies outside give
/// nothing.
std::string NormalizeAdjustment(std::string_view text);

/// Whole numbers from 0 to 1000 stay.
void ValidateFontSize(Form& form, Control& control);
void ValidateColorText(Form& form, Control& control);
/// The number without its sign; 0 clears.
void ValidateOutlineWidth(Form& form, Control& control);
void ValidateAdjustment(Form& form, Control& control);
/// A typed angle is cut to whole degrees, and to 360; there is no lower limit.
void ValidateRotation(Form& form, Control& control);
/// A typed zoom that is no number above 0 gives way to the default setting.
void ValidateZoom(Form& form, Control& control);

/// Has every field of a dialog that has a validator run it when the user leaves the field. The form must
/// outlive its events.
void AttachValidators(Form& form);

}  // namespace tessary
