#include "job/Progress.h"

#include "system/Conversions.h"
#include "system/frmMain.h"
#include "ui/modLocalize.h"

namespace tessary {

namespace {

bool IsWanted(Dictionary& config, const std::string& key) { return ToLower(config.Text(key)) != "no"; }

}  // namespace

void BeginProgress(Run& run, Dictionary& config) {
  run.tray.ShowProgressFinished = IsWanted(config, "showprogressfinished");
  if (!IsWanted(config, "showprogress")) return;
  MainForm(run).SetTip(Translate(run, "[L163]Creating PDF Document..."));
  MainForm(run).ShowTrayIcon();
}

void TellOfMerge(Run& run, Dictionary& config) {
  if (IsWanted(config, "showprogress"))
    MainForm(run).SetTip(Translate(run, "[L162]PDF merge operation in progress..."));
  run.host.desktop.PumpMessages();
}

void EndProgress(Run& run, const std::string& output, bool failed) {
  if (!run.tray.ShowProgressFinished || failed) {
    MainForm(run).HideTrayIcon();
    return;
  }
  run.tray.FinishedTime = run.host.clock.Ticks();
  MainForm(run).ShowBalloonTip(output);
  run.host.desktop.PumpMessages();
}

}  // namespace tessary
