#include "postscript/modPostScript.h"

#include <algorithm>
#include <string_view>

#include "system/Conversions.h"
#include "system/FileHelpers.h"

namespace tessary {

namespace {

constexpr std::size_t kMostBytes = 1024 * 1024;
constexpr int kMostLines = 1000;

struct Comment {
  std::string_view prefix;
  const char* property;
};

constexpr Comment kComments[] = {
    {"%%for:", "author"}, {"%%title:", "title"}, {"%%creationdate:", "creationdate"}};

void TakeProperty(std::string_view piece, Dictionary& properties) {
  for (const auto& [prefix, property] : kComments) {
    if (ToLower(piece.substr(0, prefix.size())) != prefix) continue;
    properties.Set(property, TrimBlanks(DecodeText(CodePage::Utf8, piece.substr(prefix.size()))));
    return;
  }
}

}  // namespace

Dictionary GetDocumentProperties(Run& run, const std::string& postScriptFile) {
  const std::string head = ReadHead(run, postScriptFile, kMostBytes);
  Dictionary properties;
  std::string_view rest = head;
  for (int lines = 0; lines < kMostLines && !rest.empty();) {
    const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
    TakeProperty(rest.substr(0, end), properties);
    // A line ends at CR or CR LF. A bare LF parts comments within a line and ends none.
    if (rest.substr(end).starts_with('\r')) ++lines;
    rest.remove_prefix(rest.substr(end).starts_with("\r\n") ? end + 2 : std::min(end + 1, rest.size()));
  }
  return properties;
}

}  // namespace tessary
