// Printer instances: printers of this system side by side, each with its own settings files.
#pragma once

#include <string>

namespace tessary {

/// The instance of a printer: what stands between the first "[" of its name and the first "]" behind it, as a
/// safe file name. "PDF Printer [Sales]" gives "Sales". Empty for a printer without brackets.
std::string GetInstanceFromPrinterName(const std::string& printerName);

}  // namespace tessary
