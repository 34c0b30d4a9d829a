// The queue of a printer: its jobs in the spooler's order, as they were at the last Refresh.
//
//   CPrinterJobs jobs(run);
//   jobs.SetDeviceName("PDF Printer [Sales]");
//   for (const auto& job : jobs) … job->Document() …
//   jobs.ControlCancel(jobs.Item(1)->JobId());
//
// A printer that cannot be opened has no jobs. Nothing here raises but Item.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "system/CPrinterJobInfo.h"
#include "system/Run.h"

namespace tessary {

class CPrinterJobs {
 public:
  using Job = std::shared_ptr<const CPrinterJobInfo>;

  explicit CPrinterJobs(Run& run) : run_(run) {}

  [[nodiscard]] const std::string& DeviceName() const { return deviceName_; }
  /// Names the printer and reads its queue.
  void SetDeviceName(const std::string& name);

  /// How many jobs the spooler has now; the queue is read anew if that is another number than before.
  std::int32_t Count();
  /// A job by its place, from 1. Raises errors::kOutOfRange.
  [[nodiscard]] Job Item(std::int32_t position) const;
  /// A job by its key: the id in upper-case hexadecimal digits without zeros in front. Raises
  /// errors::kInvalidCall.
  [[nodiscard]] Job Item(const std::string& key) const;
  /// The platform's error when the number of jobs was last read; 0: none.
  [[nodiscard]] std::int32_t GetPrinterError() const { return error_; }
  [[nodiscard]] auto begin() const { return jobs_.begin(); }
  [[nodiscard]] auto end() const { return jobs_.end(); }

  // True if the spooler did it. The controls read the queue anew, a move does not.
  bool ControlCancel(std::uint32_t jobId);
  bool ControlRestart(std::uint32_t jobId);
  bool ControlResume(std::uint32_t jobId);
  bool ControlPause(std::uint32_t jobId);
  bool PositionMoveDown(std::uint32_t jobId) { return Move(jobId, 1); }
  bool PositionMoveUp(std::uint32_t jobId) { return Move(jobId, -1); }

  /// Reads the queue. A job that was known already keeps the highest values that were seen of it.
  void Refresh();

 private:
  [[nodiscard]] std::uint32_t ReadCount(PrinterHandle printer);
  [[nodiscard]] std::vector<JobRecord> ReadRecords();
  bool Control(std::uint32_t jobId, std::uint32_t command);
  bool Move(std::uint32_t jobId, std::int32_t change);

  Run& run_;
  std::string deviceName_;
  std::vector<Job> jobs_;
  std::int32_t error_ = 0;
};

}  // namespace tessary
