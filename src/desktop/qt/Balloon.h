// The balloon of the tray icon: a notification of the desktop, or, where it has none, one beside the icon.
#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QSystemTrayIcon>
#include <QVariantList>
#include <cstdint>
#include <functional>
#include <string>

#include "desktop/Messages.h"

namespace tessary {

class Balloon : public QObject {
  Q_OBJECT

 public:
  /// Gets a value of namespace notify for all that becomes of a balloon. Where it cannot be shown that is
  /// kBalloonHide.
  using Report = std::function<void(std::uint32_t what)>;

  Balloon(QSystemTrayIcon& icon, Report report);

  /// Shows a balloon with one of the program's pictures. A notification of the desktop outlives this process.
  void Show(const BalloonRequest& request, const std::string& picture);

 private slots:
  void HandleClosed(uint id, uint reason);
  void HandleAction(uint id, const QString& action);

 private:
  /// Calls the desktop's notifications and then `done` with the reply, or ShowBesideIcon if there is none.
  void Call(const char* method, const QVariantList& arguments, std::function<void(const QDBusMessage&)> done);
  void Send(bool markup, const std::string& picture);
  void ShowBesideIcon();

  QSystemTrayIcon& icon_;
  Report report_;
  QString title_;
  QString text_;
  uint id_ = 0;  ///< of the notification; 0: none is shown
};

}  // namespace tessary
