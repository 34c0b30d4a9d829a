// What a print spooler tells of printers and jobs: the published records of the Windows platform, with texts in
// the place of pointers. A field that a platform has nothing for stays 0 or empty.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tessary {

/// Values of the spooler, those of the Windows platform.
namespace printing {
// Access that a printer is opened with.
inline constexpr std::uint32_t kAccessDefault = 0, kAccessAdminister = 4, kAccessAll = 0xF000C,
                               kAccessUse = 0xF0008;
// Commands to a printer, and to a job.
inline constexpr std::uint32_t kPausePrinter = 1, kResumePrinter = 2, kPurgePrinter = 3;
inline constexpr std::uint32_t kPauseJob = 1, kResumeJob = 2, kCancelJob = 3, kRestartJob = 4, kDeleteJob = 5;
// Bits of PrinterRecord::attributes.
inline constexpr std::uint32_t kIsDefault = 4, kIsShared = 8, kIsNetwork = 0x10, kIsLocal = 0x40;
// Bits of PrinterRecord::status.
inline constexpr std::uint32_t kPaused = 1, kError = 2, kPaperJam = 8, kPaperOut = 0x10, kPaperProblem = 0x40,
                               kOffline = 0x80, kBusy = 0x200, kPrinting = 0x400, kOutputBinFull = 0x800,
                               kNotAvailable = 0x1000, kWaiting = 0x2000, kTonerLow = 0x20000,
                               kTonerOut = 0x40000, kUserIntervention = 0x100000, kOutOfMemory = 0x200000,
                               kDoorOpen = 0x400000;
// Bits of JobRecord::status.
inline constexpr std::uint32_t kJobPaused = 1, kJobError = 2, kJobDeleting = 4, kJobSpooling = 8,
                               kJobPrinting = 0x10, kJobOffline = 0x20, kJobPaperOut = 0x40, kJobPrinted = 0x80,
                               kJobDeleted = 0x100, kJobBlocked = 0x200, kJobUserIntervention = 0x400,
                               kJobRestarting = 0x800;
}  // namespace printing

/// The settings of a device (DEVMODEA up to and including dmDisplayFrequency), each field the one with the
/// prefix "dm". The two texts are fixed fields of 32 bytes: whatever stands behind a NUL in them is no part of
/// the name.
struct DeviceMode {
  std::string deviceName;
  std::int16_t specVersion = 0, driverVersion = 0;
  std::int32_t fields = 0;  ///< which of the others count, in bits
  std::int16_t orientation = 0, paperSize = 0, paperLength = 0, paperWidth = 0, scale = 0, copies = 0;
  std::int16_t defaultSource = 0, printQuality = 0, color = 0, duplex = 0, yResolution = 0, ttOption = 0;
  std::int16_t collate = 0;
  std::string formName;
  std::int16_t logPixels = 0;
  std::int32_t bitsPerPel = 0, pelsWidth = 0, pelsHeight = 0, nup = 0, displayFrequency = 0;
};

/// A printer (PRINTER_INFO_2A).
struct PrinterRecord {
  std::string serverName;   ///< empty for a printer of this machine
  std::string printerName;  ///< the name that it is opened by
  std::string shareName, portName, driverName, comment, location;
  std::optional<DeviceMode> devMode;
  std::string separatorFile, printProcessor, datatype, parameters;
  std::uint32_t attributes = 0;                     ///< bits, see above
  std::uint32_t priority = 0, defaultPriority = 0;  ///< 1 to 99
  std::uint32_t startTime = 0, untilTime = 0;       ///< when it prints, in minutes since midnight UTC
  std::uint32_t status = 0;                         ///< bits, see above; 0: ready
  std::uint32_t jobs = 0;                           ///< jobs in its queue
  std::uint32_t averagePPM = 0;                     ///< pages a minute
};

/// A job in the queue of a printer (JOB_INFO_2A).
struct JobRecord {
  std::uint32_t jobId = 0;
  std::string printerName, machineName, userName, document, notifyName, datatype, printProcessor, parameters;
  std::string driverName;
  std::optional<DeviceMode> devMode;
  std::string statusText;                      ///< the spooler's own words; empty: `status` tells it
  std::uint32_t status = 0;                    ///< bits, see above
  std::uint32_t priority = 0;                  ///< 1 to 99
  std::uint32_t position = 0;                  ///< in the queue, from 1
  std::uint32_t startTime = 0, untilTime = 0;  ///< as in PrinterRecord
  std::uint32_t totalPages = 0;                ///< 0: not known
  std::uint32_t size = 0;                      ///< in bytes
  std::int64_t submitted = 0;                  ///< seconds since 1970-01-01 UTC
  std::uint32_t time = 0;                      ///< milliseconds since printing began
  std::uint32_t pagesPrinted = 0;
};

}  // namespace tessary
