#include "monitor/Lines.h"

#include <algorithm>
#include <cstring>

namespace tessary {

namespace {

/// True for a byte that text does not hold. Without branches, so that many bytes are tested at once.
constexpr bool IsOdd(unsigned char c) {
  return static_cast<bool>(((c < ' ') & (c != '\t') & (c != '\n') & (c != '\f') & (c != '\r')) | (c > '~'));
}

const char* FindOdd(const char* from, const char* end) {
  constexpr std::ptrdiff_t kStep = 256;
  for (; end - from >= kStep; from += kStep) {
    unsigned char odd = 0;
    for (std::ptrdiff_t i = 0; i < kStep; ++i) odd |= IsOdd(static_cast<unsigned char>(from[i]));
    if (odd) break;
  }
  return std::find_if(from, end, [](char c) { return IsOdd(static_cast<unsigned char>(c)); });
}

const char* FindByte(const char* from, const char* end, char byte) {
  const void* found = std::memchr(from, byte, static_cast<std::size_t>(end - from));
  return found ? static_cast<const char*>(found) : end;
}

std::string_view Between(const char* from, const char* to) {
  return {from, static_cast<std::size_t>(to - from)};
}

}  // namespace

Line LineReader::Peek() {
  for (bool more = true;;) {
    const std::string_view window = reader_.window();
    const char* const from = window.data();
    const char* const end = from + window.size();
    if (lf_ < from) lf_ = FindByte(from, end, '\n');
    if (cr_ < from) cr_ = FindByte(from, end, '\r');
    const char* const stop = std::min(lf_, cr_);
    // A CR that is the last byte at hand may have its LF behind it.
    const bool open = stop == end || (stop == cr_ && stop + 1 == end);
    if (open && more) {
      more = More();
      continue;
    }
    if (begins_) comment_ = window.starts_with('%');
    Line line{Between(from, stop), Between(from, stop), LineEnd::None, begins_, true, comment_};
    if (open && !reader_.AtEnd()) {
      line.ends = false;
    } else if (stop != end) {
      const bool pair = stop == cr_ && lf_ == stop + 1 && lf_ != end;
      line.end = pair ? LineEnd::CrLf : stop == cr_ ? LineEnd::Cr : LineEnd::Lf;
      line.raw = Between(from, stop + (pair ? 2 : 1));
    }
    return line;
  }
}

void LineReader::Skip(const Line& line) {
  begins_ = line.ends;
  reader_.Skip(line.raw.size());
}

bool LineReader::IsText(const Line& line) {
  const char* const from = line.text.data();
  const char* const end = from + line.text.size();
  if (odd_ < from) odd_ = FindOdd(from, from + reader_.window().size());
  if (odd_ >= end) return true;
  return line.comment && std::all_of(odd_, end, [](char c) {
           return (static_cast<unsigned char>(c) & 0x80) != 0 || !IsOdd(static_cast<unsigned char>(c));
         });
}

void LineReader::ReturnTo(std::uint64_t position) {
  reader_.ReturnTo(position);
  lf_ = cr_ = odd_ = nullptr;
  begins_ = true;
}

bool LineReader::More() {
  lf_ = cr_ = odd_ = nullptr;
  return reader_.More();
}

}  // namespace tessary
