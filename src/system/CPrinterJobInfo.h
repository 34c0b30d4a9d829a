// One job in the queue of a printer: a snapshot that CPrinterJobs makes.
#pragma once

#include <cstdint>
#include <string>

#include "system/CDevMode.h"
#include "system/Run.h"

namespace tessary {

class CPrinterJobInfo {
 public:
  CPrinterJobInfo(Run& run, const JobRecord& record);

  /// Raises the two highest values to those of an older snapshot of the same job.
  void CarryOver(const CPrinterJobInfo& older);

  [[nodiscard]] bool IsPaused() const { return (record_.status & printing::kJobPaused) != 0; }
  /// The highest values of Size and TotalPages that were seen as long as the job was in the queue.
  [[nodiscard]] std::uint32_t SizeMax() const { return sizeMax_; }
  [[nodiscard]] std::uint32_t TotalPagesMax() const { return totalPagesMax_; }
  [[nodiscard]] const std::string& Datatype() const { return record_.datatype; }
  [[nodiscard]] const CDevMode& DevMode() const { return devMode_; }
  [[nodiscard]] const std::string& Document() const { return record_.document; }
  [[nodiscard]] const std::string& DriverName() const { return record_.driverName; }
  [[nodiscard]] std::uint32_t JobId() const { return record_.jobId; }
  [[nodiscard]] const std::string& MachineName() const { return record_.machineName; }
  [[nodiscard]] const std::string& NotifyName() const { return record_.notifyName; }
  [[nodiscard]] std::uint32_t PagesPrinted() const { return record_.pagesPrinted; }
  [[nodiscard]] const std::string& Parameters() const { return record_.parameters; }
  [[nodiscard]] std::uint32_t Position() const { return record_.position; }
  [[nodiscard]] const std::string& PrinterName() const { return record_.printerName; }
  [[nodiscard]] const std::string& PrintProcessor() const { return record_.printProcessor; }
  [[nodiscard]] std::uint32_t Priority() const { return record_.priority; }
  [[nodiscard]] std::uint32_t Size() const { return record_.size; }
  [[nodiscard]] const DateTime& Submitted() const { return submitted_; }  ///< in local time
  [[nodiscard]] std::uint32_t StartTime() const { return record_.startTime; }
  [[nodiscard]] std::uint32_t Status() const { return record_.status; }
  /// The spooler's own words if it has any; otherwise the bits of the status as text, such as
  /// "Paused - Spooling...".
  [[nodiscard]] std::string StatusText() const;
  [[nodiscard]] std::uint32_t Time() const { return record_.time; }
  [[nodiscard]] std::uint32_t TotalPages() const { return record_.totalPages; }
  [[nodiscard]] std::uint32_t UntilTime() const { return record_.untilTime; }
  [[nodiscard]] const std::string& UserName() const { return record_.userName; }

 private:
  JobRecord record_;
  CDevMode devMode_;
  DateTime submitted_;
  std::uint32_t sizeMax_;
  std::uint32_t totalPagesMax_;
};

}  // namespace tessary
