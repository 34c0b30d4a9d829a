// What the print server tells of queues and jobs, as the records of a spooler.
#pragma once

#include <string>
#include <vector>

#include "host/PrinterRecords.h"
#include "host/posix/cups/CupsClient.h"

namespace tessary {

/// A queue of the server, and the name that it has as a device of this machine.
struct Queue {
  std::string name;
  std::string device;
};

/// The devices of `printers`. One is named by its description ("PDF Printer [Sales]"), or by its queue if that
/// is where the brackets are, or if nobody described it. Of several devices of one name the later ones have
/// their queue's behind it.
std::vector<Queue> QueuesOf(const std::vector<CupsAttributes>& printers);

/// The attributes that QueuesOf, PrinterOf and JobOf read.
extern const std::vector<const char*> kQueueAttributes, kPrinterAttributes, kJobAttributes;

/// The record of the printer `device`. Its port is "TESSARY" for a device of this system, else the device's
/// address.
PrinterRecord PrinterOf(const std::string& device, const CupsAttributes& printer);

/// The record of the job at `position` in the queue of `device`; `now` in seconds since 1970.
JobRecord JobOf(const std::string& device, const CupsAttributes& job, std::uint32_t position, std::int64_t now);

}  // namespace tessary
