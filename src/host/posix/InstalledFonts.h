// The fonts that fontconfig knows.
#pragma once

#include <vector>

#include "host/Shell.h"

namespace tessary {

/// The TrueType fonts of this machine, one entry for each file. Empty where fontconfig is missing.
std::vector<FontEntry> ListTrueTypeFonts();

}  // namespace tessary
