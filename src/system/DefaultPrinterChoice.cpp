#include "system/DefaultPrinterChoice.h"

#include "system/modUtil.h"

namespace tessary {

namespace {

constexpr std::uint32_t kSettingsChanged = 26;  // WM_WININICHANGE
constexpr int kPatienceMilliseconds = 500;

/// Where a platform keeps its default printer.
enum class Keeper { Records, ProfileStrings, Function };

Keeper KeeperOf(Run& run) {
  const COpSysInfo& system = GetOpSysInfo(run);
  if (system.IsWin9x()) return Keeper::Records;
  return system.IsWinNT() && !system.IsWin2K() ? Keeper::ProfileStrings : Keeper::Function;
}

bool ChooseInRecords(Run& run, const std::string& name) {
  PrintSpooler& spooler = run.host.spooler;
  const PrinterHandle printer = spooler.Open(name, printing::kAccessDefault);
  if (printer == 0) return false;
  auto record = spooler.ReadPrinter(printer);
  record.value.attributes |= printing::kIsDefault;
  const bool done = record.ok() && !spooler.ChangePrinter(printer, 0, &record.value);
  spooler.Close(printer);
  return done;
}

bool ChooseInProfile(Run& run, const std::string& name) {
  // Driver, port and time limits; the first two, with their comma, say where the printer is.
  const std::string ports = run.host.defaultPrinter.ReadProfile("PrinterPorts", name);
  const std::size_t driver = ports.find(',');
  if (driver == std::string::npos) return false;
  const std::size_t port = ports.find(',', driver + 1);
  if (port == std::string::npos) return false;
  run.host.defaultPrinter.WriteProfile("Windows", "device", name + "," + ports.substr(0, port));
  return true;  // the windows are told even where the profile could not be written
}

}  // namespace

std::string DefaultPrinterName(Run& run) {
  DefaultPrinter& chosen = run.host.defaultPrinter;
  switch (KeeperOf(run)) {
    case Keeper::Records:
      return chosen.FirstListed();
    case Keeper::ProfileStrings: {
      const std::string device = chosen.ReadProfile("Windows", "device");
      return device.substr(0, device.find(','));
    }
    default:
      return chosen.Name();
  }
}

void ChooseDefaultPrinter(Run& run, const std::string& name) {
  const Keeper keeper = KeeperOf(run);
  if (keeper == Keeper::Function) {
    run.host.defaultPrinter.Choose(name);
    return;
  }
  const bool done = keeper == Keeper::Records ? ChooseInRecords(run, name) : ChooseInProfile(run, name);
  if (done) run.host.defaultPrinter.Broadcast(kSettingsChanged, kPatienceMilliseconds);
}

}  // namespace tessary
