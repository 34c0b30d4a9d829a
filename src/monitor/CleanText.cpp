#include "monitor/CleanText.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace tessary {

namespace {

constexpr std::size_t kStep = 256;      ///< bytes that are tested before anybody looks at the result
constexpr std::size_t kShortLine = 64;  ///< lines up to this length are copied in one step of that length
constexpr std::size_t kPortion = kReserveSize / 4;

/// True for a byte that is neither printable ASCII nor white space (codes 9 to 13).
constexpr bool IsOdd(char c) {
  return static_cast<unsigned char>(c - ' ') > '~' - ' ' && static_cast<unsigned char>(c - '\t') > '\r' - '\t';
}

/// The position of the first odd byte from `at` on; the size of the text if there is none.
std::size_t FindOdd(std::string_view text, std::size_t at) {
  for (; text.size() - at >= kStep; at += kStep) {
    unsigned char odd = 0;
    for (std::size_t i = 0; i < kStep; ++i) odd |= IsOdd(text[at + i]);
    if (odd) break;
  }
  while (at < text.size() && !IsOdd(text[at])) ++at;
  return at;
}

bool HasOnlyPairs(std::string_view text) {
  if (text.empty()) return true;
  unsigned char alone = text.front() == '\n' || text.back() == '\r';
  for (std::size_t i = 0; i + 1 < text.size(); ++i) alone |= (text[i] == '\r') != (text[i + 1] == '\n');
  return !alone;
}

/// Writes `text` to `out` with CR LF for each `end`; returns where that ends. May touch kShortLine bytes
/// behind.
char* PutLines(char* out, std::string_view text, char end) {
  const char* from = text.data();
  const char* const stop = from + text.size();
  while (true) {
    const auto left = static_cast<std::size_t>(stop - from);
    const auto* found = static_cast<const char*>(std::memchr(from, end, left));
    const std::size_t length = found ? static_cast<std::size_t>(found - from) : left;
    if (length <= kShortLine && left >= kShortLine)
      std::memcpy(out, from, kShortLine);
    else
      std::memcpy(out, from, length);
    out += length;
    if (!found) return out;
    *out++ = '\r';
    *out++ = '\n';
    from = found + 1;
  }
}

}  // namespace

bool IsCleanText(std::string_view text, bool beginsLine) {
  for (std::size_t at = 0; (at = FindOdd(text, at)) < text.size(); ++at) {
    if (static_cast<unsigned char>(text[at]) < 0x80) return false;
    const std::size_t before = text.find_last_of("\r\n", at);
    const bool whole = beginsLine || before != std::string_view::npos;
    if (!whole || text[before + 1] != '%') return false;
  }
  return true;
}

LineEnd FirstLineEnd(std::string_view text) {
  const std::size_t lf = text.find('\n'), cr = text.find('\r');
  if (lf == cr) return LineEnd::None;
  if (lf < cr) return LineEnd::Lf;
  return lf == cr + 1 ? LineEnd::CrLf : LineEnd::Cr;
}

bool HasOnlyLineEnds(std::string_view text, LineEnd kind) {
  switch (kind) {
    case LineEnd::Lf:
      return text.find('\r') == std::string_view::npos;
    case LineEnd::Cr:
      return text.find('\n') == std::string_view::npos;
    case LineEnd::CrLf:
      return HasOnlyPairs(text);
    case LineEnd::None:
      break;
  }
  return FirstLineEnd(text) == LineEnd::None;
}

void WriteLines(BlockWriter& writer, std::string_view text, LineEnd kind) {
  if (kind == LineEnd::CrLf || kind == LineEnd::None) return writer.Append(text);
  const char end = kind == LineEnd::Lf ? '\n' : '\r';
  for (; !text.empty(); text.remove_prefix(std::min(kPortion, text.size()))) {
    char* const start = writer.Reserve();
    writer.Commit(static_cast<std::size_t>(PutLines(start, text.substr(0, kPortion), end) - start));
  }
}

}  // namespace tessary
