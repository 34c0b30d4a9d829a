#include "job/modMakePDF.h"

#include "config/modConfig.h"
#include "config/modFolders.h"
#include "job/Conversion.h"
#include "job/Delivery.h"
#include "job/FollowUp.h"
#include "job/Progress.h"
#include "job/StatusFile.h"
#include "system/Conversions.h"
#include "system/ExitCodes.h"
#include "system/Paths.h"
#include "system/modLog.h"
#include "system/modUtil.h"
#include "ui/modLocalize.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

/// Starts the command that `key` holds, if there is one, in `folder`. True if it was started.
bool StartFollowUp(Run& run, Dictionary& config, const std::string& key, const std::string& folder,
                   const std::string& record) {
  const std::string command = config.Text(key);
  if (command.empty()) return false;
  WriteLog(run, record + " " + command);
  RunProgram(run, command, folder, run.job.OutputFile, run.job.PageCount, run.job.FileCount);
  return true;
}

void StartFollowUps(Run& run, Dictionary& config, bool failed) {
  if (!failed) StartFollowUp(run, config, "runonsuccess", config.Text("runonsuccessdir"), "Run on success");
  // The command is its own folder here, where `runonerrordir` would be expected: this is meant. As there is no
  // such folder, the command is started by the error handler as a rule.
  if (failed && StartFollowUp(run, config, "runonerror", config.Text("runonerror"), "Run on error"))
    run.job.RunOnErrorDone = true;
  if (StartFollowUp(run, config, "afterprintprogram", config.Text("afterprintprogramdir"),
                    "Run afterprintprogram"))
    run.job.AfterPrintDone = true;
}

void OpenFolderOf(Run& run, const std::string& output) {
  const std::string folder = ParentFolder(run.host.paths, output);
  WriteLog(run, "Open destination folder " + folder);
  ShellOpen(run, folder);
}

Delivery Deliver(Run& run, const Product& product, const std::string& output) {
  if (product.isPageWise) return DeliverPages(run, product.file, product.extension, output);
  return DeliverFile(run, product.isImages ? product.file + "." + product.extension : product.file, output);
}

/// What the delivery has led to reaches the user and other programs.
void Report(Run& run, const Settings& config, const std::string& output, const Delivery& delivery) {
  if (ToLower(config->Text("showpdf")) == "yes" && !delivery.failed) {
    WriteLog(run, "Show");
    ShowDocument(run, output);
  }
  WriteLog(run, "Write status file");
  WriteStatusFile(run, !delivery.failed, config, run.job.PageCount, run.job.FileCount, delivery.fileList);
  StartFollowUps(run, *config, delivery.failed);
  if (ToLower(TrimBlanks(config->Text("openfolder"))) == "yes") OpenFolderOf(run, output);
}

std::int32_t ConvertAndDeliver(Run& run, const Settings& config, const std::string& psFile) {
  const std::string output = config->Text("output");
  if (output.empty()) {
    WriteLog(run, "No output specified");
    return exitcodes::kNothingDone;
  }
  run.job.OutputFile = output;
  BeginProgress(run, *config);
  const Product product = ConvertJob(run, *config, NameJobFiles(run), psFile, output);
  run.job.FileCount = 0;
  const Delivery delivery = Deliver(run, product, output);
  run.job.FileCount = delivery.fileCount;
  EndProgress(run, output, delivery.failed);
  Report(run, config, output, delivery);
  WriteLog(run, "Finished");
  return delivery.failed ? exitcodes::kNotDelivered : exitcodes::kDone;
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
  run.job.RunOnErrorProgram = config->Text("runonerror");
  run.job.RunOnErrorFolder = config->Text("runonerrordir");
  run.job.JobConfig = config;
  const std::int32_t outcome = ConvertAndDeliver(run, config, psFile);
  if (IsDebugRun(run)) {
    ShowMessage(run, "Debugging is enabled. The folder for temporary files will now open.", box::kInformation);
    ShellOpen(run, GetTemporaryFolder(run));
  }
  return outcome;
}

}  // namespace tessary
