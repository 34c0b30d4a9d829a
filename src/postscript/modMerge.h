// Joining the job's PDF to an existing one.
#pragma once

#include "config/Dictionary.h"

namespace tessary {

/// True if `mergefile` holds more than blanks. Whether that file exists is seen when the job is merged.
bool IsMergeRequested(Dictionary& settings);

}  // namespace tessary
