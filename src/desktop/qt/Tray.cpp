#include "desktop/qt/Tray.h"

#include <QCursor>
#include <initializer_list>

#include "desktop/qt/Pictures.h"
#include "host/NotificationArea.h"

namespace tessary {

Tray::Tray(Server& server) : server_(server) {
  server.Handle(MessageKind::ShowTray,
                [this](const std::string& content) { ShowIcon(wire::Decode<TrayIconRequest>(content)); });
  server.Handle(MessageKind::HideTray, [this](const std::string&) {
    if (icon_) icon_->hide();
  });
  server.Handle(MessageKind::ShowBalloon, [this](const std::string& content) {
    Open();
    balloon_->Show(wire::Decode<BalloonRequest>(content), picture_);
  });
}

void Tray::Open() {
  if (icon_) return;
  icon_ = std::make_unique<QSystemTrayIcon>();
  balloon_ = std::make_unique<Balloon>(*icon_, [this](std::uint32_t what) { Report(what); });
  QObject::connect(icon_.get(), &QSystemTrayIcon::activated,
                   [this](QSystemTrayIcon::ActivationReason reason) { ReportClick(reason); });
}

void Tray::ShowIcon(const TrayIconRequest& request) {
  Open();
  if (request.picture != picture_) {
    picture_ = request.picture;
    QIcon& icon = pictures_[picture_];
    if (icon.isNull()) icon = PictureIcon(picture_);
    icon_->setIcon(icon);
  }
  icon_->setToolTip(QString::fromStdString(request.tip));
  if (!picture_.empty()) icon_->show();
}

void Tray::Report(std::uint32_t what) {
  const QPoint cursor = QCursor::pos();
  server_.Notify(MessageKind::TrayEvent, wire::Encode(TrayEvent{what, cursor.x(), cursor.y()}));
}

void Tray::ReportClick(QSystemTrayIcon::ActivationReason reason) {
  const auto report = [this](std::initializer_list<std::uint32_t> events) {
    for (const std::uint32_t what : events) Report(what);
  };
  switch (reason) {
    case QSystemTrayIcon::Trigger:
      return report({notify::kLeftDown, notify::kLeftUp});
    case QSystemTrayIcon::Context:
      return report({notify::kRightDown, notify::kRightUp});
    case QSystemTrayIcon::MiddleClick:
      return report({notify::kMiddleDown, notify::kMiddleUp});
    case QSystemTrayIcon::DoubleClick:
      return report({notify::kLeftDouble});
    default:
      return;
  }
}

}  // namespace tessary
