// tessary-printer: the printers of this system on the print server.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "system/Run.h"

namespace tessary {

/// Does what `arguments` say. What was asked for and the help go to `output`, everything else to `errors`.
/// Returns 0 when it is done, 1 when it could not be, 2 for a wrong call. Printers of other systems are seen
/// for their names alone, and never changed.
std::int32_t PrinterCommand(Run& run, const std::vector<std::string>& arguments, std::ostream& output,
                            std::ostream& errors);

}  // namespace tessary
