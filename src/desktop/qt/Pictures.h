// The program's pictures, drawn from their SVG sources (src/desktop/icons) at the size that is wanted.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <string_view>

namespace tessary {

/// The picture `name` ("tessary", the program's own; "finished"; "help"; "printer"; "working0" to "working11")
/// in whole pixels. A null picture for another name.
QPixmap DrawPicture(std::string_view name, int pixels);

/// The same in all the sizes that panels and windows ask for.
QIcon PictureIcon(std::string_view name);

}  // namespace tessary
