#include "desktop/qt/Balloon.h"

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QImage>
#include <QTimer>
#include <QVariantMap>
#include <utility>

#include "desktop/qt/Pictures.h"
#include "host/NotificationArea.h"
#include "system/modCustom.h"

namespace tessary {

/// A picture in the form in which notifications carry it.
struct NotificationPicture {
  QImage image;
};

QDBusArgument& operator<<(QDBusArgument& argument, const NotificationPicture& picture) {
  constexpr int kBits = 8, kChannels = 4;
  const QImage image = picture.image.convertToFormat(QImage::Format_RGBA8888);
  argument.beginStructure();
  argument << image.width() << image.height() << static_cast<int>(image.bytesPerLine()) << true << kBits
           << kChannels
           << QByteArray(reinterpret_cast<const char*>(image.constBits()),
                         static_cast<int>(image.sizeInBytes()));
  argument.endStructure();
  return argument;
}

/// Nobody sends us pictures; the type cannot be registered without this.
const QDBusArgument& operator>>(const QDBusArgument& argument, NotificationPicture&) { return argument; }

namespace {

constexpr const char* kService = "org.freedesktop.Notifications";
constexpr const char* kPath = "/org/freedesktop/Notifications";
constexpr int kReplyMilliseconds = 3000;
constexpr int kPicturePixels = 48;
constexpr uint kExpired = 1;  // a reason of NotificationClosed
constexpr int kDesktopsOwnTime = -1;
/// A panel needs a moment to take in a new icon.
constexpr int kIconMilliseconds = 300;
constexpr int kBalloonMilliseconds = 5000;

}  // namespace

}  // namespace tessary

Q_DECLARE_METATYPE(tessary::NotificationPicture)

namespace tessary {

Balloon::Balloon(QSystemTrayIcon& icon, Report report) : icon_(icon), report_(std::move(report)) {
  QObject::connect(&icon_, &QSystemTrayIcon::messageClicked, this, [this] { report_(notify::kBalloonClick); });
}

void Balloon::Show(const BalloonRequest& request, const std::string& picture) {
  title_ = QString::fromStdString(request.title);
  text_ = QString::fromStdString(request.text);
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return ShowBesideIcon();
  bus.connect(kService, kPath, kService, "NotificationClosed", this, SLOT(HandleClosed(uint, uint)));
  bus.connect(kService, kPath, kService, "ActionInvoked", this, SLOT(HandleAction(uint, QString)));
  Call("GetCapabilities", {}, [this, picture](const QDBusMessage& reply) {
    Send(reply.arguments().value(0).toStringList().contains("body-markup"), picture);
  });
}

void Balloon::Send(bool markup, const std::string& picture) {
  qDBusRegisterMetaType<NotificationPicture>();
  const QVariantMap hints{
      {"image-data", QVariant::fromValue(NotificationPicture{DrawPicture(picture, kPicturePixels).toImage()})}};
  const QVariantList arguments{QString::fromStdString(GetProductName()),
                               uint{0},  // it takes the place of no other
                               QString(),
                               title_,
                               markup ? text_.toHtmlEscaped() : text_,
                               QStringList{"default", title_},
                               hints,
                               kDesktopsOwnTime};
  Call("Notify", arguments, [this](const QDBusMessage& reply) {
    id_ = reply.arguments().value(0).toUInt();
    report_(notify::kBalloonShow);
  });
}

void Balloon::Call(const char* method, const QVariantList& arguments,
                   std::function<void(const QDBusMessage&)> done) {
  QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kService, method);
  call.setArguments(arguments);
  auto* watcher =
      new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call, kReplyMilliseconds), this);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, done = std::move(done)] {
    watcher->deleteLater();
    if (watcher->isError())
      ShowBesideIcon();
    else
      done(watcher->reply());
  });
}

void Balloon::ShowBesideIcon() {
  QTimer::singleShot(kIconMilliseconds, this, [this] {
    // An icon that is a window of its own has a place. One that the panel draws has none, and hands the balloon
    // on to the notifications that are not there.
    const bool seen = !icon_.geometry().isEmpty();
    if (seen) icon_.showMessage(title_, text_, icon_.icon(), kBalloonMilliseconds);
    report_(seen ? notify::kBalloonShow : notify::kBalloonHide);
  });
}

void Balloon::HandleClosed(uint id, uint reason) {
  if (id == 0 || id != id_) return;
  id_ = 0;
  report_(reason == kExpired ? notify::kBalloonTimeOut : notify::kBalloonHide);
}

void Balloon::HandleAction(uint id, const QString&) {
  if (id != 0 && id == id_) report_(notify::kBalloonClick);
}

}  // namespace tessary
