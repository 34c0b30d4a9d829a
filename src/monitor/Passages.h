// A document taken to pieces: whole lines where every line counts, and otherwise passages as large as they
// come.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "system/Blocks.h"

namespace tessary {

enum class LineEnd : std::uint8_t { None, Lf, Cr, CrLf };

/// A line, or a piece of one that is too long for a block.
struct Line {
  std::string_view text;  ///< without the line end
  std::size_t size = 0;   ///< of the text and the line end; 0 only at the end of the document
  LineEnd end = LineEnd::None;
};

class PassageReader {
 public:
  /// `reader` must outlive this object and is moved by it alone.
  explicit PassageReader(BlockReader& reader) : reader_(reader) {}

  /// The rest of the line that comes next. Valid until the next call but Skip.
  Line PeekLine();

  /// What comes next, up to the next line but the first that begins with "%%". A passage may end within a line,
  /// but never between CR and LF; its first 32 bytes are never parted. Empty at the end of the document. Valid
  /// until the next call but Skip.
  std::string_view PeekPassage();

  /// Moves on by what the last call gave.
  void Skip(std::string_view passage);
  void Skip(const Line& line) { Skip(reader_.window().substr(0, line.size)); }

  /// True if a line begins here.
  [[nodiscard]] bool BeginsLine() const { return beginsLine_; }
  [[nodiscard]] std::uint64_t Position() const { return reader_.Position(); }
  /// Goes back to the start of a line, given by its position.
  void ReturnTo(std::uint64_t position);

 private:
  BlockReader& reader_;
  bool beginsLine_ = true;
};

}  // namespace tessary
