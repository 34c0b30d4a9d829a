#include "ui/Form.h"

#include <algorithm>
#include <utility>

namespace tessary {

namespace {

void Raise(const std::function<void()>& event) {
  if (event) event();
}

Control* FindIn(Control& container, std::string_view name, std::int16_t index) {
  for (const auto& child : container.children) {
    if (child->name == name && child->index == index) return child.get();
    if (Control* found = FindIn(*child, name, index)) return found;
  }
  return nullptr;
}

void VisitChildren(Control& container, const std::function<void(Control&)>& visit) {
  for (const auto& child : container.children) {
    visit(*child);
    VisitChildren(*child, visit);
  }
}

/// True if `test` holds for every control on the way from `container` to `wanted`, both included.
template <typename Test>
bool HoldsOnPath(const Control& container, const Control& wanted, const Test& test) {
  if (!test(container)) return false;
  if (&container == &wanted) return true;
  return std::any_of(container.children.begin(), container.children.end(),
                     [&](const auto& child) { return HoldsOnPath(*child, wanted, test); });
}

Control* ContainerOf(Control& container, const Control& wanted) {
  for (const auto& child : container.children) {
    if (child.get() == &wanted) return &container;
    if (Control* found = ContainerOf(*child, wanted)) return found;
  }
  return nullptr;
}

}  // namespace

Control& Control::Add(ControlKind childKind, std::string childName, std::string childCaption,
                      Place childPlace) {
  Control& child = *children.emplace_back(std::make_unique<Control>());
  child.kind = childKind;
  child.name = std::move(childName);
  child.caption = std::move(childCaption);
  child.place = childPlace;
  return child;
}

Control* Form::Find(std::string_view name, std::int16_t index) { return FindIn(root, name, index); }

void Form::ForEach(const std::function<void(Control&)>& visit) { VisitChildren(root, visit); }

void Form::SetText(Control& control, const std::string& text) {
  if (control.kind == ControlKind::EntryList) control.listIndex = -1;
  if (control.text == text) return;
  control.text = text;
  Raise(control.change);
}

void Form::SetChecked(Control& control, bool checked) {
  if (control.checked == checked) return;
  if (control.kind == ControlKind::Option && checked) {
    if (Control* container = ContainerOf(root, control))
      for (const auto& sibling : container->children)
        if (sibling->kind == ControlKind::Option && sibling->name == control.name) sibling->checked = false;
  }
  control.checked = checked;
  Raise(control.click);
}

void Form::SetListIndex(Control& control, std::int32_t listIndex) {
  if (control.listIndex == listIndex) return;
  control.listIndex = listIndex;
  if (control.kind == ControlKind::EntryList && listIndex >= 0)
    control.text = control.list[static_cast<std::size_t>(listIndex)];
  Raise(control.click);
}

void Form::SetFocus(Control& control) {
  if (focused_ == &control) return;
  Control* left = std::exchange(focused_, &control);
  if (left != nullptr) Raise(left->lostFocus);
  if (focused_ == &control) Raise(control.gotFocus);
}

void Form::Type(Control& control, const std::string& text) {
  if (!UserCanReach(control)) return;
  SetFocus(control);
  SetText(control, text);
}

void Form::Press(Control& control) {
  if (!UserCanReach(control)) return;
  SetFocus(control);
  if (control.kind == ControlKind::CheckBox)
    SetChecked(control, !control.checked);
  else if (control.kind == ControlKind::Option)
    SetChecked(control, true);
  else
    Raise(control.click);
}

void Form::Choose(Control& control, std::int32_t listIndex) {
  const auto count = static_cast<std::int32_t>(control.list.size());
  if (!UserCanReach(control) || listIndex < 0 || listIndex >= count) return;
  SetFocus(control);
  SetListIndex(control, listIndex);
}

bool Form::PressKey(const KeyPress& press) {
  if (keyDown && keyDown(press)) return true;
  Control* button = press.key == Key::Enter ? okButton : press.key == Key::Escape ? cancelButton : nullptr;
  if (press.key == Key::Enter && focused_ != nullptr && focused_->kind == ControlKind::Button)
    button = focused_;
  if (button == nullptr || !UserCanReach(*button)) return false;
  Raise(button->click);
  return true;
}

bool Form::IsOnDisplay(const Control& control) const {
  return HoldsOnPath(root, control, [](const Control& at) { return at.visible; });
}

bool Form::UserCanReach(const Control& control) const {
  return HoldsOnPath(root, control, [](const Control& at) { return at.visible && at.enabled; });
}

}  // namespace tessary
