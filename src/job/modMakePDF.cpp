#include "job/modMakePDF.h"

#include "config/modConfig.h"
#include "config/modFolders.h"
#include "ghostscript/modGhostScript.h"
#include "job/Delivery.h"
#include "system/Conversions.h"
#include "system/ExitCodes.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/modLog.h"
#include "system/modUtil.h"
#include "ui/modLocalize.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

/// The names of the job's temporary files.
struct JobFiles {
  std::string parameters;      ///< Ghostscript parameters
  std::string standardOutput;  ///< what Ghostscript says
  std::string document;        ///< the PDF of the job
};

JobFiles NamesFor(Run& run) {
  const std::string base = JoinPath(run.host.paths, GetTemporaryFolder(run), run.job.SessionId);
  JobFiles files;
  files.parameters = base + "_params.gs";
  files.standardOutput =
      ReplaceAll(files.parameters, ".gs", ".out");  // everywhere in the path, and no more careful
  files.document = base + "_printer.pdf";
  return files;
}

void Convert(Run& run, Dictionary& config, const JobFiles& files, const std::string& psFile) {
  WriteLog(run, "Parameters");
  WritePdfParameterFile(run, files.parameters, files.document, config, files.standardOutput, {psFile});
  WriteLog(run, "Ghostscript");
  RunGhostscript(run, config, files.parameters, files.standardOutput);
  run.job.PageCount = GetLastOutputPage(run, files.standardOutput);
  if (FileExists(run, files.standardOutput) && !IsDebugRun(run)) run.host.files.Remove(files.standardOutput);
}

std::int32_t ConvertAndDeliver(Run& run, Dictionary& config, const std::string& psFile) {
  const std::string output = config.Text("output");
  if (output.empty()) {
    WriteLog(run, "No output specified");
    return exitcodes::kNothingDone;
  }
  run.job.OutputFile = output;
  const JobFiles files = NamesFor(run);
  Convert(run, config, files, psFile);
  const bool delivered = CopyToDestination(run, files.document, output, run.job.SuppressErrors);
  run.job.FileCount = delivered ? 1 : 0;
  WriteLog(run, "Finished");
  return delivered ? exitcodes::kDone : exitcodes::kNotDelivered;
}

}  // namespace

std::int32_t MakePDF(Run& run, const std::string& psFile) {
  WriteLog(run, "Show GUI");
  Settings config;
  std::string settingsFile;
  if (!GetJobConfig(run, config, settingsFile)) {
    WriteLog(run, "User pressed cancel");
    return exitcodes::kNothingDone;
  }
  run.job.JobConfig = config;
  const std::int32_t outcome = ConvertAndDeliver(run, *config, psFile);
  if (IsDebugRun(run)) {
    ShowMessage(run, "Debugging is enabled. The folder for temporary files will now open.", box::kInformation);
    ShellOpen(run, GetTemporaryFolder(run));
  }
  return outcome;
}

}  // namespace tessary
