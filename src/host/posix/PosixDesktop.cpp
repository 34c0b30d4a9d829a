#include "host/posix/PosixDesktop.h"

#include <string_view>
#include <unistd.h>

#include "host/CodePage.h"
#include "host/posix/PosixFile.h"

namespace tessary {

namespace {

constexpr std::int32_t kButtonsMask = 15;

/// True if the two characters are one line end: CR LF, or LF CR.
bool IsPair(unsigned char one, unsigned char other) {
  return (one == '\r' && other == '\n') || (one == '\n' && other == '\r');
}

/// `text` for a terminal: with line feeds for line ends of all kinds, and with "?" for every other control
/// character, so that nothing in a document's name or in Ghostscript's words can steer the terminal.
std::string ForTerminal(std::string_view text) {
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

std::int32_t HarmlessAnswer(std::int32_t buttons) {
  switch (buttons) {
    case box::kRetryCancel:
    case box::kYesNoCancel:
      return box::kAnswerCancel;
    case box::kYesNo:
      return box::kAnswerNo;
    default:
      return box::kAnswerOk;
  }
}

}  // namespace

BoxAnswer PosixDesktop::ShowBox(const std::string& text, const std::string& caption, std::int32_t flags) {
  WriteAll(STDERR_FILENO, ForTerminal(caption + ": " + text) + '\n');
  return {HarmlessAnswer(flags & kButtonsMask), false};
}

Result<std::string> PosixDesktop::PickFile(const FilePicker&) {
  return Failure{failures::kCancelled, "There is no display to show a file picker on"};
}

}  // namespace tessary
