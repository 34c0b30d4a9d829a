// Line ends of a job's PostScript: CR, or CR LF. A bare LF is none.
#pragma once

#include <cstddef>
#include <string_view>

#include "system/Blocks.h"

namespace tessary {

struct LineEndCount {
  std::size_t all = 0;
  std::size_t pairs = 0;  ///< those that are CR LF
};

/// The line ends in `text`, which does not end between a CR and its LF.
LineEndCount CountLineEnds(std::string_view text);

/// Writes `text`, which has line ends as counted in `ends`, with CR LF for each of them.
void WriteWithCrLf(BlockWriter& writer, std::string_view text, const LineEndCount& ends);

}  // namespace tessary
