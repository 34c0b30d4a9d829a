#include "tests/support/SimulatedProcesses.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <utility>

#include "host/CommandLine.h"
#include "tests/support/Wildcards.h"

namespace tessary {

namespace {

class SimulatedProcess : public Process {
 public:
  SimulatedProcess(SimulatedClock& clock, std::int64_t id, std::int64_t endsAt, std::int32_t exitCode)
      : clock_(clock), id_(id), endsAt_(endsAt), exitCode_(exitCode) {}

  [[nodiscard]] std::int64_t Id() const override { return id_; }

  bool Wait(int milliseconds) override {
    const std::int64_t deadline = clock_.Ticks() + milliseconds;
    clock_.Advance(std::max<std::int64_t>(0, std::min(deadline, endsAt_) - clock_.Ticks()));
    return clock_.Ticks() >= endsAt_;
  }

  std::int32_t ExitCode() override {
    if (clock_.Ticks() < endsAt_) ADD_FAILURE() << "The exit code of a running child was asked for";
    return exitCode_;
  }

 private:
  SimulatedClock& clock_;
  std::int64_t id_;
  std::int64_t endsAt_;
  std::int32_t exitCode_;
};

}  // namespace

ScriptedChild& ScriptedChild::Writes(const std::string& path, const std::string& bytes, int atMs) {
  return Does([files = files_, path, bytes] { files->Put(path, bytes); }, atMs);
}

ScriptedChild& ScriptedChild::Appends(const std::string& path, const std::string& bytes, int atMs) {
  return Does([files = files_, path, bytes] { files->Extend(path, bytes); }, atMs);
}

ScriptedChild& ScriptedChild::Does(std::function<void()> action, int atMs) {
  actions_.push_back({atMs, std::move(action)});
  return *this;
}

ScriptedChild& ScriptedChild::Exits(std::int32_t exitCode, int afterMs) {
  exitCode_ = exitCode;
  endsAfterMs_ = afterMs;
  return *this;
}

ScriptedChild& ScriptedChild::NeverEnds() { return Exits(0, -1); }

ScriptedChild& ScriptedChild::FailsToStart(Failure failure) {
  startFailure_ = std::move(failure);
  return *this;
}

ScriptedChild& ScriptedChild::Repeats() {
  repeats_ = true;
  return *this;
}

SimulatedProcesses::SimulatedProcesses(SimulatedClock& clock, SimulatedFiles& files, Journal& journal)
    : clock_(clock), files_(files), journal_(journal) {}

SimulatedProcesses::~SimulatedProcesses() {
  for (const auto& child : expected_)
    if (!child->repeats_ && child->starts_ == 0) ADD_FAILURE() << "Never started: " << child->pattern_;
}

ScriptedChild& SimulatedProcesses::Expect(const std::string& pattern) {
  expected_.push_back(std::make_unique<ScriptedChild>());
  expected_.back()->files_ = &files_;
  expected_.back()->pattern_ = pattern;
  return *expected_.back();
}

Command SimulatedProcesses::ProgramCommand(const std::string& program,
                                           const std::vector<std::string>& parameters) {
  Command command{"\"" + program + "\"", {program}, ""};
  if (const std::string rest = JoinParameters(parameters); !rest.empty()) command.line += " " + rest;
  command.arguments.insert(command.arguments.end(), parameters.begin(), parameters.end());
  return command;
}

Command SimulatedProcesses::ShellCommand(const std::string& text, const std::vector<std::string>& values) {
  return {"cmd /c " + FillPlaceholders(text, values), {}, "", true};
}

Result<std::unique_ptr<Process>> SimulatedProcesses::Start(const Command& command, const std::string& folder,
                                                           Streams streams) {
  started.push_back({command.line, folder, streams});
  journal_.push_back("start " + command.line);
  const auto child = std::find_if(expected_.begin(), expected_.end(), [&](const auto& candidate) {
    return (candidate->repeats_ || candidate->starts_ == 0) && Matches(candidate->pattern_, command.line, '\0');
  });
  if (child == expected_.end()) {
    ADD_FAILURE() << "Unexpected command: " << command.line;
    return Failure{failures::kFileNotFound, "File not found"};
  }
  const ScriptedChild& script = **child;
  ++(*child)->starts_;
  if (script.startFailure_) return script.startFailure_;
  const std::optional<FileInfo> place = folder.empty() ? std::nullopt : files_.Find(folder);
  if (!folder.empty() && (!place || place->kind != FileKind::Folder))
    return Failure{failures::kPathNotFound, "Path not found"};
  for (const auto& action : script.actions_) clock_.After(action.atMs, action.run);
  const std::int64_t endsAt =
      script.endsAfterMs_ < 0 ? SimulatedFiles::kForEver : clock_.Ticks() + script.endsAfterMs_;
  clock_.Advance(0);
  return std::unique_ptr<Process>(
      std::make_unique<SimulatedProcess>(clock_, nextId_ += 4, endsAt, script.exitCode_));
}

Result<std::string> SimulatedGhostscripts::AskVersion(const std::string& executable) {
  asked.push_back(executable);
  return answer;
}

Command SimulatedGhostscripts::RunCommand(const std::string& executable, const std::string& parameterFile) {
  return {"cmd /c \"\"" + executable + "\" @\"" + parameterFile + "\"", {executable, "@" + parameterFile}, ""};
}

}  // namespace tessary
