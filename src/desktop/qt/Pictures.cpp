#include "desktop/qt/Pictures.h"

#include <QFile>
#include <QPainter>
#include <QPainterPath>
#include <QXmlStreamReader>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "desktop/qt/SvgPath.h"

namespace tessary {

namespace {

constexpr QStringView kWorking = u"working";
constexpr int kFrames = 12;
constexpr int kFrameDegrees = 360 / kFrames;
/// Multiples of what panels use, on plain screens and on scaled ones.
constexpr std::array kSizes{16, 22, 24, 32, 33, 44, 48, 64};

/// What an element hands down to those in it.
struct Style {
  QColor fill = Qt::black;
  bool crisp = false;
};

/// Draws the part of SVG that the pictures use: groups, paths of straight lines, circles, turning about a
/// point.
class Drawing {
 public:
  Drawing(QPainter& painter, qreal scale, int ringDegrees)
      : painter_(painter), scale_(scale), ringDegrees_(ringDegrees) {}

  void Draw(QXmlStreamReader& source) { DrawWithin(source, {}); }

 private:
  /// Draws the elements up to the end of the one that was begun last.
  void DrawWithin(QXmlStreamReader& source, const Style& style) {
    while (source.readNextStartElement()) {
      painter_.save();
      DrawWithin(source, Begin(source, style));
      painter_.restore();
    }
  }

  Style Begin(const QXmlStreamReader& source, Style style) {
    const QXmlStreamAttributes attributes = source.attributes();
    const auto text = [&attributes](const char* name) {
      return attributes.value(QLatin1String(name)).toString();
    };
    const auto number = [&text](const char* name, qreal otherwise) {
      const QString value = text(name);
      return value.isEmpty() ? otherwise : value.toDouble();
    };
    if (const QString fill = text("fill"); !fill.isEmpty()) style.fill = QColor(fill);
    if (text("shape-rendering") == u"crispEdges") style.crisp = true;
    if (text("id") == u"ring") Turn(ringDegrees_, Middle());
    if (const QString transform = text("transform"); !transform.isEmpty()) TurnAsTold(transform);

    QColor fill = style.fill;
    fill.setAlphaF(static_cast<float>(number("fill-opacity", 1)));
    painter_.setBrush(fill);
    painter_.setPen(Qt::NoPen);
    if (source.name() == u"circle") {
      const qreal radius = scale_ * number("r", 0);
      painter_.drawEllipse(scale_ * QPointF(number("cx", 0), number("cy", 0)), radius, radius);
    } else if (source.name() == u"path") {
      DrawPath(text("d"), text("stroke"), number("stroke-width", 1), style.crisp);
    }
    return style;
  }

  void DrawPath(const QString& data, const QString& stroke, qreal width, bool crisp) {
    qreal line = 0;
    if (!stroke.isEmpty()) {
      line = scale_ * width;
      if (crisp) line = std::max<qreal>(1, std::round(line));
      painter_.setPen(QPen(QColor(stroke), line, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    }
    painter_.drawPath(ReadSvgPath(data.toStdString(), scale_, crisp ? std::optional<qreal>(line) : std::nullopt,
                                  painter_.device()->width() / 2));
  }

  [[nodiscard]] QPointF Middle() const {
    return QPointF(painter_.device()->width(), painter_.device()->height()) / 2;
  }

  void Turn(qreal degrees, QPointF centre) {
    painter_.translate(centre);
    painter_.rotate(degrees);
    painter_.translate(-centre);
  }

  /// "rotate(degrees x y)".
  void TurnAsTold(const QString& transform) {
    const QStringList words = transform.mid(7, transform.size() - 8).split(u' ');
    if (words.size() == 3)
      Turn(words[0].toDouble(), scale_ * QPointF(words[1].toDouble(), words[2].toDouble()));
  }

  QPainter& painter_;
  qreal scale_;
  int ringDegrees_;
};

}  // namespace

QPixmap DrawPicture(std::string_view name, int pixels) {
  const QString whole = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
  bool isFrame = false;
  const int frame = QStringView(whole).mid(kWorking.size()).toInt(&isFrame);
  isFrame = isFrame && whole.startsWith(kWorking);
  QFile file(":/icons/" + (isFrame ? kWorking.toString() : whole) + ".svg");
  if (!file.open(QIODevice::ReadOnly)) return {};
  QXmlStreamReader source(&file);
  if (!source.readNextStartElement()) return {};
  const qreal side =
      source.attributes().value(QLatin1String("viewBox")).toString().section(u' ', 2, 2).toDouble();
  QPixmap picture(pixels, pixels);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  Drawing(painter, pixels / side, frame * kFrameDegrees).Draw(source);
  return picture;
}

QIcon PictureIcon(std::string_view name) {
  QIcon icon;
  for (const int size : kSizes) icon.addPixmap(DrawPicture(name, size));
  return icon;
}

}  // namespace tessary
