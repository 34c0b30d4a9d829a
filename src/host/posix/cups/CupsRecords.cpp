#include "host/posix/cups/CupsRecords.h"

#include <algorithm>
#include <string_view>

namespace tessary {

const std::vector<const char*> kQueueAttributes{"printer-name", "printer-info"};
const std::vector<const char*> kPrinterAttributes{"printer-name",           "device-uri",
                                                  "printer-make-and-model", "printer-info",
                                                  "printer-location",       "printer-is-shared",
                                                  "printer-type",           "printer-state",
                                                  "printer-state-reasons",  "printer-is-accepting-jobs",
                                                  "queued-job-count",       "pages-per-minute",
                                                  "job-sheets-default",     "job-priority-default"};
const std::vector<const char*> kJobAttributes{"job-id",
                                              "job-name",
                                              "job-originating-user-name",
                                              "job-originating-host-name",
                                              "job-state",
                                              "job-state-reasons",
                                              "job-priority",
                                              "job-k-octets",
                                              "job-media-sheets",
                                              "job-media-sheets-completed",
                                              "time-at-creation",
                                              "time-at-processing",
                                              "document-format"};

namespace {

struct Bit {
  std::string_view reason;
  std::uint32_t bit;
};

/// Reasons without the severity behind them, which says nothing that the platform's bits could.
constexpr Bit kPrinterReasons[] = {
    {"paused", printing::kPaused},
    {"moving-to-paused", printing::kPaused},
    {"offline", printing::kOffline},
    {"shutdown", printing::kOffline},
    {"connecting-to-device", printing::kWaiting},
    {"timed-out", printing::kNotAvailable},
    {"media-jam", printing::kPaperJam},
    {"media-empty", printing::kPaperOut},
    {"media-needed", printing::kPaperOut},
    {"input-tray-missing", printing::kPaperProblem},
    {"output-area-full", printing::kOutputBinFull},
    {"toner-low", printing::kTonerLow},
    {"marker-supply-low", printing::kTonerLow},
    {"toner-empty", printing::kTonerOut},
    {"marker-supply-empty", printing::kTonerOut},
    {"cover-open", printing::kDoorOpen},
    {"door-open", printing::kDoorOpen},
    {"interlock-open", printing::kDoorOpen},
    {"spool-area-full", printing::kOutOfMemory},
    {"cups-missing-filter", printing::kUserIntervention},
    {"cups-insecure-filter", printing::kUserIntervention},
};

constexpr Bit kJobReasons[] = {
    {"job-incoming", printing::kJobSpooling},
    {"processing-to-stop-point", printing::kJobDeleting},
    {"printer-stopped", printing::kJobBlocked},
};

std::string TextOf(const CupsAttributes& attributes, const char* name) {
  const auto found = attributes.find(name);
  return found == attributes.end() || found->second.texts.empty() ? "" : found->second.texts.front();
}

/// A number that is not negative; what is missing or not known to the server is 0.
std::uint32_t NumberOf(const CupsAttributes& attributes, const char* name) {
  const auto found = attributes.find(name);
  return found == attributes.end() ? 0 : static_cast<std::uint32_t>(std::max(0, found->second.number));
}

template <std::size_t size>
std::uint32_t BitsOf(const CupsAttributes& attributes, const char* name, const Bit (&table)[size]) {
  std::uint32_t bits = 0;
  const auto found = attributes.find(name);
  if (found == attributes.end()) return 0;
  for (std::string_view reason : found->second.texts) {
    for (const std::string_view severity : {"-report", "-warning", "-error"})
      if (reason.ends_with(severity)) reason.remove_suffix(severity.size());
    for (const Bit& bit : table)
      if (bit.reason == reason) bits |= bit.bit;
  }
  return bits;
}

bool HasBrackets(const std::string& name) {
  const std::size_t open = name.find('[');
  return open != std::string::npos && name.find(']', open) != std::string::npos;
}

std::string DeviceOf(const std::string& queue, const std::string& description) {
  const bool byQueue = description.empty() || (!HasBrackets(description) && HasBrackets(queue));
  return byQueue ? queue : description;
}

std::string PortOf(const std::string& uri) { return uri.starts_with("tessary:") ? "TESSARY" : uri; }

std::uint32_t StatusOf(const CupsAttributes& printer) {
  std::uint32_t status = BitsOf(printer, "printer-state-reasons", kPrinterReasons);
  const std::uint32_t state = NumberOf(printer, "printer-state");
  if (state == IPP_PSTATE_PROCESSING) status |= printing::kPrinting;
  if (state == IPP_PSTATE_STOPPED) status |= printing::kPaused;
  if (const auto accepts = printer.find("printer-is-accepting-jobs");
      accepts != printer.end() && accepts->second.number == 0)
    status |= printing::kNotAvailable;
  return status;
}

std::uint32_t JobStatusOf(const CupsAttributes& job) {
  const std::uint32_t bits = BitsOf(job, "job-state-reasons", kJobReasons);
  switch (NumberOf(job, "job-state")) {
    case IPP_JSTATE_HELD:
      return bits | printing::kJobPaused;
    case IPP_JSTATE_PROCESSING:
      return bits | printing::kJobPrinting;
    case IPP_JSTATE_STOPPED:
    case IPP_JSTATE_ABORTED:
      return bits | printing::kJobError;
    case IPP_JSTATE_CANCELED:
      return bits | printing::kJobDeleted;
    case IPP_JSTATE_COMPLETED:
      return bits | printing::kJobPrinted;
    default:
      return bits;
  }
}

}  // namespace

std::vector<Queue> QueuesOf(const std::vector<CupsAttributes>& printers) {
  std::vector<Queue> queues;
  for (const CupsAttributes& printer : printers) {
    const std::string name = TextOf(printer, "printer-name");
    std::string device = DeviceOf(name, TextOf(printer, "printer-info"));
    while (
        std::any_of(queues.begin(), queues.end(), [&](const Queue& other) { return other.device == device; }))
      device += " (" + name + ")";
    queues.push_back({name, device});
  }
  return queues;
}

PrinterRecord PrinterOf(const std::string& device, const CupsAttributes& printer) {
  PrinterRecord record;
  const bool isShared = NumberOf(printer, "printer-is-shared") != 0;
  const bool isRemote = (NumberOf(printer, "printer-type") & CUPS_PRINTER_REMOTE) != 0;
  record.printerName = device;
  if (isShared) record.shareName = TextOf(printer, "printer-name");
  record.portName = PortOf(TextOf(printer, "device-uri"));
  record.driverName = TextOf(printer, "printer-make-and-model");
  record.comment = TextOf(printer, "printer-info");
  record.location = TextOf(printer, "printer-location");
  if (const std::string sheet = TextOf(printer, "job-sheets-default"); sheet != "none")
    record.separatorFile = sheet;
  record.attributes =
      (isShared ? printing::kIsShared : 0) | (isRemote ? printing::kIsNetwork : printing::kIsLocal);
  record.priority = record.defaultPriority = NumberOf(printer, "job-priority-default");
  record.status = StatusOf(printer);
  record.jobs = NumberOf(printer, "queued-job-count");
  record.averagePPM = NumberOf(printer, "pages-per-minute");
  return record;
}

JobRecord JobOf(const std::string& device, const CupsAttributes& job, std::uint32_t position,
                std::int64_t now) {
  JobRecord record;
  record.jobId = NumberOf(job, "job-id");
  record.printerName = device;
  record.machineName = TextOf(job, "job-originating-host-name");
  record.userName = record.notifyName = TextOf(job, "job-originating-user-name");
  record.document = TextOf(job, "job-name");
  record.datatype = TextOf(job, "document-format");
  record.status = JobStatusOf(job);
  record.priority = NumberOf(job, "job-priority");
  record.position = position;
  record.totalPages = NumberOf(job, "job-media-sheets");
  record.pagesPrinted = NumberOf(job, "job-media-sheets-completed");
  record.size =
      static_cast<std::uint32_t>(std::min<std::uint64_t>(NumberOf(job, "job-k-octets") * 1024ull, ~0u));
  record.submitted = NumberOf(job, "time-at-creation");
  if (const std::int64_t begun = NumberOf(job, "time-at-processing"); begun != 0 && now > begun)
    record.time = static_cast<std::uint32_t>(std::min<std::int64_t>((now - begun) * 1000, ~0u));
  return record;
}

}  // namespace tessary
