// Fields: text and drop-down lists.
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QStringListModel>
#include <QWheelEvent>

#include "desktop/qt/ControlView.h"
#include "desktop/qt/Lists.h"
#include "desktop/qt/Text.h"

namespace tessary {

namespace {

constexpr int kLargestText = 1 << 20;
constexpr int kShortField = 10;     ///< characters; a field for so few is no wider than they are
constexpr int kNarrowestList = 14;  ///< letters
constexpr int kWidestList = 42;

void SetText(QLineEdit& field, const QString& text) {
  if (field.text() == text) return;
  field.setText(text);
  if (!field.hasFocus()) field.setCursorPosition(0);  // the beginning says more than the end
}

QString LongestOf(const QStringList& entries) {
  const auto isShorter = [](const QString& one, const QString& other) { return one.size() < other.size(); };
  const auto longest = std::max_element(entries.begin(), entries.end(), isShorter);
  return longest == entries.end() ? QString() : *longest;
}

class TextView : public ControlView {
 public:
  TextView(QLineEdit* field, Report report) : ControlView(field, std::move(report)), field_(field) {
    QObject::connect(field, &QLineEdit::textEdited, field,
                     [this](const QString& text) { Tell(UserEvent::What::Typed, text); });
  }

  void Select(const Control& control) override { field_->setSelection(control.selStart, control.selLength); }

 protected:
  void Fill(const Control& control) override {
    field_->setMaxLength(control.maxLength > 0 ? control.maxLength : kLargestText);
    if (control.maxLength > 0 && control.maxLength <= kShortField)
      field_->setMaximumWidth(field_->fontMetrics().horizontalAdvance(QLatin1Char('0')) *
                              (control.maxLength + 6));
    SetText(*field_, ToQt(control.text));
  }

 private:
  QLineEdit* field_;
};

/// A list that is as wide as its entries within limits, and that the wheel does not change in passing, when its
/// page is scrolled.
class CalmComboBox : public QComboBox {
 public:
  using QComboBox::QComboBox;

  [[nodiscard]] QSize sizeHint() const override {
    return HintFor(std::clamp(width_, Letters(kNarrowestList), Letters(kWidestList)));
  }
  [[nodiscard]] QSize minimumSizeHint() const override { return HintFor(Letters(kNarrowestList)); }
  void FitTo(const QString& entry) {
    const int width = fontMetrics().horizontalAdvance(entry) + Letters(1);
    if (std::exchange(width_, width) != width) updateGeometry();
  }

 protected:
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }

 private:
  [[nodiscard]] int Letters(int count) const { return count * fontMetrics().averageCharWidth(); }
  [[nodiscard]] QSize HintFor(int width) const {
    const QSize hint = QComboBox::minimumSizeHint();  // for no letter at all
    return {hint.width() + width, hint.height()};
  }

  int width_ = 0;  // of the longest entry
};

class ComboView : public ControlView {
 public:
  ComboView(CalmComboBox* combo, Report report)
      : ControlView(combo, std::move(report)), combo_(combo), entries_(new QStringListModel(combo)) {
    combo->setModel(entries_);
    QObject::connect(combo, &QComboBox::activated, combo,
                     [this](int index) { Tell(UserEvent::What::Chosen, {}, index); });
    if (combo->isEditable())
      QObject::connect(combo->lineEdit(), &QLineEdit::textEdited, combo,
                       [this](const QString& text) { Tell(UserEvent::What::Typed, text); });
  }

  void Select(const Control& control) override {
    if (combo_->isEditable()) combo_->lineEdit()->setSelection(control.selStart, control.selLength);
  }

 protected:
  void Fill(const Control& control) override {
    if (SetEntries(*entries_, control.list)) combo_->FitTo(LongestOf(entries_->stringList()));
    if (combo_->isEditable())
      SetEntry(control);
    else
      combo_->setCurrentIndex(control.listIndex);
  }

 private:
  void SetEntry(const Control& control) {
    QLineEdit& field = *combo_->lineEdit();
    if (control.maxLength > 0) field.setMaxLength(control.maxLength);
    const QString text = ToQt(control.text);
    // New entries and a new index bring a text of their own, and its cursor.
    const bool isSame = combo_->currentIndex() == control.listIndex && field.text() == text;
    if (isSame && combo_->hasFocus()) return;
    const int cursor = combo_->hasFocus() ? field.cursorPosition() : 0;
    combo_->setCurrentIndex(control.listIndex);
    if (!isSame) field.setText(text);
    field.setCursorPosition(cursor);
  }

  CalmComboBox* combo_;
  QStringListModel* entries_;
};

CalmComboBox* MakeCombo(bool takesText, QWidget* parent) {
  auto* combo = new CalmComboBox(parent);
  combo->setEditable(takesText);
  combo->setInsertPolicy(QComboBox::NoInsert);
  if (takesText) combo->setCompleter(nullptr);  // what is typed stays what was typed
  combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  combo->setMinimumContentsLength(0);
  auto* view = new QListView(combo);
  view->setUniformItemSizes(true);
  view->setTextElideMode(Qt::ElideRight);
  combo->setView(view);
  return combo;
}

}  // namespace

std::unique_ptr<ControlView> MakeFieldView(const Control& control, QWidget* parent, Report report) {
  if (control.kind == ControlKind::TextField)
    return std::make_unique<TextView>(new QLineEdit(parent), std::move(report));
  return std::make_unique<ComboView>(MakeCombo(control.kind == ControlKind::EntryList, parent),
                                     std::move(report));
}

}  // namespace tessary
