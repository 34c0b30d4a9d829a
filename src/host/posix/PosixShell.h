// The user's folders, fonts and default programs on this machine.
#pragma once

#include <string>

#include "host/Shell.h"

namespace tessary {

class PosixShell final : public Shell {
 public:
  std::optional<std::string> SpecialFolder(std::int32_t id) override;
  std::vector<FontEntry> InstalledFonts() override;
  std::string FontFile(const std::string& name) override;
  std::int32_t Open(const std::string& target) override;

 private:
  std::string fontName_, fontFile_;  ///< the last question and its answer, which costs milliseconds
};

}  // namespace tessary
