// Child programs of this machine.
#pragma once

#include "host/Processes.h"

namespace tessary {

class PosixProcesses final : public Processes {
 public:
  Command ProgramCommand(const std::string& program, const std::vector<std::string>& parameters) override;
  Command ShellCommand(const std::string& text, const std::vector<std::string>& values) override;
  Result<std::unique_ptr<Process>> Start(const Command& command, const std::string& folder,
                                         Streams streams) override;
};

}  // namespace tessary
