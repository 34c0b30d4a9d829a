#include "job/modMain.h"

#include <new>

#include "config/modConfig.h"
#include "config/modFolders.h"
#include "job/FollowUp.h"
#include "job/StatusFile.h"
#include "job/modMakePDF.h"
#include "job/modProject.h"
#include "postscript/modPostScript.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/frmInstances.h"
#include "system/frmMain.h"
#include "system/modComCtl.h"
#include "system/modCustom.h"
#include "system/modInstances.h"
#include "system/modLog.h"
#include "system/modUtil.h"
#include "ui/frmOptions.h"
#include "ui/modLocalize.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

constexpr const char* kDictionaryComponent = "Scripting.Dictionary";
constexpr std::int32_t kOutOfMemory = 7;
constexpr std::int64_t kBalloonMilliseconds = 5000;
constexpr int kWaitMilliseconds = 50;

/// With a side-by-side manifest the shell's library is loaded and the common controls are started. 0 without
/// one.
ModuleHandle LoadForManifest(Run& run) {
  const PathStyle& style = run.host.paths;
  const std::string manifest =
      JoinPath(style, GetProgramFolder(run), BaseNameOf(style, run.host.programFile) + ".exe.Manifest");
  if (!FileExists(run, manifest)) return 0;
  const ModuleHandle module = run.host.components.LoadModule("shell32.dll");
  InitCommonControls(run);
  return module;
}

bool IsDictionaryThere(Run& run) {
  try {
    CreateObjectChecked(run, kDictionaryComponent);
    return true;
  } catch (const Error& error) {
    if (error.number() == failures::kComponentMissing) return false;
    throw;
  }
}

std::int32_t ReportMissingComponent(Run& run) {
  ShowMessage(run,
              "The Scripting.Dictionary component is missing from your computer.\r\n\r\n"
              "A web page will now open with a link to the download of Microsoft Windows Scripting Host (WSH)."
              " After the installation of WSH your system should have the required components.",
              box::kForeground);
  OpenScriptingDownloadPage(run, kDictionaryComponent);
  return exitcodes::kNothingDone;
}

/// The full path of the job's PostScript file, which must be there.
std::string RequirePostScript(Run& run, const std::string& given) {
  std::string file = FullPath(run.host, run.host.paths.Native(given));
  if (given.empty() || !FileExists(run, file))
    throw Error(errors::kPostScriptMissing, "Unable to find postscript file '" + given + "'.");
  return file;
}

/// What is there must be readable and hold something.
void RequireContent(Run& run, const std::string& file) {
  const auto found = run.host.files.Find(file);
  if (!found || found->kind != FileKind::Plain) return;
  if (const auto opened = run.host.files.Open(file, OpenMode::Read); !opened.ok())
    throw Error(opened.failure.number, "Unable to read postscript file '" + file + "'. " + opened.failure.text);
  // Ghostscript would make a blank page of nothing, and that page would take the place of an earlier document.
  if (found->size == 0) throw Error(errors::kPostScriptMissing, "The postscript file '" + file + "' is empty.");
}

std::int32_t IconFlags(const std::string& icon) {
  const std::string name = ToLower(icon);
  if (name == "error") return box::kCritical;
  if (name == "exclamation") return box::kExclamation;
  return box::kInformation;
}

std::int32_t RunSettingsMode(Run& run) {
  if (IsOptionDialogDisabled(run)) {
    ShowMessage(run, "Options dialog is disabled.", box::kInformation + box::kForeground);
    return exitcodes::kNothingDone;
  }
  run.job.InstanceName = SelectInstance(run);
  return frmOptions(run).Show() ? exitcodes::kDone : exitcodes::kNothingDone;
}

/// The stages of the run. `stage` names the one under way for the error box; it is in no log.
std::int32_t RunStages(Run& run, std::string& stage) {
  JobState& job = run.job;
  Dictionary& parameters = job.CommandLineParameters;
  const auto parameter = [&parameters](const char* name) {
    return parameters.Exists(name) ? parameters.Text(name) : std::string();
  };

  stage = "Init language";
  LoadLabels(run);
  stage = "Parse command line";
  parameters = ParseCommandLine(run.host.commandLine);
  stage = "Read Session Id from parameters";
  job.SessionId = SafeFileName(parameter("sessionid"));
  RemoveOldLogFile(run);
  WriteLog(run, "Command Line: " + run.host.commandLine);

  stage = "Read PS file from parameters";
  std::string psFile;
  if (parameters.Exists("ps")) psFile = RequirePostScript(run, parameter("ps"));
  stage = "Read message from parameters";
  const std::string message = UnescapeMessage(parameter("msg"));
  stage = "Read icon type from parameters";
  const std::string icon = parameter("icon");
  if (!message.empty()) {
    ShowMessage(run, message, IconFlags(icon) + box::kForeground);
    return exitcodes::kDone;
  }

  stage = "Read document name from parameters";
  job.DocumentName = parameter("doc");
  stage = "Read printer name from parameters";
  job.PrinterName = parameter("printer");
  job.InstanceName = GetInstanceFromPrinterName(job.PrinterName);

  if (psFile.empty()) return RunSettingsMode(run);
  stage = "Read PS file from parameters";
  RequireContent(run, psFile);
  stage = "Extract document properties such as title and author";
  job.DocumentProperties = GetDocumentProperties(run, psFile);
  stage = "Make PDF";
  return MakePDF(run, psFile);
}

std::string Describe(const Error& error) {
  return "Error " + std::to_string(error.number()) + ": " + error.description();
}

