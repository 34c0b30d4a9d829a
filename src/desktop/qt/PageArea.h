// A page that scrolls where there is no room for all of it.
#pragma once

#include <QScrollArea>

namespace tessary {

/// As large as its content wants to be, and smaller when it must.
class PageArea : public QScrollArea {
 public:
  explicit PageArea(QWidget* parent);

  [[nodiscard]] QWidget* Content() const { return widget(); }
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tessary
