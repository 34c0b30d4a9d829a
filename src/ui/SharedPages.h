// The parts of pages that both dialogs have. What a part is called in the language files depends on the dialog.
#pragma once

#include <cstdint>

#include "ui/Binding.h"
#include "ui/Form.h"

namespace tessary {

// Each puts its controls into the first three columns of a container, from row `firstRow` on: labels, fields,
// and the buttons that fill the fields.
void AddProperties(Control& container, Dialog dialog);
void AddAppendFields(Control& container, Dialog dialog, std::int16_t firstRow);
void AddBackgroundFields(Control& container, Dialog dialog, std::int16_t firstRow);
void AddPasswords(Control& container, Dialog dialog);
void AddPermissions(Control& container, Dialog dialog);
void AddZoom(Control& container, std::int16_t firstRow);

/// Fills an empty container of `form` with the fields of the watermark and the preview beside them. The picture
/// "picWatermarkText" has room for a button behind the text.
void AddWatermark(Form& form, Control& container, Dialog dialog);

/// The buttons that close a dialog are its answers to Enter and Escape, and the Tab key stops at no picture. To
/// be called when all controls are there.
void FinishLayout(Form& form);

}  // namespace tessary
