// The print spooler of a machine: its printers, their queues, and the one printer that is the default.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/Failure.h"
#include "host/PrinterRecords.h"

namespace tessary {

/// An opened printer; 0 is none.
using PrinterHandle = std::uint64_t;

/// Records are read whole: how large they are, and asking for that first, is the host's affair. The number of a
/// failure is the platform's own, System::ErrorText knows its text. A machine without a spooler, or with one
/// that does not answer, has no printers; a question to it takes a few seconds at most.
class PrintSpooler {
 public:
  virtual ~PrintSpooler() = default;

  /// How many printers this machine lists.
  virtual int CountPrinters() = 0;
  /// The name of one of those that were counted last, from 0. A name opens the printer and is unique.
  virtual Result<std::string> NameOfPrinter(int index) = 0;

  /// Opens a printer with an access of `printing`; 0 if there is none of that name or the user may not.
  virtual PrinterHandle Open(const std::string& name, std::uint32_t access) = 0;
  /// Ends a handle; 0 does nothing.
  virtual void Close(PrinterHandle printer) = 0;

  /// The printer as it is now.
  virtual Result<PrinterRecord> ReadPrinter(PrinterHandle printer) = 0;
  /// Carries out a command (`record` null), or makes the printer what `record` says (command 0). Nothing has
  /// changed after a failure.
  virtual Failure ChangePrinter(PrinterHandle printer, std::uint32_t command, const PrinterRecord* record) = 0;
  /// The first `count` jobs of the queue, in its order.
  virtual Result<std::vector<JobRecord>> ReadJobs(PrinterHandle printer, std::uint32_t count) = 0;
  virtual Result<JobRecord> ReadJob(PrinterHandle printer, std::uint32_t jobId) = 0;
  /// Like ChangePrinter, for a job. Of a record its position and what else people may change is taken.
  virtual Failure ChangeJob(PrinterHandle printer, std::uint32_t jobId, std::uint32_t command,
                            const JobRecord* record) = 0;

  /// Shows the platform's own dialog of the printer's settings and returns when it is closed; at once where
  /// there is none. `window` owns it, 0: nobody does.
  virtual void ShowProperties(PrinterHandle printer, std::int64_t window) = 0;
};

/// Which printer is the default. Old platforms keep it among their profile strings (win.ini) or in the records
/// of the printers, later ones have a function for it; each has the methods of its own kind, and the others
/// fail.
class DefaultPrinter {
 public:
  virtual ~DefaultPrinter() = default;
  /// Its name; empty where there is none.
  virtual std::string Name() = 0;
  /// Makes a printer the default. False if there is none of that name or the user may not.
  virtual bool Choose(const std::string& name) = 0;
  /// The name of the first of the printers that the spooler lists as default; empty where it lists none.
  virtual std::string FirstListed() = 0;
  /// A profile string, at most 1023 bytes of it; empty where there is none.
  virtual std::string ReadProfile(const std::string& section, const std::string& key) = 0;
  virtual bool WriteProfile(const std::string& section, const std::string& key, const std::string& text) = 0;
  /// Sends a message without parameters to all windows of the desktop, and waits so many milliseconds for each
  /// at most.
  virtual void Broadcast(std::uint32_t message, int milliseconds) = 0;
};

}  // namespace tessary
