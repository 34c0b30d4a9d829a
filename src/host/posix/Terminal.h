// The terminal that standard error may lead to, for messages and for one line that is rewritten in place.
#pragma once

#include <string>
#include <string_view>

namespace tessary {

/// The line is kept off everything else that is written through the same object.
class Terminal {
 public:
  ~Terminal() { EraseLine(); }

  /// Writes a message of its own lines to standard error, wherever that leads. Line ends of all kinds are good,
  /// and every other control character becomes "?", so that nothing in a document's name or in Ghostscript's
  /// words can steer the terminal.
  void Say(std::string_view text);
  /// Writes `text`, or as much of it as the terminal is wide, over the line that was there. False, and nothing,
  /// where standard error is no terminal.
  bool ShowLine(const std::string& text);
  void EraseLine();

 private:
  std::string line_;  ///< what is on the screen
};

}  // namespace tessary
