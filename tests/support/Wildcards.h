// Comparing names and patterns as the simulated machine does.
#pragma once

#include <string>
#include <string_view>

namespace tessary {

/// `text` with its ASCII letters in lower case.
inline std::string LowerCase(std::string text) {
  for (char& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return text;
}

/// True if `text` has the form of `pattern`, in which `*` stands for any run of characters and `anyOne` for any
/// single one (NUL: no character does).
inline bool Matches(std::string_view pattern, std::string_view text, char anyOne) {
  std::size_t p = 0, t = 0, star = std::string_view::npos, resume = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      resume = t;
    } else if (p < pattern.size() && (pattern[p] == text[t] || (anyOne != '\0' && pattern[p] == anyOne))) {
      ++p;
      ++t;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      t = ++resume;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

/// The rule of file names on Windows: case-blind, and a name without a dot counts as one that ends in a dot, so
/// that "*.*" matches every name.
inline bool MatchesFileName(const std::string& pattern, const std::string& name) {
  const std::string text = LowerCase(name);
  return Matches(LowerCase(pattern), text, '?') ||
         (text.find('.') == std::string::npos && Matches(LowerCase(pattern), text + ".", '?'));
}

}  // namespace tessary
