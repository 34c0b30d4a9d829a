// The name of a printer on the print server.
#pragma once

#include <string>
#include <vector>

namespace tessary {

/// Why `name` cannot be the name of a printer, as a sentence's end; empty if it can: one line of text of at
/// most 127 bytes that is not all blanks.
std::string WhyNoPrinterName(const std::string& name);

/// The queue of the printer `name`, which WhyNoPrinterName has nothing against: "PDF Printer [Sales]" gives
/// "PDF_Printer_Sales". Blanks and characters that servers, shells and programs of the print server give a
/// meaning to become "_"; letters of all languages stay. One that is `taken`, in whatever case, gets a number
/// behind it.
std::string QueueName(const std::string& name, const std::vector<std::string>& taken);

}  // namespace tessary
