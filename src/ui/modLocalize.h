// Texts that a user sees. In the program they are tagged, `[<key>]<default text>`, and a label of that key
// stands in for the default.
#pragma once

#include <string>

#include "system/Run.h"

namespace tessary {

/// The label of a tagged text, or its default text where there is no label. A text without a tag is given back
/// as it is. In a debug run a text without a label keeps its tag, to show what a language lacks.
std::string Translate(Run& run, const std::string& text);

/// True when the marker file `debug.txt` lies in the program folder.
bool IsDebugRun(Run& run);

}  // namespace tessary
