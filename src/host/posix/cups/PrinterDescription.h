// What a printer of this system tells applications about itself.
#pragma once

#include <string>

namespace tessary {

/// The description of a printer in the form that the server and print dialogs read (PPD): page sizes, any other
/// size up to 200 inches, colour, 600 dots an inch. It names the filter "tessaryframe", which takes PDF and
/// PostScript as they come. `product` is the printer's make and model, `defaultSize` a page size of
/// IsPageSize.
std::string PrinterDescription(const std::string& product, const std::string& defaultSize);

/// True for a page size by its name, in its own letters: "A4", "Letter".
bool IsPageSize(const std::string& name);

/// The page size that is usual where the locale of the environment is at home: "Letter" or "A4".
std::string UsualPageSize();

}  // namespace tessary
