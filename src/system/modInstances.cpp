#include "system/modInstances.h"

#include "system/CPrinterInfo.h"
#include "system/Paths.h"

namespace tessary {

namespace {

constexpr const char* kPort = "TESSARY";

/// The name of a printer, read again where that fails; empty where it fails again.
std::string ReadName(Run& run, int index) {
  auto name = run.host.spooler.NameOfPrinter(index);
  if (!name.ok()) name = run.host.spooler.NameOfPrinter(index);
  return name.value;
}

}  // namespace

std::string GetInstanceFromPrinterName(const std::string& printerName) {
  const std::size_t open = printerName.find('[');
  if (open == std::string::npos) return {};
  const std::size_t close = printerName.find(']', open);
  if (close == std::string::npos) return {};
  return SafeFileName(printerName.substr(open + 1, close - open - 1));
}

Dictionary GetInstances(Run& run) {
  Dictionary instances;
  const int count = run.host.spooler.CountPrinters();
  for (int i = 0; i < count; ++i) {
    const std::string name = ReadName(run, i);
    if (name.empty()) continue;
    CPrinterInfo printer(run);
    printer.SetDeviceName(name);
    if (printer.PortName() != kPort) continue;
    const std::string instance = GetInstanceFromPrinterName(name);
    instances.Set(instance, instance);
  }
  return instances;
}

}  // namespace tessary
