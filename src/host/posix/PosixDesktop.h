// Message boxes of a machine without a display.
#pragma once

#include "host/Desktop.h"

namespace tessary {

class PosixDesktop final : public Desktop {
 public:
  BoxAnswer ShowBox(const std::string& text, const std::string& caption, std::int32_t flags) override;
  bool ShowForm(Form&) override { return false; }
  Result<std::string> PickFile(const FilePicker&) override;
  std::int32_t PickColor(const std::string&, std::int32_t color) override { return color; }
  void PumpMessages() override {}
};

}  // namespace tessary
