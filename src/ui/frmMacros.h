// The list of macros, from which one is added to a field.
#pragma once

#include <string>

#include "system/Run.h"
#include "ui/Form.h"

namespace tessary {

class frmMacros {
 public:
  explicit frmMacros(Run& run);

  /// Shows the list until it is closed.
  void Show();

  std::string SelectedMacro{};  ///< with its angle brackets; empty: none has been chosen

 private:
  void Choose();
  bool HandleKey(const KeyPress& press);

  Run& run_;
  Form form_;
};

}  // namespace tessary
