#include "host/posix/Terminal.h"

#include <algorithm>
#include <sys/ioctl.h>
#include <unistd.h>

#include "host/CodePage.h"
#include "host/posix/PosixFile.h"

namespace tessary {

namespace {

constexpr std::size_t kUsualWidth = 80;
/// The letters of East Asia begin here; they take two columns.
constexpr unsigned char kFirstWideLead = 0xE1;

/// True if the two characters are one line end: CR LF, or LF CR.
bool IsPair(unsigned char one, unsigned char other) {
  return (one == '\r' && other == '\n') || (one == '\n' && other == '\r');
}

std::string Printable(std::string_view text) {
  const std::string valid = DecodeText(CodePage::Utf8, text);
  std::string printable;
  for (std::size_t i = 0; i < valid.size(); ++i) {
    const auto at = [&](std::size_t k) { return static_cast<unsigned char>(k < valid.size() ? valid[k] : 0); };
    const bool c1 = at(i) == 0xC2 && at(i + 1) < 0xA0;  // U+0080 to U+009F, two bytes
    if (at(i) == '\r' || at(i) == '\n') {
      if (IsPair(at(i), at(i + 1))) ++i;
      printable += '\n';
      continue;
    }
    if (c1) ++i;
    const bool control = c1 || at(i) == 0x7F || (at(i) < 0x20 && at(i) != '\t');
    printable += control ? '?' : valid[i];
  }
  return printable;
}

std::size_t ColumnsOf(unsigned char lead) {
  if ((lead & 0xC0) == 0x80) return 0;  // within a character
  return lead >= kFirstWideLead ? 2 : 1;
}

std::size_t Columns(std::string_view text) {
  std::size_t columns = 0;
  for (const char byte : text) columns += ColumnsOf(static_cast<unsigned char>(byte));
  return columns;
}

/// The beginning of `text` that fits into `width` columns.
std::string Cut(const std::string& text, std::size_t width) {
  std::size_t columns = 0, end = 0;
  for (; end < text.size(); ++end)
    if ((columns += ColumnsOf(static_cast<unsigned char>(text[end]))) > width) break;
  return text.substr(0, end);
}

std::size_t Width() {
  winsize size{};
  const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return known ? size.ws_col : kUsualWidth;
}

}  // namespace

void Terminal::Say(std::string_view text) {
  EraseLine();
  WriteAll(STDERR_FILENO, Printable(text) + '\n');
}

bool Terminal::ShowLine(const std::string& text) {
  if (isatty(STDERR_FILENO) == 0) return false;
  std::string line = Printable(text);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\n' || c == '\t'; }, ' ');
  line = Cut(line, Width() - 1);  // a full line would wrap
  if (line == line_) return true;
  EraseLine();
  WriteAll(STDERR_FILENO, line);
  line_ = line;
  return true;
}

void Terminal::EraseLine() {
  if (line_.empty()) return;
  WriteAll(STDERR_FILENO, '\r' + std::string(Columns(line_), ' ') + '\r');
  line_.clear();
}

}  // namespace tessary
