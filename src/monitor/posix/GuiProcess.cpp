#include "monitor/posix/GuiProcess.h"

#include <array>
#include <climits>
#include <fcntl.h>

#include "config/modFolders.h"
#include "host/posix/PosixFailure.h"
#include "host/posix/PosixFile.h"
#include "system/Error.h"
#include "system/ExitCodes.h"
#include "system/Paths.h"
#include "system/modInstances.h"

namespace tessary {

namespace {

constexpr std::size_t kMostProblem = 4096;  ///< a pipe takes so much at once

/// Leaves this process the streams of `gui`, and `kept`.
void SettleDescriptors(int errors, int kept) {
  const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
  dup2(errors >= 0 ? errors : nowhere, STDERR_FILENO);
  dup2(nowhere, STDIN_FILENO);
  dup2(nowhere, STDOUT_FILENO);
  close_range(STDERR_FILENO + 1, static_cast<unsigned>(kept) - 1, 0);
  close_range(static_cast<unsigned>(kept) + 1, UINT_MAX, 0);
}

/// What the copy of this process does: it waits for the job's turn and for `gui`.
std::int32_t RunJob(Run& run, const GuiJob& job, int problem) {
  try {
    run.job.InstanceName = GetInstanceFromPrinterName(job.printer);
    return RunGui(run, job);
  } catch (const Error& error) {
    WriteAll(problem, error.description().substr(0, kMostProblem));
    return exitcodes::kError;
  }
}

}  // namespace

Result<GuiProcess> GuiProcess::Start(Run& run, const GuiJob& job, int errors) {
  std::array<int, 2> ends{-1, -1};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return FailureOf(errno);
  GuiProcess gui;
  gui.problem_ = UniqueFd(ends[0]);
  gui.session_ = job.session;
  const UniqueFd problem(ends[1]);
  Result<ChildProcess> child = ChildProcess::Fork([&] {
    SettleDescriptors(errors, problem.Get());
    return RunJob(run, job, problem.Get());
  });
  if (!child.ok()) return child.failure;
  gui.child_ = std::move(child.value);
  return gui;
}

GuiOutcome GuiProcess::Outcome() {
  child_.Wait(INT_MAX);
  GuiOutcome outcome{child_.ExitCode(), std::string(kMostProblem, '\0')};
  const ssize_t size =
      Restarted([&] { return read(problem_.Get(), outcome.problem.data(), outcome.problem.size()); });
  outcome.problem.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  return outcome;
}

void GuiProcess::Kill(Run& run) {
  if (child_.Wait(0)) return;
  child_.End();
  RemoveSessionFiles(run, GetTemporaryFolder(run), session_);
}

void RemoveSessionFiles(Run& run, const std::string& folder, const std::string& session) {
  const auto entries = run.host.files.List(folder);
  for (const FileInfo& entry : entries.value) {
    if (entry.name.starts_with(session + '_') || entry.name.starts_with(session + '.'))
      run.host.files.Remove(JoinPath(run.host.paths, folder, entry.name));
  }
}

}  // namespace tessary
