#include "system/frmMain.h"

#include "ghostscript/modGhostScript.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "ui/modLocalize.h"

namespace tessary {

namespace {

constexpr std::int32_t kTickMilliseconds = 100;

}  // namespace

frmMain::frmMain(Run& run) : run_(run) {
  NotificationArea& area = run_.host.notificationArea;
  for (std::size_t i = 0; i < kFrames; ++i) picTray_[i].handle = area.IconNamed("working" + std::to_string(i));
  picCheck_.handle = area.IconNamed("finished");
}

frmMain::~frmMain() { run_.host.notificationArea.StopTimer(); }

void frmMain::SetTip(const std::string& tip) {
  Icon().SetText(tip);
  Icon().SetVisible(true);
}

void frmMain::ShowTrayIcon() {
  Icon().SetVisible(true);
  Icon().SetTrayIcon(picTray_[0].handle);
  StartTimer();
}

void frmMain::HideTrayIcon() {
  run_.host.notificationArea.StopTimer();
  if (tt_) tt_->SetVisible(false);
}

void frmMain::ShowBalloonTip(const std::string& fileName) {
  run_.host.notificationArea.StopTimer();
  run_.tray.BalloonClosed = false;
  CBalloonToolTipNotify& tt = Icon();
  tt.SetBalloonIconType(notify::kIconInfo);
  tt.SetBalloonTitle(ReplaceAll(Translate(run_, "[L165]PDF Document Created (%1 pages)"), "%1",
                                std::to_string(run_.job.PageCount)));
  tt.SetBalloonText(ReplaceAll(Translate(run_, "[L166]%1 was created"), "%1", fileName));
  tt.SetTrayIcon(picCheck_.handle);
  tt.SetVisible(true);
  tt.ShowNotifyBalloonTip("", "", -1, -1);
}

CBalloonToolTipNotify& frmMain::Icon() {
  if (!tt_) {
    tt_ = std::make_unique<CBalloonToolTipNotify>(run_);
    const auto closed = [this] { run_.tray.BalloonClosed = true; };
    tt_->events.BalloonClick = [closed](std::int32_t, std::int32_t) { closed(); };
    tt_->events.BalloonHide = closed;
    tt_->events.BalloonTimeOut = closed;
  }
  return *tt_;
}

void frmMain::StartTimer() {
  run_.host.notificationArea.StartTimer(kTickMilliseconds, [this] { Tick(); });
}

void frmMain::Tick() {
  run_.host.notificationArea.StopTimer();  // a slow tick must not stack up
  frame_ = (frame_ + 1) % kFrames;
  Icon().SetTrayIcon(picTray_[frame_].handle);
  if (frame_ == 0 && !run_.job.ProgressFile.empty()) CountPages();
  StartTimer();
}

void frmMain::CountPages() {
  try {
    const std::int32_t pages = GetLastOutputPage(run_, run_.job.ProgressFile);
    if (pages > 0)
      SetTip(ReplaceAll(Translate(run_, "[L167]%1 pages created..."), "%1", std::to_string(pages)));
  } catch (const Error&) {
    // The old tip stays; a tick must never end the job that it comes in between.
  }
}

frmMain& MainForm(Run& run) {
  if (!run.tray.mainForm) run.tray.mainForm = std::make_shared<frmMain>(run);
  return *run.tray.mainForm;
}

void UnloadMainForm(Run& run) {
  if (run.tray.mainForm) run.tray.mainForm->HideTrayIcon();
  run.tray.mainForm.reset();
}

}  // namespace tessary
