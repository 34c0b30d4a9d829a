#include "postscript/DocumentInformation.h"

#include <algorithm>
#include <utility>

#include "host/CodePage.h"
#include "postscript/PostScriptHeader.h"
#include "system/Conversions.h"
#include "system/modCustom.h"

namespace tessary {

namespace {

/// The most bytes of a PostScript string. Ghostscript takes more, in a time that grows with their square.
constexpr std::size_t kMostBytes = 65535;

/// Comments of a job are cut at some 250 bytes.
constexpr std::size_t kMostInComment = 200;

/// True for the characters that have one byte in Windows-1252 and the same in the documents' own 8-bit code
/// (PDFDocEncoding). Quotes, dashes and the euro sign stand elsewhere there.
bool IsSameInDocuments(char16_t unit) {
  return unit == '\t' || (unit >= 0x20 && unit < 0x7F) || (unit > 0xA0 && unit <= 0xFF && unit != 0xAD);
}

/// True for what a comment of the job says just as well: escape sequences are read in it, and its letters are
/// those of nobody knows which code.
bool IsSameInComments(const std::u16string& units) {
  return units.size() <= kMostInComment && std::all_of(units.begin(), units.end(), [](char16_t unit) {
           return unit >= 0x20 && unit < 0x7F && unit != '\\';
         });
}

/// 16 bits a character, the most significant byte first, with the mark of that order in front.
std::string UnicodeLiteral(std::u16string units) {
  units.resize(std::min(units.size(), kMostBytes / 2 - 1));
  if ((units.back() & 0xFC00) == 0xD800) units.pop_back();
  std::string literal = "(\\376\\377";
  for (const char16_t unit : units) {
    literal += OctalEscape(static_cast<unsigned char>(unit >> 8));
    literal += OctalEscape(static_cast<unsigned char>(unit & 0xFF));
  }
  return literal += ')';
}

void AddEntry(DocumentInformation& information, const char* name, const std::string& value) {
  if (value.empty()) return;
  const std::string text = ReplaceAll(DecodeText(CodePage::Utf8, value), "\r", "");
  const std::u16string units = ToUtf16(text);
  const bool isPlain = std::all_of(units.begin(), units.end(), IsSameInDocuments);
  const std::string bytes = isPlain ? EncodeText(CodePage::Windows1252, text).substr(0, kMostBytes) : "";
  const std::string literal = isPlain ? EscapePostScriptBytes(bytes) : UnicodeLiteral(units);
  information.entries.append(name).append(literal).append("\r\n");
  information.isUnicode = information.isUnicode || !isPlain;
  information.needsLastWord = information.needsLastWord || !IsSameInComments(units);
}

}  // namespace

DocumentInformation ReadDocumentInformation(Dictionary& settings) {
  DocumentInformation information;
  AddEntry(information, "/CreationDate ", settings.Text("creationdate"));
  AddEntry(information, "/ModDate ", settings.Text("moddate"));
  AddEntry(information, "/Creator ", settings.Text("creator"));
  AddEntry(information, "/Producer ", GetProducerText());
  AddEntry(information, "/Title ", settings.Text("title"));
  AddEntry(information, "/Subject ", settings.Text("subject"));
  AddEntry(information, "/Keywords ", settings.Text("keywords"));
  AddEntry(information, "/Author ", settings.Text("author"));
  // The job keeps its comment about its creator.
  if (!settings.Text("creator").empty()) information.needsLastWord = true;
  return information;
}

}  // namespace tessary
