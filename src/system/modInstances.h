// Printer instances: printers of this system side by side, each with its own settings files.
#pragma once

#include <string>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// The instance of a printer: what stands between the first "[" of its name and the first "]" behind it, as a
/// safe file name. "PDF Printer [Sales]" gives "Sales". Empty for a printer without brackets.
std::string GetInstanceFromPrinterName(const std::string& printerName);

/// The instances of this machine, each as key and as text: those of the printers whose port is "TESSARY".
/// Printers of one instance are one entry.
Dictionary GetInstances(Run& run);

}  // namespace tessary
