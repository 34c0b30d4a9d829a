#include "system/modInstances.h"

#include "system/Paths.h"

namespace tessary {

std::string GetInstanceFromPrinterName(const std::string& printerName) {
  const std::size_t open = printerName.find('[');
  if (open == std::string::npos) return {};
  const std::size_t close = printerName.find(']', open);
  if (close == std::string::npos) return {};
  return SafeFileName(printerName.substr(open + 1, close - open - 1));
}

}  // namespace tessary