/// What fails in the handler is logged, and the handler goes on.
template <class Step>
void TryInHandler(Run& run, Step step) {
  try {
    step();
  } catch (const Error& error) {
    LogQuietly(run, "Error handler. " + Describe(error));
  }
}

/// Does for a failed job what the end of the pipeline would have done.
void ReportFailedJob(Run& run) {
  JobState& job = run.job;
  const Settings& config = job.JobConfig;
  TryInHandler(run, [&] {
    if (config) WriteStatusFile(run, false, config, job.PageCount, job.FileCount, "");
  });
  TryInHandler(run, [&] {
    if (job.RunOnErrorProgram.empty() || job.RunOnErrorDone) return;
    WriteLog(run, "Run on error" + job.RunOnErrorProgram);  // without a blank, unlike the pipeline's record
    RunProgram(run, job.RunOnErrorProgram, job.RunOnErrorFolder, job.OutputFile, job.PageCount, job.FileCount);
  });
  TryInHandler(run, [&] {
    const std::string program = config ? config->Text("afterprintprogram") : "";
    if (program.empty() || job.AfterPrintDone) return;
    WriteLog(run, "Run afterprintprogram " + program);
    RunProgram(run, program, config->Text("afterprintprogramdir"), job.OutputFile, job.PageCount,
               job.FileCount);
  });
}

void HandleError(Run& run, const Error& error, const std::string& stage, ModuleHandle module) {
  const std::string what = Describe(error);
  ReportFailedJob(run);
  if (!run.job.SuppressErrors)
    ShowMessage(run, Translate(run, "[L109]An error occured.") + "\r\n\r\n" + what + "\r\n\r\n" + stage,
                box::kCritical);
  LogQuietly(run, "Error handler. " + what);
  if (module != 0) run.host.components.UnloadModule(module);
  CleanupSessionFiles(run, true);
  UnloadMainForm(run);
}

/// True if the end of the run has to leave this file of the session.
bool StaysAfterRun(Run& run, const std::string& name, bool keepLogs) {
  return run.job.DebugSetting || (keepLogs && ToLower(name).ends_with(".log"));
}

/// The session's files begin with its id and go on with something that is no part of an id: the job "1" leaves
/// the files of the job "10" alone. Without an id they begin with "_"; the log, which has a name of its own, is
/// none of them then.
bool IsOfSession(Run& run, const std::string& name) {
  const std::string& session = run.job.SessionId;
  if (session.empty()) return name.starts_with('_') && !ToLower(name).ends_with(".log");
  if (name.size() <= session.size()) return false;
  const std::string head = name.substr(0, session.size());
  const bool same = run.host.paths.ignoresCase ? ToLower(head) == ToLower(session) : head == session;
  return same && (name[session.size()] == '_' || name[session.size()] == '.');
}

/// Leaves the balloon of the finished document on the screen for its time, or until it has been closed.
void WaitForBalloon(Run& run) {
  const TrayState& tray = run.tray;
  if (!tray.ShowProgressFinished || !tray.FinishedTime) return;
  while (!tray.BalloonClosed && run.host.clock.Ticks() - *tray.FinishedTime < kBalloonMilliseconds) {
    run.host.clock.SleepFor(kWaitMilliseconds);
    run.host.desktop.PumpMessages();
  }
}

}  // namespace

std::int32_t Main(Run& run) {
  std::string stage;
  ModuleHandle module = 0;
  std::int32_t outcome = exitcodes::kDone;
  try {
    module = LoadForManifest(run);
    outcome = IsDictionaryThere(run) ? RunStages(run, stage) : ReportMissingComponent(run);
  } catch (const Error& error) {
    HandleError(run, error, stage, module);
    return exitcodes::kError;
  } catch (const std::bad_alloc&) {
    HandleError(run, Error(kOutOfMemory, "Out of memory"), stage, module);
    return exitcodes::kError;
  }
  WaitForBalloon(run);
  UnloadMainForm(run);
  if (module != 0) run.host.components.UnloadModule(module);
  CleanupSessionFiles(run, outcome == exitcodes::kNotDelivered);  // its log alone says why
  return outcome;
}

void CleanupSessionFiles(Run& run, bool keepLogs) {
  static constexpr std::int64_t kOldSeconds = 2 * 24 * 3600;
  if (IsDebugRun(run)) return;
  std::string folder;
  try {
    folder = GetTemporaryFolder(run);
  } catch (const Error&) {
    return;
  }
  const std::int64_t now = run.host.clock.UnixTime();
  for (const FileInfo& file : run.host.files.List(folder).value) {
    if (file.kind != FileKind::Plain) continue;
    const bool ofSession = IsOfSession(run, file.name) && !StaysAfterRun(run, file.name, keepLogs);
    if (ofSession || now - file.modified > kOldSeconds)
      run.host.files.Remove(JoinPath(run.host.paths, folder, file.name));
  }
}

bool IsOptionDialogDisabled(Run& run) {
  std::string settingsFile;
  const Settings settings = LoadConfig(run, true, settingsFile);
  return ToLower(TrimBlanks(settings->Text("disableoptiondialog"))) == "yes";
}

void OpenScriptingDownloadPage(Run& run, const std::string& context) {
  const COpSysInfo& system = GetOpSysInfo(run);
  ShellOpen(run, "https://" + GetVendorSite() + "/dispatch/?action=ScriptingDownload&productid=pdf&major=" +
                     std::to_string(system.MajorVersion()) + "&minor=" + std::to_string(system.MinorVersion()) +
                     "&platform=" + std::to_string(system.PlatformID()) +
                     "&buildnumber=" + std::to_string(system.BuildNumber()) +
                     "&context=" + UrlEncode(EncodeText(run.host.codePage, context)));
}

}  // namespace tessary
