#include "monitor/Passages.h"

namespace tessary {

namespace {

constexpr std::size_t kLookAhead = 32;

bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

}  // namespace

Line PassageReader::PeekLine() {
  for (bool more = true;;) {
    const std::string_view window = reader_.window();
    const std::size_t stop = window.find_first_of("\r\n");
    // A CR that is the last byte at hand may have its LF behind it.
    if (more && (stop == std::string_view::npos || stop + 1 == window.size())) {
      more = reader_.More();
      continue;
    }
    if (stop == std::string_view::npos) return {window, window.size(), LineEnd::None};
    const std::string_view text = window.substr(0, stop);
    if (window[stop] == '\n') return {text, stop + 1, LineEnd::Lf};
    if (window.substr(stop + 1).starts_with('\n')) return {text, stop + 2, LineEnd::CrLf};
    return {text, stop + 1, LineEnd::Cr};
  }
}

std::string_view PassageReader::PeekPassage() {
  while (reader_.window().size() < kLookAhead && reader_.More()) continue;
  const std::string_view window = reader_.window();
  for (std::size_t at = 0; (at = window.find('%', at + 1)) != std::string_view::npos;)
    if (IsLineEnd(window[at - 1]) && (at + 1 == window.size() || window[at + 1] == '%'))
      return window.substr(0, at);
  const bool open = window.ends_with('\r') && window.size() > 1 && !reader_.AtEnd();
  return window.substr(0, window.size() - (open ? 1 : 0));
}

void PassageReader::Skip(std::string_view passage) {
  if (!passage.empty()) beginsLine_ = IsLineEnd(passage.back());
  reader_.Skip(passage.size());
}

void PassageReader::ReturnTo(std::uint64_t position) {
  reader_.ReturnTo(position);
  beginsLine_ = true;
}

}  // namespace tessary
