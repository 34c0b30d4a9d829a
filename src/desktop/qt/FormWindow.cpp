#include "desktop/qt/FormWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/qt/Text.h"

namespace tessary {

namespace {

constexpr int kNarrowestInLetters = 70;

Key KeyOf(int key) {
  switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return Key::Tab;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Key::Enter;
    case Qt::Key_Escape:
      return Key::Escape;
    case Qt::Key_PageUp:
      return Key::PageUp;
    case Qt::Key_PageDown:
      return Key::PageDown;
    default:
      return Key::Other;
  }
}

bool IsField(const Control& control) {
  switch (control.kind) {
    case ControlKind::TextField:
    case ControlKind::DropDown:
    case ControlKind::EntryList:
    case ControlKind::ListBox:
    case ControlKind::ListView:
    case ControlKind::TabStrip:
    case ControlKind::Frame:
      return true;
    case ControlKind::Label:
      return control.multiLine;
    default:
      return false;
  }
}

}  // namespace

FormWindow::FormWindow(Server& server, const std::string& content, QWidget* above)
    : QDialog(above), server_(server), page_(new PageArea(this)) {
  Take(content);
  setWindowFlags((state_.toForeground && above == nullptr ? Qt::Window : Qt::Dialog) | Qt::CustomizeWindowHint |
                 Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
  setWindowModality(Qt::ApplicationModal);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->addWidget(page_);
  Build();
  SetFirstSize();
  ShowState();
  if (state_.focused < 0) FocusFirst();
  qApp->installEventFilter(this);
}

FormWindow::~FormWindow() { qApp->removeEventFilter(this); }

std::vector<std::size_t> FormWindow::Take(const std::string& content) {
  wire::Reader reader(content);
  std::vector<ControlState> changed;
  reader(state_, changed);
  std::vector<std::size_t> numbers;
  for (ControlState& control : changed) {
    const auto index = static_cast<std::size_t>(control.number);
    if (controls_.size() <= index) controls_.resize(index + 1);
    controls_[index] = std::move(control);
    numbers.push_back(index);
  }
  return numbers;
}

void FormWindow::Update(const std::string& content) {
  updating_ = true;
  const QWidget* before = focusWidget();
  for (const std::size_t number : Take(content)) views_[number]->Show(controls_[number].control);
  SetTabOrder();
  ShowState();
  // Another page has taken the place of the one with the focus.
  const bool isLost = before != nullptr && !before->isVisible();
  if (isLost && (state_.focused < 0 || !IsOnDisplay(state_.focused))) FocusFirst();
  updating_ = false;
  // The focus may have gone elsewhere with a control that can no longer have it.
  QTimer::singleShot(0, this, [this] { TellFocus(focusWidget()); });
}

void FormWindow::Build() {
  for (const ControlState& state : controls_) {
    const auto number = state.number;
    ControlView* above = state.parent < 0 ? nullptr : views_[static_cast<std::size_t>(state.parent)].get();
    QWidget* parent = above == nullptr ? page_->Content() : above->Container(state.control);
    views_.push_back(ControlView::Make(state.control, parent, [this, number](UserEvent event) {
      event.control = number;
      Tell(std::move(event));
    }));
    numbers_[views_.back()->KeyWidget()] = number;
    views_.back()->Widget()->setObjectName(ToQt(state.control.name));
  }
  // A list alone fills its window.
  const bool isList = controls_.size() == 1 && IsTall(controls_.front().control);
  LayOut(page_->Content(), ChildrenOf(-1), isList ? Margins::None : Margins::OfStyle);
  for (std::size_t i = 0; i < controls_.size(); ++i) LayOutChildren(i);
  SetBuddies();
  SetTabOrder();
  for (std::size_t i = 0; i < controls_.size(); ++i) views_[i]->Show(controls_[i].control);
}

void FormWindow::LayOutChildren(std::size_t container) {
  const std::vector<Placed> children = ChildrenOf(static_cast<std::int32_t>(container));
  if (children.empty() || views_[container]->PlacesByBox()) return;
  const ControlKind kind = controls_[container].control.kind;
  if (kind != ControlKind::TabStrip) {
    const Control& control = controls_[container].control;
    const bool isFramed = kind == ControlKind::Frame || control.box.height > 0;
    LayOut(views_[container]->Container(control), children, isFramed ? Margins::OfStyle : Margins::None);
    return;
  }
  for (const Placed& page : children) {
    auto* layout = new QVBoxLayout(page.view->Widget()->parentWidget());
    layout->addWidget(page.view->Widget());
  }
}

std::vector<Placed> FormWindow::ChildrenOf(std::int32_t parent) const {
  std::vector<Placed> children;
  for (std::size_t i = 0; i < controls_.size(); ++i)
    if (controls_[i].parent == parent)
      children.push_back({&controls_[i].control, views_[i].get(), Stretches(controls_[i].number)});
  return children;
}

bool FormWindow::Stretches(std::int32_t number) const {
  const Control& control = controls_[static_cast<std::size_t>(number)].control;
  if (control.kind != ControlKind::Picture) return IsField(control);
  return std::any_of(controls_.begin(), controls_.end(), [this, number](const ControlState& child) {
    return child.parent == number && Stretches(child.number);
  });
}

QWidget* FormWindow::FirstKeyWidget(std::int32_t number) const {
  const auto index = static_cast<std::size_t>(number);
  if (QWidget* widget = views_[index]->KeyWidget(); widget->focusPolicy() != Qt::NoFocus) return widget;
  for (const ControlState& child : controls_)
    if (child.parent == number)
      if (QWidget* widget = FirstKeyWidget(child.number)) return widget;
  return nullptr;
}

void FormWindow::SetBuddies() {
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    if (controls_[i].control.kind != ControlKind::Label) continue;
    const auto next =
        std::find_if(controls_.begin() + static_cast<std::ptrdiff_t>(i) + 1, controls_.end(),
                     [&](const ControlState& other) { return other.parent == controls_[i].parent; });
    if (next == controls_.end() || next->control.kind == ControlKind::Label) continue;
    if (next->control.place.row != controls_[i].control.place.row) continue;
    static_cast<QLabel*>(views_[i]->Widget())->setBuddy(FirstKeyWidget(next->number));
  }
}

