// The printers of this machine: the queues of its CUPS server.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/PrintSpooler.h"
#include "host/posix/cups/CupsClient.h"
#include "host/posix/cups/CupsRecords.h"

namespace tessary {

/// Nothing is loaded before the first question. Commands act on the server; whether the user may is the
/// server's word. A queue has no places that jobs could be moved to, and there is no dialog of a printer's
/// settings.
class PosixSpooler final : public PrintSpooler {
 public:
  explicit PosixSpooler(CupsClient& server) : server_(server) {}

  int CountPrinters() override;
  Result<std::string> NameOfPrinter(int index) override;
  PrinterHandle Open(const std::string& name, std::uint32_t access) override;
  void Close(PrinterHandle printer) override;
  Result<PrinterRecord> ReadPrinter(PrinterHandle printer) override;
  Failure ChangePrinter(PrinterHandle printer, std::uint32_t command, const PrinterRecord* record) override;
  Result<std::vector<JobRecord>> ReadJobs(PrinterHandle printer, std::uint32_t count) override;
  Result<JobRecord> ReadJob(PrinterHandle printer, std::uint32_t jobId) override;
  Failure ChangeJob(PrinterHandle printer, std::uint32_t jobId, std::uint32_t command,
                    const JobRecord* record) override;
  void ShowProperties(PrinterHandle, std::int64_t) override {}

 private:
  Result<std::vector<JobRecord>> AllJobs(const Queue& queue);

  CupsClient& server_;
  std::vector<Queue> counted_;
  std::map<PrinterHandle, Queue> open_;
  PrinterHandle lastHandle_ = 0;
};

/// The server's default printer, for all of its users.
class PosixDefaultPrinter final : public DefaultPrinter {
 public:
  explicit PosixDefaultPrinter(CupsClient& server) : server_(server) {}

  std::string Name() override;
  bool Choose(const std::string& name) override;
  std::string FirstListed() override { return {}; }
  std::string ReadProfile(const std::string&, const std::string&) override { return {}; }
  bool WriteProfile(const std::string&, const std::string&, const std::string&) override { return false; }
  void Broadcast(std::uint32_t, int) override {}

 private:
  CupsClient& server_;
};

}  // namespace tessary
