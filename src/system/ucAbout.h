// The panel of the About tab: what this build is, and where its program lies.
#pragma once

#include "system/Run.h"
#include "ui/Form.h"

namespace tessary {

/// Fills an empty panel, its texts already translated; to be called after LocalizeControl. The panel must not
/// outlive the run.
void FillAboutPanel(Run& run, Control& panel);

}  // namespace tessary
