// The icon in the notification area and its balloon.
#pragma once

#include <QIcon>
#include <QSystemTrayIcon>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "desktop/qt/Balloon.h"
#include "desktop/qt/Server.h"

namespace tessary {

/// Shows what gui wants in the notification area and tells gui what happens there. On a desktop without one the
/// icon waits for it, unseen. Nothing is asked of the desktop before something has to be shown there.
class Tray {
 public:
  explicit Tray(Server& server);

 private:
  /// Makes what is there from the first need on.
  void Open();
  void ShowIcon(const TrayIconRequest& request);
  void Report(std::uint32_t what);
  void ReportClick(QSystemTrayIcon::ActivationReason reason);

  Server& server_;
  std::map<std::string, QIcon> pictures_;  ///< drawn so far
  std::string picture_;                    ///< shown now
  std::unique_ptr<QSystemTrayIcon> icon_;  ///< null: not needed yet
  std::unique_ptr<Balloon> balloon_;       ///< the same
};

}  // namespace tessary
