// Lists that are always open.
#include <QListView>

#include "desktop/qt/ControlView.h"
#include "desktop/qt/Lists.h"
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

class OpenListView : public ControlView {
 public:
  OpenListView(QListView* list, Report report)
      : ControlView(list, std::move(report)), list_(list), entries_(new QStringListModel(list)) {
    list->setModel(entries_);
    list->setUniformItemSizes(true);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setTextElideMode(Qt::ElideRight);
    QObject::connect(list->selectionModel(), &QItemSelectionModel::currentChanged, list,
                     [this](const QModelIndex& current) {
                       if (!filling_ && current.isValid()) Tell(UserEvent::What::Chosen, {}, current.row());
                     });
    QObject::connect(list, &QListView::doubleClicked, list, [this] { Tell(UserEvent::What::DoubleClicked); });
  }

 protected:
  void Fill(const Control& control) override {
    filling_ = true;
    SetEntries(*entries_, control.list);
    const QModelIndex wanted = entries_->index(control.listIndex);
    if (list_->currentIndex() != wanted) list_->setCurrentIndex(wanted);
    filling_ = false;
  }

 private:
  QListView* list_;
  QStringListModel* entries_;
  bool filling_ = false;
};

}  // namespace

std::unique_ptr<ControlView> MakeListView(const Control&, QWidget* parent, Report report) {
  return std::make_unique<OpenListView>(new QListView(parent), std::move(report));
}

}  // namespace tessary
