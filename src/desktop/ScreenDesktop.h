// Boxes, forms and pickers on the screen, shown by the helper.
#pragma once

#include "desktop/Helper.h"

namespace tessary {

/// What the helper cannot show goes to `terminal`: where there is no display, and when the display or the
/// helper is lost while something is shown. A form that is lost so counts as closed by its user.
class ScreenDesktop final : public Desktop {
 public:
  ScreenDesktop(Helper& helper, Desktop& terminal) : helper_(helper), terminal_(terminal) {}

  BoxAnswer ShowBox(const std::string& text, const std::string& caption, std::int32_t flags) override;
  bool ShowForm(Form& form) override;
  Result<std::string> PickFile(const FilePicker& picker) override;
  std::int32_t PickColor(const std::string& title, std::int32_t color) override;
  void PumpMessages() override;

 private:
  Helper& helper_;
  Desktop& terminal_;
  std::int64_t lastPump_ = 0;
};

}  // namespace tessary
