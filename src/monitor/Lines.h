// The lines of a document, whatever ends them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "monitor/Blocks.h"

namespace tessary {

enum class LineEnd : std::uint8_t { None, Lf, Cr, CrLf };

/// A line, or a piece of one that is too long for a block.
struct Line {
  std::string_view text;  ///< without the line end
  std::string_view raw;   ///< with it; empty only at the end of the document
  LineEnd end = LineEnd::None;
  bool begins = true;    ///< the line begins here
  bool ends = true;      ///< the line ends here, at a line end or with the document
  bool comment = false;  ///< the line, wherever it began, begins with "%"
};

class LineReader {
 public:
  /// `reader` must outlive this object and is moved by it alone.
  explicit LineReader(BlockReader& reader) : reader_(reader) {}

  /// The line that comes next. Valid until the next call of Peek or ReturnTo.
  Line Peek();
  /// Moves behind a line that Peek gave.
  void Skip(const Line& line);
  /// Tests the line that Peek gave last: true if all of it is printable ASCII, tabs and form feeds or, in a
  /// comment, letters of any other code page.
  bool IsText(const Line& line);

  [[nodiscard]] std::uint64_t Position() const { return reader_.Position(); }
  /// Goes back to the start of a line, given by its position.
  void ReturnTo(std::uint64_t position);

 private:
  bool More();

  BlockReader& reader_;
  const char* lf_ = nullptr;  ///< the next byte of each kind in the window, or the window's end;
  const char* cr_ = nullptr;  ///< worked out anew when the window has passed it or was moved
  const char* odd_ = nullptr;
  bool begins_ = true, comment_ = false;
};

}  // namespace tessary
