// The icon in the notification area and its balloon.
#pragma once

#include <QIcon>
#include <QSystemTrayIcon>
#include <cstdint>
#include <map>
#include <string>

#include "desktop/qt/Balloon.h"
#include "desktop/qt/Server.h"

namespace tessary {

/// Shows what gui wants in the notification area and tells gui what happens there. On a desktop without one the
/// icon waits for it, unseen.
class Tray {
 public:
  explicit Tray(Server& server);

 private:
  void ShowIcon(const TrayIconRequest& request);
  void Report(std::uint32_t what);
  void ReportClick(QSystemTrayIcon::ActivationReason reason);

  Server& server_;
  std::map<std::string, QIcon> pictures_;  ///< drawn so far
  std::string picture_;                    ///< shown now
  QSystemTrayIcon icon_;
  Balloon balloon_;
};

}  // namespace tessary
