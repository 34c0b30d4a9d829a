#include "desktop/FormMirror.h"

#include <algorithm>

#include "desktop/Wire.h"

namespace tessary {

FormMirror::FormMirror(Form& form) : form_(form) {
  form.ForEach([this](Control& control) { controls_.push_back(&control); });
  parents_.assign(controls_.size(), -1);
  shown_.resize(controls_.size());
  for (std::size_t i = 0; i < controls_.size(); ++i)
    for (const auto& child : controls_[i]->children)
      parents_[static_cast<std::size_t>(NumberOf(child.get()))] = static_cast<std::int32_t>(i);
}

Control* FormMirror::At(std::int32_t number) const {
  const auto index = static_cast<std::size_t>(number);
  return number >= 0 && index < controls_.size() ? controls_[index] : nullptr;
}

bool FormMirror::Apply(const UserEvent& event) {
  if (event.what == UserEvent::What::Key) return form_.PressKey(event.key);
  if (event.what == UserEvent::What::Closed) form_.CloseBox();
  if (Control* control = At(event.control)) ApplyTo(*control, event);
  return true;
}

void FormMirror::ApplyTo(Control& control, const UserEvent& event) {
  // The helper shows what its user made of these; a form that takes it differently must be told anew.
  for (std::size_t i = 0; i < controls_.size(); ++i)
    if (controls_[i] == &control || controls_[i]->kind == ControlKind::Option) shown_[i].clear();
  switch (event.what) {
    case UserEvent::What::Focused:
      focused_ = &control;
      control.selStart = control.selLength = 0;
      form_.SetFocus(control);
      selects_ = true;
      break;
    case UserEvent::What::Typed:
      return form_.Type(control, event.text);
    case UserEvent::What::Pressed:
      return form_.Press(control);
    case UserEvent::What::Chosen:
      return form_.Choose(control, event.index);
    case UserEvent::What::DoubleClicked:
      if (form_.UserCanReach(control) && control.doubleClick) control.doubleClick();
      break;
    default:
      break;
  }
}

std::int32_t FormMirror::NumberOf(const Control* control) const {
  const auto found = std::find(controls_.begin(), controls_.end(), control);
  return found == controls_.end() ? -1 : static_cast<std::int32_t>(found - controls_.begin());
}

FormState FormMirror::State() const {
  FormState state;
  state.caption = form_.root.caption;
  state.okButton = NumberOf(form_.okButton);
  state.cancelButton = NumberOf(form_.cancelButton);
  state.focused = NumberOf(form_.Focused());
  state.toForeground = form_.toForeground;
  state.selects =
      (selects_ || form_.Focused() != focused_) && form_.Focused() != nullptr && form_.Focused()->selLength > 0;
  return state;
}

std::string FormMirror::Changes() {
  wire::Writer controls;
  std::uint32_t count = 0;
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    auto number = static_cast<std::int32_t>(i);
    wire::Writer writer;
    writer(number, parents_[i], *controls_[i]);
    if (writer.bytes == shown_[i]) continue;
    controls.bytes += writer.bytes;
    shown_[i] = std::move(writer.bytes);
    ++count;
  }
  FormState state = State();
  std::string stateBytes = wire::Encode(state);
  const bool same = count == 0 && stateBytes == shownState_ && !state.selects;
  focused_ = form_.Focused();
  selects_ = false;
  shownState_ = std::move(stateBytes);
  if (same) return {};
  wire::Writer all;
  all(state, count);
  return all.bytes + controls.bytes;
}

}  // namespace tessary
