// A job's PostScript on its way through memory, parted at the document structuring comments that the patcher
// acts on.
//
// A line ends at CR or CR LF; a bare LF is a byte like any other. Lines may be of any length: no more than one
// block of the file is held.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "host/Files.h"
#include "system/Blocks.h"

namespace tessary {

/// The comment that a line is; None for every other line. Names are told apart by case.
enum class DscComment { None, Page, Title, For };

/// A run of bytes: a comment's line or a part of it, or whatever stands between two comments.
struct DscPiece {
  std::string_view bytes;  ///< never ends between the CR and the LF of a line end
  DscComment line = DscComment::None;
  bool begins = false;  ///< a line begins with the first byte
  bool ends = false;    ///< the last byte ends a line
};

class DscReader {
 public:
  /// Reads `file` from its start; it must outlive the reader.
  explicit DscReader(File& file) : blocks_(file, 0, std::numeric_limits<std::uint64_t>::max()) {}

  /// Puts the next piece into `piece`, whose bytes are valid until the next call; false at the end of the file.
  /// A last line without a line end gets CR LF as a piece of its own. Raises the platform's error.
  bool Next(DscPiece& piece);

 private:
  bool Refill();

  BlockReader blocks_;
  std::size_t settled_ = 0;  ///< so much of the window has all bytes behind it that are needed to part it
  DscComment line_ = DscComment::None;  ///< what the line is that the window begins in
  bool beginsLine_ = true;
};

}  // namespace tessary
