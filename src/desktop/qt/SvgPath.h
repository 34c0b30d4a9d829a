// The outline of an SVG path that is made of straight lines.
#pragma once

#include <QPainterPath>
#include <optional>
#include <string_view>

namespace tessary {

/// The outline that `data` describes with the commands M, L, H, V and Z, all absolute, scaled by `scale`; it
/// ends before anything else. With `crispLine`, the width of its line in pixels, every corner is moved so that
/// straight edges fall between pixels, and what is the same on both sides of `middle` stays so.
QPainterPath ReadSvgPath(std::string_view data, qreal scale, std::optional<qreal> crispLine, int middle);

}  // namespace tessary
