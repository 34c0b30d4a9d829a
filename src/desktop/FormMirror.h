// What the helper shows of a form, so that only what has changed since needs to be told.
#pragma once

#include <string>
#include <vector>

#include "desktop/Messages.h"

namespace tessary {

/// No control may be added to the form while this object is there.
class FormMirror {
 public:
  explicit FormMirror(Form& form);

  /// The control of that number, or null.
  [[nodiscard]] Control* At(std::int32_t number) const;
  /// Does to the form what the user did; the form's events run within. False: the key was not swallowed.
  bool Apply(const UserEvent& event);

  /// What MessageKind::ShowForm and UpdateForm hold: the FormState and every ControlState that the helper does
  /// not know yet. Empty if it knows all.
  std::string Changes();

 private:
  [[nodiscard]] std::int32_t NumberOf(const Control* control) const;
  [[nodiscard]] FormState State() const;
  void ApplyTo(Control& control, const UserEvent& event);

  Form& form_;
  std::vector<Control*> controls_;     // by their numbers
  std::vector<std::int32_t> parents_;  // the same
  std::vector<std::string> shown_;     // the same, as the helper got them; empty: it shows something else
  std::string shownState_;
  const Control* focused_ = nullptr;  // as the helper has it
  bool selects_ = false;              // the focused field has a selection that the helper does not know
};

}  // namespace tessary
