#include "system/CPrinterJobs.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "system/Error.h"
#include "system/modUtil.h"

namespace tessary {

namespace {

std::string KeyOf(std::uint32_t jobId) {
  char key[16];
  std::snprintf(key, sizeof key, "%X", jobId);
  return key;
}

}  // namespace

void CPrinterJobs::SetDeviceName(const std::string& name) {
  deviceName_ = name;
  Refresh();
}

CPrinterJobs::Job CPrinterJobs::Item(std::int32_t position) const {
  if (position < 1 || static_cast<std::size_t>(position) > jobs_.size())
    throw Error(errors::kOutOfRange, "Subscript out of range");
  return jobs_[static_cast<std::size_t>(position) - 1];
}

CPrinterJobs::Job CPrinterJobs::Item(const std::string& key) const {
  for (const Job& job : jobs_)
    if (KeyOf(job->JobId()) == key) return job;
  throw Error(errors::kInvalidCall, "Invalid procedure call or argument");
}

std::uint32_t CPrinterJobs::ReadCount(PrinterHandle printer) {
  const auto record = run_.host.spooler.ReadPrinter(printer);
  error_ = record.failure.number;
  return record.value.jobs;
}

std::int32_t CPrinterJobs::Count() {
  PrintSpooler& spooler = run_.host.spooler;
  std::uint32_t count = 0;
  if (const PrinterHandle printer = spooler.Open(deviceName_, printing::kAccessDefault); printer != 0) {
    count = ReadCount(printer);
    spooler.Close(printer);
  }
  if (count != jobs_.size()) Refresh();
  return static_cast<std::int32_t>(count);
}

std::vector<JobRecord> CPrinterJobs::ReadRecords() {
  PrintSpooler& spooler = run_.host.spooler;
  const PrinterHandle printer = spooler.Open(deviceName_, printing::kAccessDefault);
  if (printer == 0) return {};
  std::vector<JobRecord> records;
  if (const std::uint32_t count = ReadCount(printer); count > 0)
    records = spooler.ReadJobs(printer, count).value;
  spooler.Close(printer);
  return records;
}

void CPrinterJobs::Refresh() {
  std::vector<Job> fresh;
  for (const JobRecord& record : ReadRecords()) {
    auto job = std::make_shared<CPrinterJobInfo>(run_, record);
    for (const Job& older : jobs_)
      if (older->JobId() == record.jobId) job->CarryOver(*older);
    fresh.push_back(std::move(job));
  }
  jobs_ = std::move(fresh);
}

bool CPrinterJobs::Control(std::uint32_t jobId, std::uint32_t command) {
  PrintSpooler& spooler = run_.host.spooler;
  const PrinterHandle printer = spooler.Open(deviceName_, printing::kAccessDefault);
  const bool done = printer != 0 && !spooler.ChangeJob(printer, jobId, command, nullptr);
  spooler.Close(printer);
  Refresh();
  return done;
}

bool CPrinterJobs::ControlCancel(std::uint32_t jobId) {
  // Older platforms do not know the command that deletes a job.
  const COpSysInfo& system = GetOpSysInfo(run_);
  const bool deletes = system.IsWinNT() && system.MajorVersion() >= 4;
  return Control(jobId, deletes ? printing::kDeleteJob : printing::kCancelJob);
}

bool CPrinterJobs::ControlRestart(std::uint32_t jobId) { return Control(jobId, printing::kRestartJob); }

bool CPrinterJobs::ControlResume(std::uint32_t jobId) { return Control(jobId, printing::kResumeJob); }

bool CPrinterJobs::ControlPause(std::uint32_t jobId) { return Control(jobId, printing::kPauseJob); }

bool CPrinterJobs::Move(std::uint32_t jobId, std::int32_t change) {
  PrintSpooler& spooler = run_.host.spooler;
  const PrinterHandle printer = spooler.Open(deviceName_, printing::kAccessAdminister);
  if (printer == 0) return false;
  auto job = spooler.ReadJob(printer, jobId);
  job.value.position += static_cast<std::uint32_t>(change);
  const bool done = job.ok() && !spooler.ChangeJob(printer, jobId, 0, &job.value);
  spooler.Close(printer);
  return done;
}

}  // namespace tessary
