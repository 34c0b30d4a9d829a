#include "desktop/qt/SvgPath.h"

#include <charconv>
#include <cmath>

namespace tessary {

namespace {

class PathReader {
 public:
  PathReader(std::string_view data, qreal scale, std::optional<qreal> crispLine, int middle)
      : rest_(data), scale_(scale), crispLine_(crispLine), middle_(middle) {}

  QPainterPath Read() {
    QPainterPath path;
    QPointF at;
    for (char command; (command = Next()) != 0;) {
      if (command == 'M' || command == 'L' || command == 'H') at.setX(Coordinate());
      if (command == 'M' || command == 'L' || command == 'V') at.setY(Coordinate());
      if (command == 'M') path.moveTo(at);
      if (command == 'L' || command == 'H' || command == 'V') path.lineTo(at);
      if (command == 'Z') path.closeSubpath();
    }
    return path;
  }

 private:
  void SkipBlanks() {
    while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == ',')) rest_.remove_prefix(1);
  }

  /// The next command; 0 at the end, or before what is none.
  char Next() {
    SkipBlanks();
    if (rest_.empty() || std::string_view("MLHVZ").find(rest_.front()) == std::string_view::npos) return 0;
    const char command = rest_.front();
    rest_.remove_prefix(1);
    return command;
  }

  qreal Coordinate() {
    SkipBlanks();
    qreal value = 0;
    const auto read = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
    rest_.remove_prefix(static_cast<std::size_t>(read.ptr - rest_.data()));
    value *= scale_;
    if (!crispLine_) return value;
    const qreal shift = middle_ + std::fmod(*crispLine_, 2) / 2;
    return std::round(value - shift) + shift;
  }

  std::string_view rest_;
  qreal scale_;
  std::optional<qreal> crispLine_;
  int middle_;
};

}  // namespace

QPainterPath ReadSvgPath(std::string_view data, qreal scale, std::optional<qreal> crispLine, int middle) {
  return PathReader(data, scale, crispLine, middle).Read();
}

}  // namespace tessary
