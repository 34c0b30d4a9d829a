#include "ui/Validators.h"

#include <algorithm>
#include <cmath>

#include "config/modConfig.h"
#include "system/Conversions.h"
#include "ui/Binding.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

constexpr double kMaxFontSize = 1000;
constexpr double kMaxRotation = 360;

struct FieldValidator {
  const char* control;
  void (*validate)(Form&, Control&);
};

constexpr FieldValidator kValidators[] = {
    {"txtWatermarkFontSize", ValidateFontSize},
    {"txtWatermarkColor", ValidateColorText},
    {"txtWatermarkOutlineWidth", ValidateOutlineWidth},
    {"txtWatermarkVerticalAdjustment", ValidateAdjustment},
    {"txtWatermarkHorizontalAdjustment", ValidateAdjustment},
    {"cbWatermarkRotation", ValidateRotation},
    {"cbZoom", ValidateZoom},
};

}  // namespace

std::string NormalizeAdjustment(std::string_view text) {
  const double percent = LeadingNumber(text);
  return percent == 0 || std::abs(percent) > 100 ? std::string() : DecimalText(percent);
}

void ValidateFontSize(Form& form, Control& control) {
  const std::string text = TrimBlanks(control.text);
  const double size = std::trunc(LeadingNumber(text));
  const bool stays = size >= 0 && size <= kMaxFontSize && DecimalText(size) == text;
  form.SetText(control, stays ? text : std::string());
}

void ValidateColorText(Form& form, Control& control) { form.SetText(control, NormalizeColor(control.text)); }

void ValidateOutlineWidth(Form& form, Control& control) {
  if (TrimBlanks(control.text).empty()) return;
  const double width = std::abs(LeadingNumber(control.text));
  form.SetText(control, width == 0 ? std::string() : DecimalText(width));
}

void ValidateAdjustment(Form& form, Control& control) {
  form.SetText(control, NormalizeAdjustment(control.text));
}

void ValidateRotation(Form& form, Control& control) {
  if (control.listIndex >= 0) return;
  form.SetText(control, DecimalText(std::min(std::trunc(LeadingNumber(control.text)), kMaxRotation)));
}

void ValidateZoom(Form& form, Control& control) {
  if (control.listIndex >= 0) return;
  const double percent = LeadingNumber(control.text);
  if (percent > 0)
    form.SetText(control, DecimalText(percent));
  else
    SettingToControl(form, control.name, *GetDefaultConfig());
}

void AttachValidators(Form& form) {
  for (const FieldValidator& field : kValidators) {
    Control* const control = form.Find(field.control);
    if (control != nullptr)
      control->lostFocus = [&form, control, validate = field.validate] { validate(form, *control); };
  }
}

}  // namespace tessary
