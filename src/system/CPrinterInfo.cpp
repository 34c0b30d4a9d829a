#include "system/CPrinterInfo.h"

#include <cstdio>

#include "system/Conversions.h"
#include "system/DefaultPrinterChoice.h"
#include "system/modUtil.h"

namespace tessary {

namespace {

struct StatusWord {
  std::uint32_t status;
  const char* text;
};

/// Whole values, not bits. The spelling of "Output Bill Full" and the sign of "Initializing" are meant: 32768
/// reads "8000".
constexpr StatusWord kStatusWords[] = {
    {0, "Ready"},
    {printing::kPaused, "Paused"},
    {printing::kError, "Error"},
    {4, "Deleting..."},
    {printing::kPaperJam, "Paper Jam"},
    {printing::kPaperOut, "Paper Out"},
    {0x20, "Manual Feed Required"},
    {printing::kPaperProblem, "Paper Problem"},
    {printing::kOffline, "Offline"},
    {0x100, "Downloading Job"},
    {printing::kBusy, "Busy"},
    {printing::kPrinting, "Printing"},
    {printing::kOutputBinFull, "Output Bill Full"},
    {printing::kNotAvailable, "Not Available"},
    {printing::kWaiting, "Waiting"},
    {0x4000, "Processing Job"},
    {0xFFFF8000, "Initializing"},
    {0x10000, "Warming Up"},
    {printing::kTonerLow, "Toner Low"},
    {printing::kTonerOut, "Toner Out"},
    {0x80000, "Page too Complex"},
    {printing::kUserIntervention, "User Intervention Required"},
    {printing::kOutOfMemory, "Out of Memory"},
    {printing::kDoorOpen, "Door Open"},
    {0x800000, "Unable to connect"},
    {0x1000000, "Power Save Mode"},
};

/// The platform's text of an error, without its line end.
std::string TextOfError(Run& run, std::int32_t error) {
  std::string text = ApiErrorText(run, error);
  if (text.empty()) return "Error (" + std::to_string(error) + ") not defined.";
  if (text.ends_with("\r\n")) text.resize(text.size() - 2);
  return text;
}

}  // namespace

CPrinterInfo::CPrinterInfo(Run& run) : run_(run), jobs_(run) {}

void CPrinterInfo::SetDeviceName(const std::string& name) {
  deviceName_ = name;
  Refresh();
}

void CPrinterInfo::Refresh() {
  PrintSpooler& spooler = run_.host.spooler;
  record_ = {};
  devMode_ = {};
  error_ = 0;
  if (const PrinterHandle printer = spooler.Open(deviceName_, printing::kAccessDefault); printer != 0) {
    auto read = spooler.ReadPrinter(printer);
    spooler.Close(printer);
    error_ = read.failure.number;
    record_ = std::move(read.value);
    if (record_.devMode) devMode_.Load(&*record_.devMode);
  }
  displayName_ = MakeDisplayName();
  if (jobs_.DeviceName() == deviceName_)
    jobs_.Refresh();
  else
    jobs_.SetDeviceName(deviceName_);
}

std::string CPrinterInfo::MakeDisplayName() const {
  if (!IsNetwork() || record_.serverName.size() < 3 || !record_.serverName.starts_with("\\\\"))
    return deviceName_;
  const std::size_t server = record_.printerName.find('\\', 2);
  if (server == std::string::npos) return deviceName_;
  return record_.printerName.substr(server + 1) + " on " + record_.serverName.substr(2);
}

bool CPrinterInfo::IsDefault() const { return ToUpper(deviceName_) == ToUpper(DefaultPrinterName(run_)); }

void CPrinterInfo::SetIsDefault(bool isDefault) {
  if (!isDefault) return;
  ChooseDefaultPrinter(run_, deviceName_);
  Refresh();
}

bool CPrinterInfo::CanAdminister() const {
  PrintSpooler& spooler = run_.host.spooler;
  const PrinterHandle printer = spooler.Open(deviceName_, printing::kAccessAdminister);
  spooler.Close(printer);
  return printer != 0;
}

std::string CPrinterInfo::StatusText() const {
  if (error_ != 0) return TextOfError(run_, error_);
  for (const StatusWord& word : kStatusWords)
    if (word.status == record_.status) return word.text;
  char digits[16];
  std::snprintf(digits, sizeof digits, "%X", record_.status);
  return digits;
}

bool CPrinterInfo::Control(std::uint32_t command) {
  PrintSpooler& spooler = run_.host.spooler;
  const PrinterHandle printer = spooler.Open(deviceName_, printing::kAccessAdminister);
  if (printer == 0) return false;
  const bool done = !spooler.ChangePrinter(printer, command, nullptr);
  spooler.Close(printer);
  Refresh();
  return done;
}

void CPrinterInfo::ShowPropertiesDialog(std::int64_t window) {
  PrintSpooler& spooler = run_.host.spooler;
  PrinterHandle printer = spooler.Open(deviceName_, printing::kAccessAll);
  if (printer == 0) printer = spooler.Open(deviceName_, printing::kAccessUse);
  if (printer == 0) return;
  spooler.ShowProperties(printer, window);
  spooler.Close(printer);
}

}  // namespace tessary
