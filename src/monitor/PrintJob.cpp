#include "monitor/PrintJob.h"

#include "config/modFolders.h"
#include "monitor/GuiJob.h"
#include "monitor/SpoolJob.h"
#include "system/Error.h"
#include "system/ExitCodes.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/modUtil.h"

namespace tessary {

namespace {

std::string WhereKept(Run& run, const SpooledJob& job) {
  return " The job is kept in " + job.path() +
         (FileExists(run, job.DocumentPath()) ? " and " + job.DocumentPath() : std::string());
}

}  // namespace

std::string PrintFile(Run& run, const PrintArguments& arguments, const std::string& file) {
  const bool fromInput = file == "-";
  const PathStyle& style = run.host.paths;
  const std::string session = NewGuid(run), folder = GetTemporaryFolder(run);
  run.job.SessionId = session;
  SpooledJob spool(run, JoinPath(style, folder, "print-" + session + ".ps"));
  const std::string source = fromInput ? run.host.standardInput : file;
  const std::string title = arguments.title.value_or(fromInput ? "Standard input" : FileNameOf(style, file));
  if (const std::string problem = SpoolJob(run, source, spool, {title, UserName(run), 1}); !problem.empty())
    return problem;

  std::int32_t exitCode = exitcodes::kError;
  try {
    exitCode = RunGui(run, {session, spool.path(), title, arguments.printer, arguments.settings});
  } catch (const Error& error) {
    spool.Keep();
    return error.description() + WhereKept(run, spool);
  }
  if (exitCode == exitcodes::kDone) return {};
  if (exitCode == exitcodes::kNothingDone) return ExplainExitCode(exitCode);
  spool.Keep();
  const std::string log = JoinPath(style, folder, session + "_printer.log");
  return ExplainExitCode(exitCode) + WhereKept(run, spool) +
         (FileExists(run, log) ? ", its log in " + log : std::string());
}

}  // namespace tessary
