#include "host/posix/PosixProcesses.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <utility>

#include "host/CommandLine.h"
#include "host/posix/ChildProcess.h"
#include "host/posix/PosixFile.h"
#include "host/posix/ShellScript.h"

namespace tessary {

namespace {

class PosixProcess final : public Process {
 public:
  PosixProcess(ChildProcess child, UniqueFd error) : child_(std::move(child)), error_(std::move(error)) {}

  [[nodiscard]] std::int64_t Id() const override { return child_.Id(); }
  bool Wait(int milliseconds) override {
    const bool ended = child_.Wait(milliseconds);
    if (ended) TellSignal();
    return ended;
  }
  std::int32_t ExitCode() override { return child_.ExitCode(); }

 private:
  /// A child that was ended by a signal had no time for last words of its own.
  void TellSignal() {
    const int signal = child_.ExitCode() - kSignalBase;
    const char* name = signal > 0 && signal < NSIG ? sigdescr_np(signal) : nullptr;
    if (error_ && name)
      WriteAll(error_.Get(),
               "The program was ended by signal " + std::to_string(signal) + " (" + name + ").\n");
    error_.Reset();
  }

  static constexpr int kSignalBase = 128;
  ChildProcess child_;
  UniqueFd error_;  ///< the file of its standard error, until it has ended
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

Command PosixProcesses::ShellCommand(const std::string& text, const std::vector<std::string>& values) {
  static constexpr const char* kShell = "/bin/sh";
  Command command;
  command.line = kShell + (" -c " + FillPlaceholders(text, values));
  command.arguments = {kShell, "-c", ShellScript(text, values.size()), "sh"};
  command.arguments.insert(command.arguments.end(), values.begin(), values.end());
  command.outlives = true;
  return command;
}

Result<std::unique_ptr<Process>> PosixProcesses::Start(const Command& command, const std::string& folder,
                                                       Streams streams) {
  ChildSetup setup;
  setup.arguments = command.arguments;
  setup.folder = folder;
  setup.hidden = streams == Streams::Hidden;
  setup.ownSession = command.outlives;
  Result<UniqueFd> error;
  if (setup.hidden && !command.errorFile.empty()) {
    error = OpenDescriptor(command.errorFile, O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0600);
    if (!error.ok()) return error.failure;
    setup.error = error.value.Get();
    setup.privateFiles = true;  // it works for this process, and on the user's documents
  }
  Result<ChildProcess> child = ChildProcess::Start(setup);
  if (!child.ok()) return child.failure;
  return std::unique_ptr<Process>(
      std::make_unique<PosixProcess>(std::move(child.value), std::move(error.value)));
}

}  // namespace tessary
