#include "desktop/qt/PageArea.h"

#include <QEvent>
#include <QVBoxLayout>

namespace tessary {

PageArea::PageArea(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  auto* content = new QWidget;
  setWidget(content);
  // What is behind the page shines through.
  content->setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  content->installEventFilter(this);
}

QSize PageArea::sizeHint() const {
  const QSize hint = widget()->sizeHint();
  const int height = widget()->hasHeightForWidth() ? widget()->heightForWidth(hint.width()) : hint.height();
  return {hint.width(), std::max(hint.height(), height)};
}

QSize PageArea::minimumSizeHint() const {
  const int letter = fontMetrics().height();
  return widget()->minimumSizeHint().boundedTo({20 * letter, 8 * letter});
}

bool PageArea::eventFilter(QObject* watched, QEvent* event) {
  if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace tessary
