// The pane that explains the control with the focus. Its texts are those of the language file, see
// ui/Labels.h; the program has none of its own.
#pragma once

#include <string>

#include "system/Run.h"
#include "ui/Form.h"

namespace tessary {

/// Shows the topic `QH_<topic>`: its first line as the heading, the rest below. One that the language file
/// lacks shows its name, for whoever translates.
void ShowQuickHelp(Run& run, Form& form, const std::string& topic);

/// Has the pane follow the focus; what the controls did before when they received it they still do. To be
/// called after the other events have been attached. The form must outlive its events.
void AttachQuickHelp(Run& run, Form& form);

}  // namespace tessary