void FormWindow::SetTabOrder() {
  std::vector<std::int32_t> order;
  for (const ControlState& state : controls_)
    if (views_[static_cast<std::size_t>(state.number)]->KeyWidget()->focusPolicy() != Qt::NoFocus)
      order.push_back(state.number);
  std::stable_sort(order.begin(), order.end(), [this](std::int32_t one, std::int32_t other) {
    return controls_[static_cast<std::size_t>(one)].control.tabIndex <
           controls_[static_cast<std::size_t>(other)].control.tabIndex;
  });
  if (order == tabOrder_) return;
  tabOrder_ = std::move(order);
  for (std::size_t i = 1; i < tabOrder_.size(); ++i)
    setTabOrder(views_[static_cast<std::size_t>(tabOrder_[i - 1])]->KeyWidget(),
                views_[static_cast<std::size_t>(tabOrder_[i])]->KeyWidget());
}

void FormWindow::FocusFirst() {
  for (const std::int32_t number : tabOrder_) {
    const auto index = static_cast<std::size_t>(number);
    const Control& control = controls_[index].control;
    if (control.kind == ControlKind::TabStrip || !control.tabStop || !IsOnDisplay(number)) continue;
    return views_[index]->KeyWidget()->setFocus();
  }
}

bool FormWindow::IsOnDisplay(std::int32_t number) const {
  if (number < 0) return true;
  const ControlState& state = controls_[static_cast<std::size_t>(number)];
  return state.control.visible && state.control.enabled && IsOnDisplay(state.parent);
}

void FormWindow::SetFirstSize() {
  const QSize room = screen()->availableSize() - QSize(20, 60);  // for the frame around it
  const QSize narrowest(kNarrowestInLetters * fontMetrics().averageCharWidth(), 0);
  setMinimumSize(page_->Content()->minimumSizeHint().boundedTo(room));
  const int width = page_->sizeHint().expandedTo(narrowest).boundedTo(room).width();
  const int height = std::max(page_->Content()->heightForWidth(width), page_->sizeHint().height());
  resize(QSize(width, height).boundedTo(room));
}

