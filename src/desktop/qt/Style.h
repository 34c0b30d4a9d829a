// The look of all windows.
#pragma once

#include <QProxyStyle>

namespace tessary {

/// The desktop's own style, with lists that open below their field and scroll, however many entries they have,
/// and buttons of message boxes that look like those of the forms.
class Style : public QProxyStyle {
 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override;
};

}  // namespace tessary
