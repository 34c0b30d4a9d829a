// Buttons, check boxes and options.
#include <QButtonGroup>
#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <algorithm>

#include "desktop/qt/ControlView.h"
#include "desktop/qt/Text.h"

namespace tessary {

namespace {

constexpr int kNarrowestInLetters = 12;
constexpr int kWidestInLetters = 60;

/// A button that cuts off a caption which is longer than any button should be.
template <class Button>
class CuttingButton : public Button {
 public:
  using Button::Button;

  [[nodiscard]] QSize sizeHint() const override {
    const int besides = 2 * this->fontMetrics().height();  // the box before the caption, the edges around it
    return Button::sizeHint().boundedTo({Widest() + besides, QWIDGETSIZE_MAX});
  }
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void initStyleOption(QStyleOptionButton* option) const override {
    Button::initStyleOption(option);
    option->text = option->fontMetrics.elidedText(option->text, Qt::ElideRight, Widest(), Qt::TextShowMnemonic);
  }

 private:
  [[nodiscard]] int Widest() const { return kWidestInLetters * this->fontMetrics().averageCharWidth(); }
};

class ButtonView : public ControlView {
 public:
  ButtonView(QAbstractButton* button, Report report) : ControlView(button, std::move(report)), button_(button) {
    QObject::connect(button, &QAbstractButton::clicked, button, [this] { Tell(UserEvent::What::Pressed); });
  }

 protected:
  void Fill(const Control& control) override {
    const QString caption = ToQt(control.caption);
    if (button_->text() != caption) button_->setText(caption);
    const bool cut = caption.size() > kWidestInLetters;
    button_->setToolTip(cut ? ToolTipOf(WithoutMnemonic(caption)) : QString());
    if (button_->isCheckable() && button_->isChecked() != control.checked) SetChecked(control.checked);
  }

 private:
  void SetChecked(bool checked) {
    // A button of an exclusive group cannot be switched off while it is one.
    QButtonGroup* group = button_->group();
    if (group != nullptr) group->setExclusive(false);
    button_->setChecked(checked);
    if (group != nullptr) group->setExclusive(true);
  }

  QAbstractButton* button_;
};

/// The group of the options of one name in a container, made with the first of them.
QButtonGroup* GroupOf(const std::string& name, QWidget* container) {
  const QString groupName = QStringLiteral("options ") + ToQt(name);
  if (auto* group = container->findChild<QButtonGroup*>(groupName, Qt::FindDirectChildrenOnly)) return group;
  auto* group = new QButtonGroup(container);
  group->setObjectName(groupName);
  return group;
}

bool HasWords(const Control& control) {
  const QString caption = ToQt(control.caption);
  return std::any_of(caption.begin(), caption.end(), [](QChar letter) { return letter.isLetter(); });
}

QAbstractButton* MakeButton(const Control& control, QWidget* parent) {
  if (control.kind == ControlKind::Button) return new CuttingButton<QPushButton>(parent);
  if (control.kind == ControlKind::CheckBox) return new CuttingButton<QCheckBox>(parent);
  auto* option = new CuttingButton<QRadioButton>(parent);
  GroupOf(control.name, parent)->addButton(option);
  return option;
}

}  // namespace

std::unique_ptr<ControlView> MakeButtonView(const Control& control, QWidget* parent, Report report) {
  QAbstractButton* button = MakeButton(control, parent);
  if (control.kind == ControlKind::Button && HasWords(control)) {
    button->setMinimumWidth(kNarrowestInLetters * button->fontMetrics().averageCharWidth());
  } else if (control.kind == ControlKind::Button) {
    // The button of a field, such as "...", is small; a style would make it as wide as one with words.
    button->setFixedWidth(button->sizeHint().height() * 4 / 3);
  }
  return std::make_unique<ButtonView>(button, std::move(report));
}

}  // namespace tessary
