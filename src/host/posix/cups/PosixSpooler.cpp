#include "host/posix/cups/PosixSpooler.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <optional>

namespace tessary {

namespace {

constexpr const char* kAdministration = "/admin/";
constexpr const char* kJobs = "/jobs/";

struct Command {
  std::uint32_t command;
  ipp_op_t operation;
};

constexpr Command kPrinterCommands[] = {
    {printing::kPausePrinter, IPP_OP_PAUSE_PRINTER},
    {printing::kResumePrinter, IPP_OP_RESUME_PRINTER},
    {printing::kPurgePrinter, IPP_OP_CANCEL_JOBS},
};

constexpr Command kJobCommands[] = {
    {printing::kPauseJob, IPP_OP_HOLD_JOB},      {printing::kResumeJob, IPP_OP_RELEASE_JOB},
    {printing::kCancelJob, IPP_OP_CANCEL_JOB},   {printing::kDeleteJob, IPP_OP_CANCEL_JOB},
    {printing::kRestartJob, IPP_OP_RESTART_JOB},
};

const Failure kNotOpen{EBADF, "The printer is not open"};
const Failure kUnsupported{EOPNOTSUPP, "The print server cannot do that"};

template <std::size_t size>
std::optional<ipp_op_t> OperationOf(const Command (&table)[size], std::uint32_t command) {
  for (const Command& known : table)
    if (known.command == command) return known.operation;
  return std::nullopt;
}

std::vector<Queue> ListQueues(CupsClient& server) {
  return QueuesOf(server.Ask({.operation = IPP_OP_CUPS_GET_PRINTERS, .wanted = kQueueAttributes}).value);
}

std::optional<Queue> FindQueue(CupsClient& server, std::string Queue::*field, const std::string& name) {
  const std::vector<Queue> queues = ListQueues(server);
  const auto found =
      std::find_if(queues.begin(), queues.end(), [&](const Queue& queue) { return queue.*field == name; });
  if (found == queues.end()) return std::nullopt;
  return *found;
}

/// The queue of the server's default printer; empty where there is none.
std::string DefaultQueue(CupsClient& server) {
  const auto answer = server.Ask({.operation = IPP_OP_CUPS_GET_DEFAULT, .wanted = kQueueAttributes}).value;
  return answer.empty() ? "" : QueuesOf(answer).front().name;
}

}  // namespace

int PosixSpooler::CountPrinters() {
  counted_ = ListQueues(server_);
  return static_cast<int>(counted_.size());
}

Result<std::string> PosixSpooler::NameOfPrinter(int index) {
  const auto at = static_cast<std::size_t>(index);
  if (at >= counted_.size()) return Failure{ENOENT, "There is no such printer"};
  return counted_[at].device;
}

PrinterHandle PosixSpooler::Open(const std::string& name, std::uint32_t access) {
  const auto queue = FindQueue(server_, &Queue::device, name);
  if (!queue) return 0;
  const bool administers = (access & printing::kAccessAdminister) != 0;
  if (administers && !server_.MayAdminister()) return 0;
  open_[++lastHandle_] = *queue;
  return lastHandle_;
}

void PosixSpooler::Close(PrinterHandle printer) { open_.erase(printer); }

Result<PrinterRecord> PosixSpooler::ReadPrinter(PrinterHandle printer) {
  const auto opened = open_.find(printer);
  if (opened == open_.end()) return kNotOpen;
  const Queue& queue = opened->second;
  const auto answer = server_.Ask(
      {.operation = IPP_OP_GET_PRINTER_ATTRIBUTES, .queue = queue.name, .wanted = kPrinterAttributes});
  if (!answer.ok()) return answer.failure;
  if (answer.value.empty()) return Failure{EIO, "The print server says nothing of the printer"};
  PrinterRecord record = PrinterOf(queue.device, answer.value.front());
  if (DefaultQueue(server_) == queue.name) record.attributes |= printing::kIsDefault;
  return record;
}

Failure PosixSpooler::ChangePrinter(PrinterHandle printer, std::uint32_t command, const PrinterRecord* record) {
  const auto opened = open_.find(printer);
  if (opened == open_.end()) return kNotOpen;
  const auto operation = OperationOf(kPrinterCommands, command);
  if (!operation || record != nullptr) return kUnsupported;
  return server_.Ask({.operation = *operation, .queue = opened->second.name, .resource = kAdministration})
      .failure;
}

Result<std::vector<JobRecord>> PosixSpooler::AllJobs(const Queue& queue) {
  const auto answer =
      server_.Ask({.operation = IPP_OP_GET_JOBS, .queue = queue.name, .wanted = kJobAttributes});
  if (!answer.ok()) return answer.failure;
  std::vector<JobRecord> jobs;
  for (const CupsAttributes& job : answer.value)
    jobs.push_back(JobOf(queue.device, job, static_cast<std::uint32_t>(jobs.size() + 1), std::time(nullptr)));
  return jobs;
}

Result<std::vector<JobRecord>> PosixSpooler::ReadJobs(PrinterHandle printer, std::uint32_t count) {
  const auto opened = open_.find(printer);
  if (opened == open_.end()) return kNotOpen;
  auto jobs = AllJobs(opened->second);
  if (jobs.value.size() > count) jobs.value.resize(count);
  return jobs;
}

Result<JobRecord> PosixSpooler::ReadJob(PrinterHandle printer, std::uint32_t jobId) {
  const auto opened = open_.find(printer);
  if (opened == open_.end()) return kNotOpen;
  const auto jobs = AllJobs(opened->second);
  if (!jobs.ok()) return jobs.failure;
  for (const JobRecord& job : jobs.value)
    if (job.jobId == jobId) return job;
  return Failure{ENOENT, "There is no such job"};
}

Failure PosixSpooler::ChangeJob(PrinterHandle printer, std::uint32_t jobId, std::uint32_t command,
                                const JobRecord* record) {
  const auto opened = open_.find(printer);
  if (opened == open_.end()) return kNotOpen;
  const auto operation = OperationOf(kJobCommands, command);
  if (!operation || record != nullptr) return kUnsupported;
  return server_
      .Ask({.operation = *operation,
            .queue = opened->second.name,
            .job = static_cast<std::int32_t>(jobId),
            .resource = kJobs})
      .failure;
}

std::string PosixDefaultPrinter::Name() {
  const std::string name = DefaultQueue(server_);
  if (name.empty()) return {};
  const auto queue = FindQueue(server_, &Queue::name, name);
  return queue ? queue->device : "";
}

bool PosixDefaultPrinter::Choose(const std::string& name) {
  const auto queue = FindQueue(server_, &Queue::device, name);
  if (!queue) return false;
  return !server_.Ask({.operation = IPP_OP_CUPS_SET_DEFAULT, .queue = queue->name, .resource = kAdministration})
              .failure;
}

}  // namespace tessary
