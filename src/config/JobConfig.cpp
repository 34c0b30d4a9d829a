// From the settings of an instance to those of one job: macros, remembered names and the dialogs.
#include "config/modConfig.h"
#include "config/modMacros.h"
#include "system/Conversions.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "ui/frmDlg.h"
#include "ui/frmPrintConfig.h"
#include "ui/modLocalize.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

bool IsYes(Dictionary& config, const std::string& key) { return ToLower(config.Text(key)) == "yes"; }

/// Doubled separators behind the first character become single ones; a network path keeps the two that it
/// begins with.
std::string CleanOutput(const PathStyle& style, const std::string& output) {
  const std::string path = TrimBlanks(output);
  std::string clean;
  for (std::size_t i = 0; i < path.size(); ++i)
    if (i < 2 || !style.IsSeparator(path[i]) || !style.IsSeparator(path[i - 1])) clean += path[i];
  return clean;
}

void ExpandText(Run& run, Dictionary& config, const std::string& key) {
  config.Set(key, ExpandMacros(run, config.Text(key), false));
}

/// What scripts and the environment give may hold the separators of another machine.
void ExpandPath(Run& run, Dictionary& config, const std::string& key) {
  config.Set(key, run.host.paths.Native(ExpandMacros(run, config.Text(key), true)));
}

/// The author falls back to the job's where the setting is empty.
void SettleAuthor(Run& run, Dictionary& config) {
  const std::string jobs = run.job.DocumentProperties.Text("author");
  const bool wanted = IsYes(config, "usedefaultauthor") ? !jobs.empty() : config.Text("author").empty();
  if (wanted)
    config.Set("author", jobs);
  else
    ExpandText(run, config, "author");
}

/// Unlike the author an empty title stays empty: the job's is taken only on request, and this is meant.
void SettleTitle(Run& run, Dictionary& config) {
  const std::string jobs = run.job.DocumentProperties.Text("title");
  if (IsYes(config, "usedefaulttitle") && !jobs.empty())
    config.Set("title", jobs);
  else
    ExpandText(run, config, "title");
}

bool IsYesTrimmed(Dictionary& config, const std::string& key) {
  return ToLower(TrimBlanks(config.Text(key))) == "yes";
}

bool WantsSaveAs(Run& run, Dictionary& config) {
  const std::string when = ToLower(config.Text("showsaveas")), output = config.Text("output");
  if (when == "never" || when == "always") return when == "always";
  return output.empty() || FolderExists(run, output);
}

void RestoreLast(Run& run, Dictionary& config) {
  if (IsYesTrimmed(config, "rememberlastfilename")) RestoreLastFileName(run, config);
  if (IsYesTrimmed(config, "rememberlastfoldername")) RestoreLastFolderName(run, config);
}

void RememberLast(Run& run, Dictionary& config) {
  const PathStyle& style = run.host.paths;
  const std::string output = config.Text("output");
  if (IsYesTrimmed(config, "rememberlastfilename"))
    SetUserSetting(run, "lastfilename", FileNameOf(style, output));
  if (IsYesTrimmed(config, "rememberlastfoldername"))
    SetUserSetting(run, "lastfoldername", ParentFolder(style, output));
}

/// A cancel leaves no output, unless the settings dialog is still to come.
void AskForOutput(Run& run, Dictionary& config, bool settingsFollow) {
  const std::string chosen = SaveAs(run, config.Text("output"), IsConfirmOverwrite(config));
  if (chosen.empty() && settingsFollow) return;
  config.Set("output", chosen);
  run.ui.ConfirmedOutputFile = chosen;
}

/// Settles "ask" where no dialog has. A No leaves it, which shows nothing.
void AskToShowPdf(Run& run, Dictionary& config) {
  const std::string output = config.Text("output");
  if (ToLower(config.Text("showpdf")) != "ask" || output.empty()) return;
  const std::string question =
      Translate(run, "[L95]Do you want to open the PDF document?") + "\r\n\r\n" + output;
  if (ShowMessage(run, question, box::kYesNo + box::kQuestion) == box::kAnswerYes) config.Set("showpdf", "yes");
}

}  // namespace

bool GetJobConfig(Run& run, Settings& config, std::string& settingsFile) {
  config = LoadConfig(run, false, settingsFile);
  run.job.SuppressErrors = IsYes(*config, "suppresserrors");
  run.job.DebugSetting = IsYes(*config, "debug");
  ExpandConfigValues(run, *config);

  const bool showSaveAs = WantsSaveAs(run, *config);
  const bool showSettings = ToLower(config->Text("showsettings")) != "never";
  if (showSaveAs || showSettings) RestoreLast(run, *config);
  if (showSaveAs) AskForOutput(run, *config, showSettings);
  bool goOn = true;
  if (showSettings)
    goOn = frmPrintConfig(run, config).Show();
  else
    AskToShowPdf(run, *config);
  if (goOn && (showSaveAs || showSettings)) RememberLast(run, *config);
  return goOn;
}

void ExpandConfigValues(Run& run, Dictionary& config) {
  ExpandPath(run, config, "output");
  config.Set("output", CleanOutput(run.host.paths, config.Text("output")));
  ExpandText(run, config, "watermarktext");
  ExpandPath(run, config, "mergefile");
  ExpandPath(run, config, "superimpose");
  SettleAuthor(run, config);
  SettleTitle(run, config);
  ExpandText(run, config, "subject");
  ExpandText(run, config, "keywords");
}

void RestoreLastFileName(Run& run, Dictionary& config) {
  const PathStyle& style = run.host.paths;
  const std::string output = config.Text("output");
  const std::string last = GetUserSetting(run, "lastfilename", "");
  if (last.empty()) return;
  const std::string folder = FolderExists(run, output) ? output : ParentFolder(style, output);
  config.Set("output", JoinPath(style, StripTrailingBackslashes(style, folder), last));
}

void RestoreLastFolderName(Run& run, Dictionary& config) {
  const PathStyle& style = run.host.paths;
  const std::string last = StripTrailingBackslashes(style, GetUserSetting(run, "lastfoldername", ""));
  if (!last.empty()) config.Set("output", JoinPath(style, last, FileNameOf(style, config.Text("output"))));
}

}  // namespace tessary
