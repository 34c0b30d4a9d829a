// What is only looked at: labels, shapes and the sheet of paper that shapes lie on.
#include <QLabel>
#include <QPainter>
#include <QPalette>

#include "desktop/qt/ControlView.h"
#include "desktop/qt/Text.h"

namespace tessary {

namespace {

constexpr int kLongLabel = 40;   ///< letters; a longer one wraps
constexpr int kShadow = 3;       ///< pixels right of and below a sheet
constexpr int kSmallShape = 22;  ///< pixels; a shape that has no size of its own

QColor ToColor(std::int32_t color) { return {color & 255, color >> 8 & 255, color >> 16 & 255}; }

class LabelView : public ControlView {
 public:
  explicit LabelView(QLabel* label) : ControlView(label, {}), label_(label) {
    label->setTextFormat(Qt::PlainText);
  }

 protected:
  void Fill(const Control& control) override {
    const QString caption = Lines(control.caption);
    const bool wraps = control.multiLine || caption.size() > kLongLabel;
    label_->setWordWrap(wraps);
    const int letter = label_->fontMetrics().averageCharWidth();
    label_->setMinimumWidth(wraps ? kLongLabel / 2 * letter : 0);
    label_->setAlignment(Qt::AlignLeft | (wraps ? Qt::AlignTop : Qt::AlignVCenter));
    // Without a control that it leads to, a label shows every "&".
    label_->setText(label_->buddy() != nullptr ? caption : WithoutMnemonic(caption));
  }

 private:
  QLabel* label_;
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

/// A sheet of paper, white on any ground, with its shadow.
class SheetWidget : public QWidget {
 public:
  SheetWidget(const Box& size, QWidget* parent) : QWidget(parent), paper(new QWidget(this)) {
    paper->setGeometry(1, 1, size.width, size.height);
    setFixedSize(size.width + 2 + kShadow, size.height + 2 + kShadow);
  }

  QWidget* paper;  ///< the sheet without its edges

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QRect sheet = paper->geometry().adjusted(-1, -1, 1, 1);
    for (int depth = kShadow; depth > 0; --depth)
      painter.fillRect(sheet.translated(depth, depth), QColor(0, 0, 0, 30));
    painter.fillRect(sheet, QColor(150, 150, 150));
    painter.fillRect(paper->geometry(), Qt::white);
  }
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

}  // namespace

std::unique_ptr<ControlView> MakePictureView(const Control& control, QWidget* parent, Report) {
  if (control.kind == ControlKind::Label) return std::make_unique<LabelView>(new QLabel(parent));
  if (control.kind == ControlKind::Shape) return std::make_unique<ShapeView>(new ShapeWidget(parent));
  return std::make_unique<SheetView>(new SheetWidget(control.box, parent));
}

}  // namespace tessary
