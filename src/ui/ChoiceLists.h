// The lists of the dialogs: what their entries stand for, and how they are filled.
//
// A list control holds the captions in `list` and what each stands for in the settings in `keys`, both in the
// same order; the binding (Binding.h) goes by these.
#pragma once

#include "config/Dictionary.h"
#include "system/Run.h"
#include "ui/Form.h"

namespace tessary {

/// Choice lists: stored value to caption in the language of the run.
Dictionary GetQualities(Run& run);
Dictionary GetZoomLevels(Run& run);
Dictionary GetVerticalPositions(Run& run);
Dictionary GetHorizontalPositions(Run& run);
/// Its keys are names for the captions; the setting knows the two as "top" and "bottom".
Dictionary GetWatermarkLayers(Run& run);

// Each replaces the entries of a list and selects the first, if there is one.
void FillQualityList(Run& run, Form& form, Control& control);
void FillZoomList(Run& run, Form& form, Control& control);
void FillVerticalPositionList(Run& run, Form& form, Control& control);
void FillHorizontalPositionList(Run& run, Form& form, Control& control);
void FillLayerList(Run& run, Form& form, Control& control);
void FillKeyLengthList(Run& run, Form& form, Control& control);
void FillPrintPermissionList(Run& run, Form& form, Control& control);
void FillAppendPositionList(Run& run, Form& form, Control& control);
/// The machine's TrueType fonts, by their file names.
void FillFontList(Run& run, Form& form, Control& control);
/// This one selects nothing: the settings do.
void FillRotationList(Run& run, Form& form, Control& control);

/// Fills every list of a dialog that is there, found by its name.
void FillLists(Run& run, Form& form);

}  // namespace tessary
