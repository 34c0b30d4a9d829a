// Scripted child programs: a command that a test expects gives files over time and an exit code.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/Processes.h"
#include "tests/support/Journal.h"
#include "tests/support/SimulatedClock.h"
#include "tests/support/SimulatedFiles.h"

namespace tessary {

/// What one child does. All times are milliseconds since its start. Unless told otherwise it ends with exit
/// code 0 after 100 ms.
class ScriptedChild {
 public:
  /// Replaces a file, making its folders.
  ScriptedChild& Writes(const std::string& path, const std::string& bytes, int atMs = 0);
  /// Adds to the end of a file.
  ScriptedChild& Appends(const std::string& path, const std::string& bytes, int atMs = 0);
  /// Runs `action`, for all that a file does not say; the command is the last of SimulatedProcesses::started.
  ScriptedChild& Does(std::function<void()> action, int atMs = 0);
  ScriptedChild& Exits(std::int32_t exitCode, int afterMs = 100);
  ScriptedChild& NeverEnds();
  ScriptedChild& FailsToStart(Failure failure = {failures::kFileNotFound, "File not found"});
  /// Stands for any number of starts, none included. Otherwise exactly one is expected.
  ScriptedChild& Repeats();

 private:
  friend class SimulatedProcesses;
  struct Action {
    int atMs;
    std::function<void()> run;
  };
  SimulatedFiles* files_ = nullptr;
  std::string pattern_;
  std::vector<Action> actions_;
  std::int32_t exitCode_ = 0;
  int endsAfterMs_ = 100;  ///< -1: never
  Failure startFailure_;
  bool repeats_ = false;
  int starts_ = 0;
};

class SimulatedProcesses : public Processes {
 public:
  SimulatedProcesses(SimulatedClock& clock, SimulatedFiles& files, Journal& journal);
  /// The test fails for every expected child that was not started.
  ~SimulatedProcesses() override;

  /// Expects a command whose whole line is `pattern`, in which `*` stands for anything. The first expectation
  /// that fits and is not used up is taken; a command without one fails the test. The answer stays valid.
  ScriptedChild& Expect(const std::string& pattern);

  struct Started {
    std::string line;
    std::string folder;
    Streams streams;
  };
  std::vector<Started> started;  ///< also those that failed to start

  Command ProgramCommand(const std::string& program, const std::vector<std::string>& parameters) override;
  Command ShellCommand(const std::string& text, const std::vector<std::string>& values) override;
  Result<std::unique_ptr<Process>> Start(const Command& command, const std::string& folder,
                                         Streams streams) override;

 private:
  SimulatedClock& clock_;
  SimulatedFiles& files_;
  Journal& journal_;
  std::vector<std::unique_ptr<ScriptedChild>> expected_;
  std::int64_t nextId_ = 1000;
};

class SimulatedGhostscripts : public Ghostscripts {
 public:
  /// What every program answers; not to be asked, as on Windows, unless a test sets it.
  Result<std::string> answer = Failure{failures::kComponentMissing, "not to be asked"};
  std::vector<std::string> asked;

  std::string ExecutableName() override { return "gswin32c.exe"; }
  Result<std::string> AskVersion(const std::string& executable) override;
  Command RunCommand(const std::string& executable, const std::string& parameterFile) override;
};

}  // namespace tessary
