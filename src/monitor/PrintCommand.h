// tessary-print: prints PostScript and PDF files from a shell, as a printer of this system would.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "system/Run.h"

namespace tessary {

/// Prints the files that `arguments` name, one after the other; a failed one does not keep the others back.
/// What there is to say goes to `errors`, the help to `output`. Returns 0 when every file became a PDF, 1 when
/// one did not, 2 for a wrong call.
std::int32_t PrintCommand(Run& run, const std::vector<std::string>& arguments, std::ostream& output,
                          std::ostream& errors);

}  // namespace tessary
