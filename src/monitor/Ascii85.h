// ASCII85: any bytes as lines of printable text, four of them in five characters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "system/Blocks.h"

namespace tessary {

/// Writes the bytes it is given as lines that end in CR LF, for Ghostscript's ASCII85Decode filter. Every line
/// begins with a blank, which the filter passes over, so that none can be taken for a comment of the document.
class Ascii85Encoder {
 public:
  /// `writer` must outlive the encoder.
  explicit Ascii85Encoder(BlockWriter& writer) : writer_(writer) {}

  void Append(std::string_view bytes);
  /// Writes what is left, the mark of the end and the last line end. Called once.
  void Finish();

 private:
  void PutGroups(std::string_view bytes);

  BlockWriter& writer_;
  std::string rest_;  ///< fewer than four bytes that wait for more
  std::size_t groupsInLine_ = 0;
};

}  // namespace tessary
