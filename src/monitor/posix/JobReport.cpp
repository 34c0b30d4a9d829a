#include "monitor/posix/JobReport.h"

#include <algorithm>
#include <ostream>

#include "host/CodePage.h"
#include "system/Conversions.h"

namespace tessary {

namespace {

/// The server reads lines of up to 2 KB and takes the rest of a longer one for a line of its own.
constexpr std::size_t kMaxLine = 1000;

}  // namespace

std::string CutText(std::string_view text, std::size_t size) {
  std::string cut = DecodeText(CodePage::Utf8, text);
  if (cut.size() <= size) return cut;
  const auto isWithin = [&](std::size_t at) { return (static_cast<unsigned char>(cut[at]) & 0xC0) == 0x80; };
  while (size > 0 && isWithin(size)) --size;
  cut.resize(size);
  return cut;
}

std::string ReportLines(std::string_view prefix, std::string_view text) {
  std::string lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string line = OneLine(CutText(text.substr(0, end), kMaxLine));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.empty()) continue;
    lines.append(prefix) += ' ' + line + '\n';
  }
  return lines;
}

void JobReport::Say(std::string_view prefix, std::string_view text) {
  output_ << ReportLines(prefix, text) << std::flush;
}

}  // namespace tessary
