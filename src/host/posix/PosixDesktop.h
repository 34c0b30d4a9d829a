// Message boxes of a machine without a display.
#pragma once

#include "host/Desktop.h"

namespace tessary {

class PosixDesktop final : public Desktop {
 public:
  BoxAnswer ShowBox(const std::string& text, const std::string& caption, std::int32_t flags) override;
  void PumpMessages() override {}
};

}  // namespace tessary
