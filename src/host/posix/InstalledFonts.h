// The fonts that fontconfig knows.
#pragma once

#include <string>
#include <vector>

#include "host/Shell.h"

namespace tessary {

/// The TrueType fonts of this machine, one entry for each file. Empty where fontconfig is missing.
std::vector<FontEntry> ListTrueTypeFonts();

/// The full path of the font file `name` (no folder) wherever it lies, in another case of letters if need be;
/// otherwise of what fontconfig puts in the place of `name` without its extension. Only kinds of files that
/// Ghostscript reads. Empty where there is none, or no fontconfig.
std::string FindFontFile(const std::string& name);

}  // namespace tessary
