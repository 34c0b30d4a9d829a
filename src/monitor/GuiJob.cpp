#include "monitor/GuiJob.h"

#include <memory>

#include "config/modFolders.h"
#include "monitor/RunOnce.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/ExitCodes.h"
#include "system/Paths.h"

namespace tessary {

namespace {

/// `gui` has the same ending as this program.
std::string GuiProgram(Run& run) {
  const PathStyle& style = run.host.paths;
  const std::string own = FileNameOf(style, run.host.programFile);
  return JoinPath(style, GetProgramFolder(run), "gui" + own.substr(BaseNameOf(style, own).size()));
}

std::unique_ptr<Process> StartGui(Run& run, const GuiJob& job) {
  const Command command = run.host.processes.ProgramCommand(
      GuiProgram(run),
      {"sessionid=" + job.session, "ps=" + job.psFile, "doc=" + OneLine(job.title), "printer=" + job.printer});
  RunOnce settings(run, job.settings);
  auto gui = run.host.processes.Start(command, "", Streams::Inherited);
  if (!gui.ok())
    throw Error(errors::kCommon, "Error launching the command [" + command.line + "]. " + gui.failure.text);
  settings.AwaitTaken(*gui.value);
  return std::move(gui.value);
}

}  // namespace

std::int32_t RunGui(Run& run, const GuiJob& job) {
  const std::unique_ptr<Process> gui = StartGui(run, job);
  while (!gui->Wait(60 * 60 * 1000)) continue;
  return gui->ExitCode();
}

std::string ExplainExitCode(std::int32_t exitCode) {
  switch (exitCode) {
    case exitcodes::kError:
      return "no PDF was made.";
    case exitcodes::kNotDelivered:
      return "the PDF could not be delivered.";
    case exitcodes::kNothingDone:
      return "nothing was printed: cancelled, or the settings name no output.";
    default:
      return "gui ended with exit code " + std::to_string(exitCode) + ".";
  }
}

}  // namespace tessary
