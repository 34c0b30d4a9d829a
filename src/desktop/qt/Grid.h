// Where the views of a container's children go.
#pragma once

#include <vector>

#include "desktop/qt/ControlView.h"

namespace tessary {

/// A child and its view.
struct Placed {
  const Control* control = nullptr;
  ControlView* view = nullptr;
  bool stretches = false;  ///< takes the width that is left: a field, or a panel with one in it
};

/// How much room there is around the cells.
enum class Margins { None, OfStyle };

/// True for what shows the more the taller it is.
bool IsTall(const Control& control);

/// Lays the children out in the cells that their places name. Columns with a field share the width that is
/// left, rows with a list or a tab strip the height.
void LayOut(QWidget* container, const std::vector<Placed>& children, Margins margins);

}  // namespace tessary
