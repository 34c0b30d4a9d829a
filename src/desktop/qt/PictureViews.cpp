// What is only looked at: labels, drawings, shapes and the sheet of paper that shapes lie on.
#include <QLabel>
#include <QPainter>
#include <QPalette>

#include "desktop/qt/ControlView.h"
#include "desktop/qt/Pictures.h"
#include "desktop/qt/Text.h"

namespace tessary {

namespace {

constexpr int kLongLabel = 40;   ///< letters; a longer one wraps
constexpr int kAway = 10;        ///< pixels
constexpr int kShadow = 3;       ///< pixels right of and below a sheet
constexpr int kSmallShape = 22;  ///< pixels; a shape that has no size of its own

QColor ToColor(std::int32_t color) { return {color & 255, color >> 8 & 255, color >> 16 & 255}; }

/// As wide as its text up to a limit, and then of several lines.
class WrappingLabel : public QLabel {
 public:
  using QLabel::QLabel;

  [[nodiscard]] QSize sizeHint() const override {
    if (!wordWrap()) return QLabel::sizeHint();
    const int letters = buddy() != nullptr ? kWidestBesideField : kWidest;
    const QMargins edges = contentsMargins();
    const int natural = fontMetrics().size(0, text()).width() + edges.left() + edges.right() + 1;
    const int width = std::min(natural, letters * fontMetrics().averageCharWidth());
    return {width, heightForWidth(width)};
  }
  [[nodiscard]] QSize minimumSizeHint() const override {
    if (!wordWrap()) return QLabel::minimumSizeHint();
    const QSize hint = sizeHint();
    return {std::min(hint.width(), kNarrowest * fontMetrics().averageCharWidth()), hint.height()};
  }

 private:
  static constexpr int kNarrowest = 20;  // letters
  static constexpr int kWidestBesideField = 30;
  static constexpr int kWidest = 75;
};

class LabelView : public ControlView {
 public:
  explicit LabelView(WrappingLabel* label) : ControlView(label, {}), label_(label) {
    label->setTextFormat(Qt::PlainText);
  }

 protected:
  void Fill(const Control& control) override {
    const QString caption = Breakable(Lines(control.caption));
    const bool wraps = control.multiLine || caption.size() > kLongLabel;
    const bool isHint = control.multiLine && control.place.columns > 1 && control.place.row > 0;
    // A paragraph below fields keeps away from them, and a label from the field of another one.
    label_->setContentsMargins(control.place.column > 0 ? kAway : 0, isHint ? kAway : 0, 0, 0);
    label_->setWordWrap(wraps);
    label_->setAlignment(Qt::AlignLeft | (control.multiLine ? Qt::AlignTop : Qt::AlignVCenter));
    // Without a control that it leads to, a label shows every "&".
    label_->setText(label_->buddy() != nullptr ? caption : WithoutMnemonic(caption));
  }

 private:
  WrappingLabel* label_;
};

/// A filled rectangle with a thin outline, so that it is seen on any ground.
class ShapeWidget : public QWidget {
 public:
  using QWidget::QWidget;
  QColor fill{};

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), fill);
    painter.setPen(QColor(0, 0, 0, 90));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
};

class ShapeView : public ControlView {
 public:
  explicit ShapeView(ShapeWidget* shape) : ControlView(shape, {}), shape_(shape) {}

 protected:
  void Fill(const Control& control) override {
    const Box& area = control.box;
    shape_->setFixedSize(area.width > 0 ? area.width : kSmallShape,
                         area.height > 0 ? area.height : kSmallShape);
    shape_->move(area.left, area.top);
    shape_->fill = ToColor(control.fillColor);
    shape_->update();
  }

 private:
  ShapeWidget* shape_;
};

/// A sheet of paper, white on any ground, with its shadow. A small one is a mere frame.
class SheetWidget : public QWidget {
 public:
  SheetWidget(const Box& size, QWidget* parent)
      : QWidget(parent), paper(new QWidget(this)), shadow_(size.width > kSmallSheet ? kShadow : 0) {
    paper->setGeometry(1, 1, size.width, size.height);
    setFixedSize(size.width + 2 + shadow_, size.height + 2 + shadow_);
  }

  QWidget* paper;  ///< the sheet without its edges

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QRect sheet = paper->geometry().adjusted(-1, -1, 1, 1);
    for (int depth = shadow_; depth > 0; --depth)
      painter.fillRect(sheet.translated(depth, depth), QColor(0, 0, 0, 30));
    painter.fillRect(sheet, QColor(150, 150, 150));
    painter.fillRect(paper->geometry(), Qt::white);
  }

 private:
  static constexpr int kSmallSheet = 40;  // pixels

  int shadow_;
};

class SheetView : public ControlView {
 public:
  explicit SheetView(SheetWidget* sheet) : ControlView(sheet, {}), sheet_(sheet) {}

  [[nodiscard]] QWidget* Container(const Control&) override { return sheet_->paper; }
  [[nodiscard]] bool PlacesByBox() const override { return true; }

 protected:
  void Fill(const Control&) override {}

 private:
  SheetWidget* sheet_;
};

/// One of the program's own pictures, sharp on any screen.
class DrawingWidget : public QWidget {
 public:
  using QWidget::QWidget;
  std::string name{};

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.drawPixmap(rect(), DrawPicture(name, static_cast<int>(width() * devicePixelRatioF())));
  }
};

class DrawingView : public ControlView {
 public:
  explicit DrawingView(DrawingWidget* drawing) : ControlView(drawing, {}), drawing_(drawing) {}

  [[nodiscard]] bool PlacesByBox() const override { return true; }

 protected:
  void Fill(const Control& control) override {
    drawing_->setFixedSize(control.box.width, control.box.height);
    drawing_->name = control.picture;
    drawing_->update();
  }

 private:
  DrawingWidget* drawing_;
};

}  // namespace

std::unique_ptr<ControlView> MakePictureView(const Control& control, QWidget* parent) {
  if (control.kind == ControlKind::Label) return std::make_unique<LabelView>(new WrappingLabel(parent));
  if (control.kind == ControlKind::Shape) return std::make_unique<ShapeView>(new ShapeWidget(parent));
  if (!control.picture.empty()) return std::make_unique<DrawingView>(new DrawingWidget(parent));
  return std::make_unique<SheetView>(new SheetWidget(control.box, parent));
}

}  // namespace tessary
