#include "desktop/qt/Grid.h"

#include <QGridLayout>
#include <algorithm>
#include <map>
#include <set>

namespace tessary {

namespace {

Qt::Alignment AlignmentOf(const Placed& child) {
  switch (child.control->kind) {
    case ControlKind::Button:
    case ControlKind::Shape:
      return Qt::AlignLeft | Qt::AlignVCenter;
    case ControlKind::Picture:
      return child.view->PlacesByBox() ? Qt::AlignLeft | Qt::AlignTop : Qt::Alignment();
    case ControlKind::DropDown:
    case ControlKind::EntryList:
      return Qt::AlignLeft;
    case ControlKind::TextField:
      return child.view->Widget()->maximumWidth() < QWIDGETSIZE_MAX ? Qt::AlignLeft : Qt::Alignment();
    default:
      return {};
  }
}

/// The columns that take the width that is left, each with its share of it: what its widest field would like to
/// have.
std::map<int, int> StretchingColumns(const std::vector<Placed>& children) {
  std::set<int> firm;
  std::map<int, int> stretching;
  for (const Placed& child : children) {
    const Place& place = child.control->place;
    if (place.columns > 1) continue;
    if (!child.stretches) {
      firm.insert(place.column);
      continue;
    }
    int& share = stretching[place.column];
    share = std::max({share, child.view->Widget()->sizeHint().width(), 1});
  }
  for (const Placed& child : children) {
    const Place& place = child.control->place;
    if (!child.stretches || place.columns == 1) continue;
    const auto inSpan = [&place](int column) {
      return column >= place.column && column < place.column + place.columns;
    };
    if (std::any_of(stretching.begin(), stretching.end(),
                    [&](const auto& column) { return inSpan(column.first); }))
      continue;
    int column = place.column;
    while (firm.count(column) != 0 && inSpan(column + 1)) ++column;
    stretching[firm.count(column) == 0 ? column : place.column] = 1;
  }
  return stretching;
}

}  // namespace

bool IsTall(const Control& control) {
  return control.kind == ControlKind::ListBox || control.kind == ControlKind::ListView ||
         control.kind == ControlKind::TabStrip;
}

void LayOut(QWidget* container, const std::vector<Placed>& children, Margins margins) {
  auto* grid = new QGridLayout(container);
  if (margins == Margins::None) grid->setContentsMargins({});
  bool isTall = false;
  for (const Placed& child : children) {
    const Place& place = child.control->place;
    grid->addWidget(child.view->Widget(), place.row, place.column, 1, std::max<int>(place.columns, 1),
                    AlignmentOf(child));
    if (!IsTall(*child.control)) continue;
    grid->setRowStretch(place.row, 1);
    isTall = true;
  }
  const std::map<int, int> columns = StretchingColumns(children);
  for (const auto& [column, share] : columns) grid->setColumnStretch(column, share);
  // What is left over stays behind the last cell.
  if (columns.empty()) grid->setColumnStretch(grid->columnCount(), 1);
  if (!isTall) grid->setRowStretch(grid->rowCount(), 1);
}

}  // namespace tessary
