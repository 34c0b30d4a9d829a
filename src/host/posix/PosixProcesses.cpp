#include "host/posix/PosixProcesses.h"

#include <fcntl.h>
#include <utility>

#include "host/CommandLine.h"
#include "host/posix/ChildProcess.h"
#include "host/posix/PosixFile.h"

namespace tessary {

namespace {

class PosixProcess final : public Process {
 public:
  explicit PosixProcess(ChildProcess child) : child_(std::move(child)) {}

  [[nodiscard]] std::int64_t Id() const override { return child_.Id(); }
  bool Wait(int milliseconds) override { return child_.Wait(milliseconds); }
  std::int32_t ExitCode() override { return child_.ExitCode(); }

 private:
  ChildProcess child_;
};

}  // namespace

Command PosixProcesses::ProgramCommand(const std::string& program, const std::vector<std::string>& parameters) {
  Command command;
  command.arguments.push_back(program);
  command.arguments.insert(command.arguments.end(), parameters.begin(), parameters.end());
  command.line = program.find(' ') == std::string::npos ? program : '"' + program + '"';
  const std::string rest = JoinParameters(parameters);
  if (!rest.empty()) command.line += ' ' + rest;
  return command;
}

Result<std::unique_ptr<Process>> PosixProcesses::Start(const Command& command, const std::string& folder,
                                                       Streams streams) {
  ChildSetup setup;
  setup.arguments = command.arguments;
  setup.folder = folder;
  setup.hidden = streams == Streams::Hidden;
  Result<UniqueFd> error;
  if (setup.hidden && !command.errorFile.empty()) {
    error = OpenDescriptor(command.errorFile, O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0600);
    if (!error.ok()) return error.failure;
    setup.error = error.value.Get();
  }
  Result<ChildProcess> child = ChildProcess::Start(setup);
  if (!child.ok()) return child.failure;
  return std::unique_ptr<Process>(std::make_unique<PosixProcess>(std::move(child.value)));
}

}  // namespace tessary
