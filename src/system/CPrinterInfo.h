// One printer of the machine: a snapshot, and what can be done with the printer.
//
//   CPrinterInfo printer(run);
//   printer.SetDeviceName("PDF Printer [Sales]");
//   if (printer.PortName() == "TESSARY") …
//
// A printer that cannot be opened has empty properties and no error. Nothing here raises.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "system/CDevMode.h"
#include "system/CPrinterJobs.h"
#include "system/Run.h"

namespace tessary {

class CPrinterInfo {
 public:
  explicit CPrinterInfo(Run& run);

  [[nodiscard]] const std::string& DeviceName() const { return deviceName_; }
  /// Names the printer and reads it.
  void SetDeviceName(const std::string& name);

  /// Asks the machine for its default printer; capitals count as small letters.
  [[nodiscard]] bool IsDefault() const;
  /// Makes this printer the default one, and reads it anew; false does nothing.
  void SetIsDefault(bool isDefault);

  [[nodiscard]] bool CanAdminister() const;
  /// The device name; for a printer of another machine "name on machine".
  [[nodiscard]] const std::string& DisplayName() const { return displayName_; }
  [[nodiscard]] std::int32_t GetPrinterError() const { return error_; }  ///< of Refresh; 0: none
  [[nodiscard]] bool IsOffline() const { return (record_.status & printing::kOffline) != 0; }
  [[nodiscard]] bool IsPaused() const { return (record_.status & printing::kPaused) != 0; }
  [[nodiscard]] bool IsShared() const { return (record_.attributes & printing::kIsShared) != 0; }
  [[nodiscard]] bool IsToFile() const { return record_.portName.find("FILE:") != std::string::npos; }
  [[nodiscard]] bool IsLocal() const { return (record_.attributes & printing::kIsLocal) != 0; }
  [[nodiscard]] bool IsNetwork() const { return (record_.attributes & printing::kIsNetwork) != 0; }
  /// The text of GetPrinterError, or of a status that stands alone ("Paused"), or the status in hexadecimal
  /// digits.
  [[nodiscard]] std::string StatusText() const;

  [[nodiscard]] std::uint32_t Attributes() const { return record_.attributes; }
  [[nodiscard]] std::uint32_t AveragePPM() const { return record_.averagePPM; }
  [[nodiscard]] const std::string& Comment() const { return record_.comment; }
  [[nodiscard]] const std::string& Datatype() const { return record_.datatype; }
  [[nodiscard]] std::uint32_t DefaultPriority() const { return record_.defaultPriority; }
  [[nodiscard]] const CDevMode& DevMode() const { return devMode_; }
  [[nodiscard]] const std::string& DriverName() const { return record_.driverName; }
  [[nodiscard]] CPrinterJobs& Jobs() { return jobs_; }
  [[nodiscard]] const std::string& Location() const { return record_.location; }
  [[nodiscard]] const std::string& Parameters() const { return record_.parameters; }
  [[nodiscard]] const std::string& PortName() const { return record_.portName; }
  [[nodiscard]] const std::string& PrinterName() const { return record_.printerName; }
  [[nodiscard]] const std::string& PrintProcessor() const { return record_.printProcessor; }
  [[nodiscard]] std::uint32_t Priority() const { return record_.priority; }
  [[nodiscard]] const std::string& SeparatorPageFile() const { return record_.separatorFile; }
  [[nodiscard]] const std::string& ServerName() const { return record_.serverName; }
  [[nodiscard]] const std::string& ShareName() const { return record_.shareName; }
  [[nodiscard]] std::uint32_t StartTime() const { return record_.startTime; }
  [[nodiscard]] std::uint32_t Status() const { return record_.status; }
  [[nodiscard]] std::uint32_t UntilTime() const { return record_.untilTime; }

  // True if the spooler did it; the printer is read anew.
  bool ControlPause() { return Control(printing::kPausePrinter); }
  bool ControlPurge() { return Control(printing::kPurgePrinter); }
  bool ControlResume() { return Control(printing::kResumePrinter); }

  void Refresh();
  /// Shows the platform's dialog of the printer's settings, with as much access as the user gets; `window` owns
  /// it.
  void ShowPropertiesDialog(std::int64_t window);

 private:
  bool Control(std::uint32_t command);
  [[nodiscard]] std::string MakeDisplayName() const;

  Run& run_;
  std::string deviceName_;
  std::string displayName_;
  PrinterRecord record_;
  CDevMode devMode_;
  CPrinterJobs jobs_;
  std::int32_t error_ = 0;
};

}  // namespace tessary
