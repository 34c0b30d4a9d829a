// Lists that are always open.
#include <QAbstractTableModel>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <algorithm>

#include "desktop/qt/ControlView.h"
#include "desktop/qt/Lists.h"
#include "desktop/qt/Pictures.h"
#include "desktop/qt/Text.h"

namespace tessary {

bool SetEntries(QStringListModel& model, const std::vector<std::string>& entries) {
  QStringList list;
  list.reserve(static_cast<qsizetype>(entries.size()));
  for (const std::string& entry : entries) list.append(ToQt(entry));
  if (model.stringList() == list) return false;
  model.setStringList(list);
  return true;
}

namespace {

constexpr int kWidestInLetters = 100;
constexpr int kMostRows = 20;

/// Entries whose texts are in columns parted by tabs.
class ColumnModel : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;

  /// False, and nothing is changed, where the entries are the same.
  bool Set(const std::vector<std::string>& entries, const std::string& picture) {
    if (entries == entries_) return false;
    beginResetModel();
    entries_ = entries;
    columns_ = 1;
    if (!picture.empty()) icon_ = PictureIcon(picture);
    for (const std::string& entry : entries)
      columns_ = std::max<int>(columns_, 1 + static_cast<int>(std::count(entry.begin(), entry.end(), '\t')));
    endResetModel();
    return true;
  }

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(entries_.size());
  }
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : columns_;
  }
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
    if (role == Qt::DecorationRole && index.column() == 0 && !icon_.isNull()) return icon_;
    if (role != Qt::DisplayRole) return {};
    return ToQt(entries_[static_cast<std::size_t>(index.row())])
        .section(QLatin1Char('\t'), index.column(), index.column())
        .trimmed();
  }

 private:
  std::vector<std::string> entries_;
  int columns_ = 1;
  QIcon icon_;
};

/// Leaves some room around each text.
class RoomyDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(option, index) + QSize(10, 6);
  }
};

/// As large as its entries want it to be, within limits.
class OpenList : public QTreeView {
 public:
  using QTreeView::QTreeView;

  [[nodiscard]] QSize sizeHint() const override {
    int width = 2 * frameWidth() + fontMetrics().height();  // room for a scroll bar
    for (int column = 0; column < model()->columnCount(); ++column) width += sizeHintForColumn(column);
    const int rows = std::clamp(model()->rowCount(), 2, kMostRows);
    const int row = model()->rowCount() > 0 ? sizeHintForRow(0) : fontMetrics().height();
    return {std::min(width, kWidestInLetters * fontMetrics().averageCharWidth()),
            rows * row + 2 * frameWidth()};
  }
};

class OpenListView : public ControlView {
 public:
  OpenListView(OpenList* list, Report report)
      : ControlView(list, std::move(report)), list_(list), entries_(new ColumnModel(list)) {
    list->setModel(entries_);
    list->setHeaderHidden(true);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    list->setItemDelegate(new RoomyDelegate(list));
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setTextElideMode(Qt::ElideRight);
    QObject::connect(list->selectionModel(), &QItemSelectionModel::currentChanged, list,
                     [this](const QModelIndex& current) {
                       if (!filling_ && current.isValid()) Tell(UserEvent::What::Chosen, {}, current.row());
                     });
    QObject::connect(list, &QTreeView::doubleClicked, list, [this] { Tell(UserEvent::What::DoubleClicked); });
  }

 protected:
  void Fill(const Control& control) override {
    filling_ = true;
    if (entries_->Set(control.list, control.picture)) {
      for (int column = 0; column + 1 < entries_->columnCount({}); ++column)
        list_->resizeColumnToContents(column);
      list_->updateGeometry();
    }
    const int row = list_->currentIndex().isValid() ? list_->currentIndex().row() : -1;
    if (row != control.listIndex) list_->setCurrentIndex(entries_->index(control.listIndex, 0));
    filling_ = false;
  }

 private:
  OpenList* list_;
  ColumnModel* entries_;
  bool filling_ = false;
};

}  // namespace

std::unique_ptr<ControlView> MakeListView(const Control&, QWidget* parent, Report report) {
  return std::make_unique<OpenListView>(new OpenList(parent), std::move(report));
}

}  // namespace tessary
