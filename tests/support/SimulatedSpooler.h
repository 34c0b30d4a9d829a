// The print spooler of the simulated machine.
//
//   machine.spooler.Add("PDF Printer [Sales]", "TESSARY").jobs.resize(2);
//   machine.spooler.refused = {"pause PDF Printer [Sales]"};
//   …
//   EXPECT_EQ(machine.spooler.calls, "…");
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/PrintSpooler.h"

namespace tessary {

/// Commands change the records as a spooler would. A failure that no test chose has the number 5, or 1801 for a
/// printer and 87 for a job that are gone.
class SimulatedSpooler : public PrintSpooler, public DefaultPrinter {
 public:
  struct Printer {
    PrinterRecord record;
    std::vector<JobRecord> jobs;
    Failure unreadable;  ///< of its record
    Failure jobsUnreadable;
  };
  Printer& Add(const std::string& name, const std::string& port);
  /// The printer of that name; the test ends without one.
  Printer& Get(const std::string& name);

  std::list<Printer> printers;
  std::map<int, int> unreadableNames;  ///< how often the name at an index fails
  std::set<std::string> refused;       ///< calls, as in `calls`, that fail with 5; also "open 4 name"
  std::function<void()> onClose;       ///< things happen behind the back of whoever closes a handle
  std::string calls;        ///< every change, and "open " of another access than 0, one after the other
  std::string defaultName;  ///< what GetDefaultPrinter gives
  std::map<std::string, std::string> profile;  ///< "section/key" to text
  int openHandles = 0;

  int CountPrinters() override { return static_cast<int>(printers.size()); }
  Result<std::string> NameOfPrinter(int index) override;
  PrinterHandle Open(const std::string& name, std::uint32_t access) override;
  void Close(PrinterHandle printer) override;
  Result<PrinterRecord> ReadPrinter(PrinterHandle printer) override;
  Failure ChangePrinter(PrinterHandle printer, std::uint32_t command, const PrinterRecord* record) override;
  Result<std::vector<JobRecord>> ReadJobs(PrinterHandle printer, std::uint32_t count) override;
  Result<JobRecord> ReadJob(PrinterHandle printer, std::uint32_t jobId) override;
  Failure ChangeJob(PrinterHandle printer, std::uint32_t jobId, std::uint32_t command,
                    const JobRecord* record) override;
  void ShowProperties(PrinterHandle printer, std::int64_t window) override;

  std::string Name() override { return defaultName; }
  bool Choose(const std::string& name) override;
  std::string FirstListed() override;
  std::string ReadProfile(const std::string& section, const std::string& key) override;
  bool WriteProfile(const std::string& section, const std::string& key, const std::string& text) override;
  void Broadcast(std::uint32_t message, int milliseconds) override;

 private:
  bool Allowed(const std::string& call);
  Printer* Find(PrinterHandle printer);

  std::vector<std::string> handles_;  ///< the names behind the handles
};

}  // namespace tessary
