// The form behind the tray icon. It is never shown; it holds the frames of the animation and the one timer, and
// tells of a job in the notification area: an icon that turns, a tip that counts the pages, and at the end a
// balloon with the name of the document. None of it can fail a job.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "system/CBalloonToolTipNotify.h"
#include "system/Run.h"

namespace tessary {

class frmMain {
 public:
  explicit frmMain(Run& run);
  ~frmMain();
  frmMain(const frmMain&) = delete;
  frmMain& operator=(const frmMain&) = delete;

  /// Shows the icon with this tool tip.
  void SetTip(const std::string& tip);
  /// Shows the icon and lets it turn once in 1.2 seconds. While `run.job.ProgressFile` names a file, the tip
  /// follows the pages that are counted in it.
  void ShowTrayIcon();
  void HideTrayIcon();
  /// Stops the icon at its check mark and tells that `run.job.PageCount` pages became `fileName`. Sets
  /// `run.tray.BalloonClosed` to false, and its events to true.
  void ShowBalloonTip(const std::string& fileName);

 private:
  static constexpr std::size_t kFrames = 12;

  CBalloonToolTipNotify& Icon();  ///< `tt`, made at first use
  void StartTimer();
  void Tick();
  void CountPages();

  Run& run_;
  std::array<TrayPicture, kFrames> picTray_;
  TrayPicture picCheck_;
  std::unique_ptr<CBalloonToolTipNotify> tt_;
  std::size_t frame_ = 0;
};

/// The form of this run, made at first use.
frmMain& MainForm(Run& run);

/// Hides the icon, with its balloon, and drops the form.
void UnloadMainForm(Run& run);

}  // namespace tessary
