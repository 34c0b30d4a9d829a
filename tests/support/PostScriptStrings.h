// Reads the strings of generated PostScript back, as an interpreter does.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessary {

struct PostScriptStrings {
  std::vector<std::string> strings;  ///< the bytes of each string
  std::string rest;                  ///< the text without them, "()" in the place of each
  bool isWhole = true;               ///< false: a string does not end, or a parenthesis closes none
};

/// The byte of the escape sequence behind a backslash at `at`, which moves to its last character.
inline char ReadEscape(std::string_view text, std::size_t& at) {
  if (text[at] < '0' || text[at] > '7') return text[at];
  int value = 0;
  const std::size_t end = at + 3;
  for (; at < end && at < text.size() && text[at] >= '0' && text[at] <= '7'; ++at)
    value = value * 8 + text[at] - '0';
  --at;
  return static_cast<char>(value);
}

inline PostScriptStrings ReadPostScriptStrings(std::string_view text) {
  PostScriptStrings read;
  int depth = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (depth == 0) {
      read.rest += c;
      read.isWhole = read.isWhole && c != ')';
      if (c == '(') depth = 1, read.rest += ')', read.strings.emplace_back();
    } else if (c == '\\' && at + 1 < text.size()) {
      read.strings.back() += ReadEscape(text, ++at);
    } else {
      depth += c == '(' ? 1 : c == ')' ? -1 : 0;
      if (depth > 0) read.strings.back() += c;
    }
  }
  read.isWhole = read.isWhole && depth == 0;
  return read;
}

}  // namespace tessary