void FormWindow::ShowState() {
  setWindowTitle(ToQt(state_.caption));
  for (std::size_t i = 0; i < controls_.size(); ++i)
    if (controls_[i].control.kind == ControlKind::Button)
      static_cast<QPushButton*>(views_[i]->Widget())->setDefault(controls_[i].number == state_.okButton);
  if (state_.focused < 0) return;
  const auto focused = static_cast<std::size_t>(state_.focused);
  if (focused_ != state_.focused) views_[focused]->KeyWidget()->setFocus();
  focused_ = state_.focused;
  if (state_.selects) views_[focused]->Select(controls_[focused].control);
}

bool FormWindow::MayTell() const { return !updating_ && server_.Awaits(MessageKind::Resume) && isVisible(); }

void FormWindow::Tell(UserEvent event) {
  if (MayTell()) server_.Say(MessageKind::FormEvent, wire::Encode(std::move(event)));
}

void FormWindow::TellFocus(const QObject* widget) {
  const std::int32_t number = numbers_.value(widget, -1);
  if (number < 0 || number == focused_ || !MayTell()) return;
  focused_ = number;
  UserEvent event;
  event.what = UserEvent::What::Focused;
  event.control = number;
  Tell(std::move(event));
}

bool FormWindow::TellKey(const QKeyEvent& event) {
  const Key key = KeyOf(event.key());
  if (key == Key::Other || QApplication::activePopupWidget() != nullptr || !MayTell()) return false;
  UserEvent told;
  told.what = UserEvent::What::Key;
  told.key = {key, event.modifiers().testFlag(Qt::ShiftModifier),
              event.modifiers().testFlag(Qt::ControlModifier), event.modifiers().testFlag(Qt::AltModifier)};
  keySwallowed_ = true;  // where gui shows something instead of an answer
  Tell(std::move(told));
  return keySwallowed_;
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn && focusWidget() == watched) TellFocus(watched);
  // A key goes to the widget with the focus first, and then to those around it.
  if (event->type() == QEvent::KeyPress && isActiveWindow() &&
      watched == (focusWidget() ? focusWidget() : this))
    return TellKey(static_cast<QKeyEvent&>(*event));
  return false;
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
  // What Enter and Escape do has been told; a dialog would press a button or close.
  if (const Key key = KeyOf(event->key()); key != Key::Enter && key != Key::Escape)
    QDialog::keyPressEvent(event);
}

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  Tell({});
}

void FormWindow::paintEvent(QPaintEvent* event) {
  QDialog::paintEvent(event);
  if (shown_) return;
  shown_ = true;
  QTimer::singleShot(0, this, [this] {
    if (!MayTell()) return;
    server_.Say(MessageKind::FormShown, wire::Encode(static_cast<std::int64_t>(winId())));
    TellFocus(focusWidget());
  });
}

FormWindows::FormWindows(Server& server) {
  server.Handle(MessageKind::ShowForm, [this, &server](const std::string& content) {
    auto* window = new FormWindow(server, content, windows_.empty() ? nullptr : windows_.back());
    windows_.push_back(window);
    ++server.forms;
    window->show();
    window->raise();
    window->activateWindow();
  });
  server.Handle(MessageKind::UpdateForm, [this](const std::string& content) {
    if (!windows_.empty()) windows_.back()->Update(content);
  });
  server.Handle(MessageKind::CloseForm, [this, &server](const std::string&) {
    if (windows_.empty()) return;
    --server.forms;
    windows_.back()->hide();
    windows_.back()->deleteLater();  // it may be telling something at this moment
    windows_.pop_back();
  });
  server.Handle(MessageKind::Resume, [this](const std::string& content) {
    if (!windows_.empty()) windows_.back()->SetKeyAnswer(wire::Decode<KeyAnswer>(content).swallowed);
  });
}

}  // namespace tessary
