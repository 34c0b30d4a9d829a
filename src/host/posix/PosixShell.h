// The user's folders, fonts and default programs on this machine.
#pragma once

#include "host/Shell.h"

namespace tessary {

class PosixShell final : public Shell {
 public:
  std::optional<std::string> SpecialFolder(std::int32_t id) override;
  std::vector<FontEntry> InstalledFonts() override;
  std::int32_t Open(const std::string& target) override;
};

}  // namespace tessary
