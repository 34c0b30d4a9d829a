// The icons of message boxes.
#pragma once

#include <QPixmap>

namespace tessary {

/// The icon for a value of namespace box, from the desktop's theme, or drawn where the theme has none. `size`
/// is that of its sides in pixels, before scaling by `ratio`.
QPixmap BoxIcon(std::int32_t icon, int size, qreal ratio);

}  // namespace tessary
