// The common controls.
#pragma once

#include "system/Run.h"

namespace tessary {

/// Starts the common controls. True if nothing failed.
bool InitCommonControls(Run& run);

}  // namespace tessary
