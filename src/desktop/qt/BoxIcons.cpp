#include "desktop/qt/BoxIcons.h"

#include <QIcon>
#include <QPainter>
#include <QPainterPath>

#include "host/Desktop.h"

namespace tessary {

namespace {

struct Look {
  const char* themeName;
  QRgb color;
  char16_t sign;
};

Look LookOf(std::int32_t icon) {
  switch (icon) {
    case box::kCritical:
      return {"dialog-error", 0xFFD13438, u'\u00D7'};
    case box::kQuestion:
      return {"dialog-question", 0xFF1F6FC5, u'?'};
    case box::kExclamation:
      return {"dialog-warning", 0xFFF0A30A, u'!'};
    default:
      return {"dialog-information", 0xFF1F6FC5, u'i'};
  }
}

QPainterPath OutlineOf(std::int32_t icon) {
  QPainterPath path;
  if (icon != box::kExclamation) {
    path.addEllipse(2, 2, 60, 60);
    return path;
  }
  path.moveTo(32, 7);
  path.lineTo(60, 57);
  path.lineTo(4, 57);
  path.closeSubpath();
  return path;
}

/// The sign as a shape, so that it stands in the middle whatever the font.
QPainterPath SignOf(std::int32_t icon, char16_t sign) {
  QFont font;
  font.setBold(true);
  font.setPixelSize(icon == box::kCritical ? 60 : 44);
  QPainterPath path;
  path.addText(0, 0, font, QString(QChar(sign)));
  const QPointF middle = icon == box::kExclamation ? QPointF(32, 37) : QPointF(32, 32);
  const qreal scale = std::min(icon == box::kExclamation ? 0.85 : 1.0, 36 / path.boundingRect().height());
  path.translate(-path.boundingRect().center());
  return QTransform::fromTranslate(middle.x(), middle.y()).scale(scale, scale).map(path);
}

}  // namespace

QPixmap BoxIcon(std::int32_t icon, int size, qreal ratio) {
  const Look look = LookOf(icon);
  const QIcon ofTheme = QIcon::fromTheme(QLatin1String(look.themeName));
  if (!ofTheme.isNull()) return ofTheme.pixmap(QSize(size, size), ratio);

  QPixmap picture(QSize(size, size) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / 64.0, size / 64.0);
  const QColor color(look.color);
  painter.setPen(QPen(color, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(color);
  painter.drawPath(OutlineOf(icon));
  painter.fillPath(SignOf(icon, look.sign), Qt::white);
  return picture;
}

}  // namespace tessary
