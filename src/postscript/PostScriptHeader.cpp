#include "postscript/PostScriptHeader.h"

#include <exception>

#include "postscript/DocumentInformation.h"
#include "postscript/modWatermark.h"
#include "system/Conversions.h"
#include "system/FileHelpers.h"

namespace tessary {

namespace {

std::string ZoomEntry(Dictionary& settings) {
  const std::string zoom = ToLower(TrimBlanks(settings.Text("zoom")));
  const double percent = LeadingNumber(zoom);
  if (percent > 0) return "  /Page 1 /View [/XYZ null null " + FormatNumber(percent / 100) + "]\r\n";
  return zoom == "fitall" ? "  /Page 1 /View [/Fit]\r\n" : "";
}

std::string View(Dictionary& settings) {
  const bool thumbnails = ToLower(settings.Text("usethumbs")) == "yes";
  const std::string entries = (thumbnails ? "  /PageMode /UseThumbs\r\n" : "") + ZoomEntry(settings);
  return entries.empty() ? "" : "[ \r\n" + entries + "  /DOCVIEW\r\npdfmark\r\n";
}

std::string InformationMark(const DocumentInformation& information) {
  return "[" + information.entries + "/DOCINFO pdfmark";
}

/// The end of a page gives the information, and then does what it did before: at the end of Ghostscript's work
/// as well, which counts as one, or just once behind the first page, when a PDF that is drawn has given its
/// own.
std::string GiveAtEndOfPage(const DocumentInformation& information, bool readsPdf) {
  const std::string mark = InformationMark(information);
  return "/EndPage [ /dup load " +
         (readsPdf ? "0 /eq load [[true] {dup 0 get {0 false put " + mark +
                         "} {pop} ifelse} bind /exec load] cvx /if load\r\n"
                   : "2 /eq load {" + mark + "} bind /if load\r\n") +
         "currentpagedevice /EndPage get /exec load ] cvx\r\n";
}

/// Lines that stand behind everything else and only where they are needed.
///
/// Ghostscript 10 derives a second record of the document information, in XML, and spoils what lies beyond
/// U+07FF in it: readers that prefer that record show question marks, and a surrogate pair damages the whole
/// file. And the information is given once more where the documents themselves say otherwise.
std::string LastWord(const DocumentInformation& information, bool isMerge, bool readsPdf) {
  std::string entries = information.isUnicode ? "/OmitXMP true\r\n" : "";
  if (information.needsLastWord || isMerge || readsPdf) entries += GiveAtEndOfPage(information, readsPdf);
  return entries.empty() ? "" : "<<\r\n" + entries + ">> setpagedevice\r\n";
}

}  // namespace

bool WritePostScriptHeader(Run& run, const std::string& headerFile, Dictionary& settings, bool includeStamp,
                           bool readsPdf) {
  try {
    const bool stamped = includeStamp && IsStampEnabled(settings);
    const DocumentInformation information = ReadDocumentInformation(settings);
    std::string text = stamped ? GetWatermarkPostScript(run, settings) : "";
    text += View(settings) + "% Document information\r\n" + InformationMark(information) + "\r\n";
    if (stamped) text += GetWatermarkShelter(settings);
    // Without a stamp it is documents that are joined, and the last of them would give its own title.
    text += LastWord(information, !includeStamp, readsPdf);
    WriteTextFile(run, headerFile, text);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

std::string OctalEscape(unsigned char byte) {
  return {'\\', static_cast<char>('0' + (byte >> 6)), static_cast<char>('0' + ((byte >> 3) & 7)),
          static_cast<char>('0' + (byte & 7))};
}

std::string EscapePostScriptBytes(std::string_view bytes) {
  static constexpr std::string_view kSpecial = "\\()[]{}";  // brackets and braces need none, but have it
  std::string literal = "(";
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\r') continue;
    if (c == '\n')
      literal += ") (";
    else if (byte > 127)
      literal += OctalEscape(byte);
    else if (kSpecial.find(c) != std::string_view::npos)
      (literal += '\\') += c;
    else
      literal += c;
  }
  return literal += ')';
}

std::string EscapePostScriptString(const std::string& value) {
  return EscapePostScriptBytes(EncodeText(CodePage::Windows1252, value));
}

std::string FormatNumber(double number) {
  std::string text = DecimalText(number);
  const std::size_t sign = text.starts_with('-') ? 1 : 0;
  if (text.compare(sign, 2, "0.") == 0) text.erase(sign, 1);
  return text;
}

}  // namespace tessary
