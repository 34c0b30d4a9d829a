// What each control of the two dialogs means: one table, from the settings to the controls and back. The two
// ways of a row are not always each other's inverse, and this is meant.
//
// Reading a setting trims it first; a key that is missing reads as empty. Nothing is refused: a value that no
// control can show falls back to what its row says. Nothing here creates keys by reading them.
#pragma once

#include <string_view>

#include "config/Dictionary.h"
#include "system/Run.h"
#include "ui/Form.h"

namespace tessary {

enum class Dialog { Create, Options };

/// Puts the settings into the controls of a dialog. A list that has not been filled, and a control that is not
/// there, are left alone.
void SettingsToControls(Form& form, Dialog dialog, Dictionary& settings);

/// The same for one control.
void SettingToControl(Form& form, std::string_view control, Dictionary& settings);

/// Writes what the controls of a dialog say into the settings, empty values included. Keys without a control
/// stay as they are.
void ControlsToSettings(Run& run, Form& form, Dialog dialog, Dictionary& settings);

}  // namespace tessary
