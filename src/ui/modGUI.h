// What the two dialogs are built with: controls laid out from tables, the events that both share, the order of
// the Tab key, and the settings that hide or disable controls.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "config/Dictionary.h"
#include "system/Run.h"
#include "ui/Form.h"

namespace tessary {

/// A row of a layout table.
struct Element {
  ControlKind kind;
  const char* name;
  const char* caption = "";  ///< tagged where it is to be translated
  Place place = {};
  std::int16_t index = 0;  ///< the member of a control array
};

/// Puts the elements into a container, in their order.
void AddElements(Control& container, std::span<const Element> elements);

/// Selects the whole text of a field.
void SelectTextBoxContents(Control& control);

/// The product and, in brackets, the run's instance, for the title of a dialog.
std::string GetProductCaption(Run& run);

/// The events that do the same in both dialogs: validators, the preview, tool tips that show long paths, fields
/// that are selected when they receive the focus, and the buttons for files and colours. `backgroundTitle` is
/// the tagged title of the picker for the background PDF. The form must outlive its events.
void AttachSharedEvents(Run& run, Form& form, const char* backgroundTitle);

/// Gives all controls their place in the order of the Tab key: by rows, and from left to right in a row, each
/// container whole.
void SetTabOrderByPosition(Form& form);

/// Hides the controls that `hidecontrols` names and disables those of `disablecontrols`. Names are parted by
/// commas and exact; the members of a control array share one. What the dialog decides later may enable a
/// control again.
void ApplyControlLists(Form& form, Dictionary& config);

}  // namespace tessary
