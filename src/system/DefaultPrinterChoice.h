// Which printer is the default one, in the way of the platform that the program runs on.
#pragma once

#include <string>

#include "system/Run.h"

namespace tessary {

/// Empty where there is none.
std::string DefaultPrinterName(Run& run);

/// Makes a printer the default one. Nothing has changed where that fails.
void ChooseDefaultPrinter(Run& run, const std::string& name);

}  // namespace tessary
