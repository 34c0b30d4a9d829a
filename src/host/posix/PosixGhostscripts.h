// Ghostscript as this machine has it.
#pragma once

#include "host/Processes.h"

namespace tessary {

class PosixGhostscripts final : public Ghostscripts {
 public:
  std::string ExecutableName() override { return "gs"; }
  Result<std::string> AskVersion(const std::string& executable) override;
  Command RunCommand(const std::string& executable, const std::string& parameterFile) override;
};

}  // namespace tessary
