#include "tests/support/SimulatedSpooler.h"

#include <algorithm>
#include <stdexcept>

namespace tessary {

namespace {

const Failure kRefused{5, "Access is denied."};
const Failure kNoPrinter{1801, "The printer name is invalid."};
const Failure kNoJob{87, "The parameter is incorrect."};

void SetBits(std::uint32_t& status, std::uint32_t bits, bool on) {
  status = on ? status | bits : status & ~bits;
}

}  // namespace

SimulatedSpooler::Printer& SimulatedSpooler::Add(const std::string& name, const std::string& port) {
  PrinterRecord record;
  record.printerName = name;
  record.portName = port;
  printers.push_back({record, {}, {}, {}});
  return printers.back();
}

SimulatedSpooler::Printer& SimulatedSpooler::Get(const std::string& name) {
  const auto found = std::find_if(printers.begin(), printers.end(),
                                  [&](const Printer& printer) { return printer.record.printerName == name; });
  if (found == printers.end()) throw std::out_of_range("no simulated printer " + name);
  return *found;
}

SimulatedSpooler::Printer* SimulatedSpooler::Find(PrinterHandle printer) {
  const std::string& name = handles_.at(printer - 1);
  const auto found = std::find_if(printers.begin(), printers.end(), [&](const Printer& candidate) {
    return candidate.record.printerName == name;
  });
  return found == printers.end() ? nullptr : &*found;
}

bool SimulatedSpooler::Allowed(const std::string& call) {
  calls += call + "; ";
  return refused.count(call) == 0;
}

Result<std::string> SimulatedSpooler::NameOfPrinter(int index) {
  if (unreadableNames[index]-- > 0) return kRefused;
  return std::next(printers.begin(), index)->record.printerName;
}

PrinterHandle SimulatedSpooler::Open(const std::string& name, std::uint32_t access) {
  if (access != 0 && !Allowed("open " + std::to_string(access) + " " + name)) return 0;
  handles_.push_back(name);
  if (Find(handles_.size()) == nullptr) return 0;
  ++openHandles;
  return handles_.size();
}

void SimulatedSpooler::Close(PrinterHandle printer) {
  if (printer != 0) --openHandles;
  if (onClose) onClose();
}

Result<PrinterRecord> SimulatedSpooler::ReadPrinter(PrinterHandle printer) {
  const Printer* found = Find(printer);
  if (found == nullptr) return kNoPrinter;
  if (found->unreadable) return found->unreadable;
  PrinterRecord record = found->record;
  record.jobs = static_cast<std::uint32_t>(found->jobs.size());
  return record;
}

Failure SimulatedSpooler::ChangePrinter(PrinterHandle printer, std::uint32_t command,
                                        const PrinterRecord* record) {
  static const char* const kVerbs[] = {"write", "pause", "resume", "purge"};
  Printer* found = Find(printer);
  if (found == nullptr) return kNoPrinter;
  if (!Allowed(kVerbs[command] + (" " + found->record.printerName))) return kRefused;
  if (record != nullptr) found->record = *record;
  if (command == printing::kPurgePrinter) found->jobs.clear();
  if (command == printing::kPausePrinter || command == printing::kResumePrinter)
    SetBits(found->record.status, printing::kPaused, command == printing::kPausePrinter);
  return {};
}

Result<std::vector<JobRecord>> SimulatedSpooler::ReadJobs(PrinterHandle printer, std::uint32_t count) {
  const Printer* found = Find(printer);
  if (found == nullptr) return kNoPrinter;
  if (found->jobsUnreadable) return found->jobsUnreadable;
  const auto length = std::min<std::size_t>(count, found->jobs.size());
  return std::vector<JobRecord>(found->jobs.begin(), found->jobs.begin() + static_cast<std::ptrdiff_t>(length));
}

Result<JobRecord> SimulatedSpooler::ReadJob(PrinterHandle printer, std::uint32_t jobId) {
  if (const Printer* found = Find(printer))
    for (const JobRecord& job : found->jobs)
      if (job.jobId == jobId) return job;
  return kNoJob;
}

Failure SimulatedSpooler::ChangeJob(PrinterHandle printer, std::uint32_t jobId, std::uint32_t command,
                                    const JobRecord* record) {
  Printer* found = Find(printer);
  if (found == nullptr) return kNoPrinter;
  std::string call = "job " + std::to_string(jobId) + " " + std::to_string(command);
  if (record != nullptr) call += " at " + std::to_string(record->position);
  if (!Allowed(call)) return kRefused;
  const auto job = std::find_if(found->jobs.begin(), found->jobs.end(),
                                [&](const JobRecord& candidate) { return candidate.jobId == jobId; });
  if (job == found->jobs.end()) return kNoJob;
  if (command == printing::kCancelJob || command == printing::kDeleteJob) {
    found->jobs.erase(job);
    return {};
  }
  if (record != nullptr) *job = *record;
  if (command == printing::kRestartJob) SetBits(job->status, printing::kJobRestarting, true);
  if (command == printing::kPauseJob || command == printing::kResumeJob)
    SetBits(job->status, printing::kJobPaused, command == printing::kPauseJob);
  return {};
}

void SimulatedSpooler::ShowProperties(PrinterHandle printer, std::int64_t window) {
  Allowed("properties " + handles_.at(printer - 1) + " " + std::to_string(window));
}

bool SimulatedSpooler::Choose(const std::string& name) {
  if (!Allowed("default " + name)) return false;
  defaultName = name;
  return true;
}

std::string SimulatedSpooler::FirstListed() {
  for (const Printer& printer : printers)
    if ((printer.record.attributes & printing::kIsDefault) != 0) return printer.record.printerName;
  return {};
}

std::string SimulatedSpooler::ReadProfile(const std::string& section, const std::string& key) {
  const auto found = profile.find(section + "/" + key);
  return found == profile.end() ? "" : found->second;
}

bool SimulatedSpooler::WriteProfile(const std::string& section, const std::string& key,
                                    const std::string& text) {
  if (!Allowed("profile " + section + "/" + key)) return false;
  profile[section + "/" + key] = text;
  return true;
}

void SimulatedSpooler::Broadcast(std::uint32_t message, int milliseconds) {
  Allowed("broadcast " + std::to_string(message) + " " + std::to_string(milliseconds));
}

}  // namespace tessary
