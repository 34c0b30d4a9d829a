#include "ghostscript/Dialect.h"

#include "system/Conversions.h"

namespace tessary {

namespace {

constexpr std::int32_t kFirstOtherVersion = 9, kFirstLenientPdfReader = 10;
constexpr std::size_t kMostPassword = 512;  // bytes; four times what any revision of the security counts
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kPagePattern = "%08d.";
constexpr std::string_view kStartUp = "-c\r\n.setpdfwrite\r\n";

bool IsQuoted(std::string_view token) {
  return token.size() >= 2 && token.front() == '"' && token.back() == '"';
}

std::string_view Unquoted(std::string_view token) {
  return IsQuoted(token) ? token.substr(1, token.size() - 2) : token;
}

/// A backslash at the end would make a letter of the closing quote. A second one, which takes the line end
/// behind it away, keeps them apart.
std::string Quoted(std::string_view token) {
  std::string quoted = '"' + ReplaceAll(token, "\"", "\\\"");
  if (token.ends_with('\\')) quoted.append("\\").append(kLineEnd);
  return quoted + '"';
}

/// Doubles every "%" but that of a page pattern right before the extension.
std::string EscapePercents(std::string_view path) {
  const std::size_t pattern = path.rfind(kPagePattern);
  const bool isPattern = pattern != std::string_view::npos &&
                         path.find_first_of("./\\", pattern + kPagePattern.size()) == std::string_view::npos;
  std::string escaped = ReplaceAll(path.substr(0, isPattern ? pattern : path.size()), "%", "%%");
  return isPattern ? escaped.append(path.substr(pattern)) : escaped;
}

/// True where one of the input files is a PDF.
bool ReadsPdf(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = text.find(kLineEnd);
    const std::string_view token = text.substr(0, end);
    if (IsQuoted(token) && ToLower(Unquoted(token)).ends_with(".pdf")) return true;
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + kLineEnd.size());
  }
  return false;
}

/// A password that is too long for a switch would be told in Ghostscript's complaint.
std::string_view CutPassword(std::string_view password) {
  std::size_t end = kMostPassword;
  if (password.size() <= end) return password;
  while (end > 0 && (static_cast<unsigned char>(password[end]) & 0xC0) == 0x80) --end;
  return password.substr(0, end);
}

/// `-sName=value`, quoted as a whole.
std::string TextSwitch(std::string_view name, std::string_view value) {
  // Passwords have no quotes around them: those that are there belong to them.
  const bool isPassword = name.ends_with("Password");
  if (!isPassword) value = Unquoted(value);
  const std::string text(isPassword ? CutPassword(value) : value);
  return Quoted("-s" + std::string(name) + '=' + (name == "OutputFile" ? EscapePercents(text) : text));
}

std::string TranslateToken(std::string_view token) {
  if (IsQuoted(token)) return Quoted(Unquoted(token));
  const std::size_t joiner = token.find('#');
  if (token.starts_with("-s") && joiner != std::string_view::npos)
    return TextSwitch(token.substr(2, joiner - 2), token.substr(joiner + 1));
  // A blank in a setting must not make two switches of one, nor a backslash one of two.
  return token.find_first_of(" \t\"\\") == std::string_view::npos ? std::string(token) : Quoted(token);
}

/// The switches that a run needs in front to read PDFs.
std::string PdfSwitches(std::int32_t majorVersion, std::string_view password) {
  std::string text;
  if (majorVersion >= kFirstLenientPdfReader) text.append("-dPDFSTOPONERROR").append(kLineEnd);
  if (!password.empty()) text.append(TextSwitch("PDFPassword", password)).append(kLineEnd);
  return text;
}

/// The switch takes a list of patterns, parted by ":" or ";", in which "*" stands for anything; there is no way
/// to escape one of them. The colon of a drive is none.
std::string PermitReading(std::string path) {
  for (std::size_t i = 2; i < path.size(); ++i)
    if (path[i] == ':' || path[i] == ';') path[i] = '*';
  return Quoted("--permit-file-read=" + path);
}

}  // namespace

std::string TranslateParameters(std::string_view text, std::int32_t majorVersion,
                                const GhostscriptAdditions& additions) {
  if (majorVersion < kFirstOtherVersion) return std::string(text);
  std::string translated = ReadsPdf(text) ? PdfSwitches(majorVersion, additions.pdfPassword) : std::string();
  for (const std::string& file : additions.readableFiles)
    translated.append(PermitReading(file)).append(kLineEnd);
  while (!text.empty()) {
    if (text.starts_with(kStartUp)) {
      text.remove_prefix(kStartUp.size());
      continue;
    }
    const std::size_t end = text.find(kLineEnd);
    const std::string_view token = text.substr(0, end);
    translated.append(TranslateToken(token)).append(kLineEnd);
    if (token == "-f" && !additions.prelude.empty())
      translated.append(Quoted(additions.prelude)).append(kLineEnd);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + kLineEnd.size());
  }
  return translated;
}

}  // namespace tessary
