#include "postscript/LineEnds.h"

namespace tessary {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
/// Bytes that are counted in one go, with counters of one byte each. Looking for each line end in turn takes
/// twice as long.
constexpr std::size_t kStep = 240;

}  // namespace

LineEndCount CountLineEnds(std::string_view text) {
  LineEndCount ends;
  std::size_t at = 0;
  for (; text.size() - at > kStep; at += kStep) {
    const char* const step = text.data() + at;
    unsigned char all = 0, pairs = 0;
    for (std::size_t i = 0; i < kStep; ++i) {
      const bool end = step[i] == '\r';
      all = static_cast<unsigned char>(all + end);
      pairs = static_cast<unsigned char>(pairs + (end & (step[i + 1] == '\n')));
    }
    ends.all += all;
    ends.pairs += pairs;
  }
  for (; at < text.size(); ++at) {
    ends.all += text[at] == '\r';
    ends.pairs += text.substr(at, kLineEnd.size()) == kLineEnd;
  }
  return ends;
}

void WriteWithCrLf(BlockWriter& writer, std::string_view text, const LineEndCount& ends) {
  if (ends.all == ends.pairs) return writer.Append(text);
  for (std::size_t at = 0; (at = text.find('\r')) != std::string_view::npos;) {
    writer.Append(text.substr(0, at));
    writer.Append(kLineEnd);
    text.remove_prefix(text.substr(at).starts_with(kLineEnd) ? at + kLineEnd.size() : at + 1);
  }
  writer.Append(text);
}

}  // namespace tessary
