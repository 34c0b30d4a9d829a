#include "ghostscript/Dialect.h"

#include "system/Conversions.h"

namespace tessary {

namespace {

constexpr std::int32_t kFirstOtherVersion = 9;
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kPagePattern = "%08d.";
constexpr std::string_view kStartUp = "-c\r\n.setpdfwrite\r\n";

bool IsQuoted(std::string_view token) {
  return token.size() >= 2 && token.front() == '"' && token.back() == '"';
}

std::string_view Unquoted(std::string_view token) {
  return IsQuoted(token) ? token.substr(1, token.size() - 2) : token;
}

std::string Quoted(std::string_view token) { return '"' + ReplaceAll(token, "\"", "\\\"") + '"'; }

/// Doubles every "%" but that of a page pattern right before the extension.
std::string EscapePercents(std::string_view path) {
  const std::size_t pattern = path.rfind(kPagePattern);
  const bool isPattern = pattern != std::string_view::npos &&
                         path.find_first_of("./\\", pattern + kPagePattern.size()) == std::string_view::npos;
  std::string escaped = ReplaceAll(path.substr(0, isPattern ? pattern : path.size()), "%", "%%");
  return isPattern ? escaped.append(path.substr(pattern)) : escaped;
}

std::string TranslateToken(std::string_view token) {
  if (IsQuoted(token)) return Quoted(Unquoted(token));
  const std::size_t joiner = token.find('#');
  if (token.starts_with("-s") && joiner != std::string_view::npos) {
    const std::string name(token.substr(0, joiner));
    const std::string_view value = Unquoted(token.substr(joiner + 1));
    return Quoted(name + '=' + (name == "-sOutputFile" ? EscapePercents(value) : std::string(value)));
  }
  // A blank in a setting must not make two switches of one.
  return token.find_first_of(" \t\"") == std::string_view::npos ? std::string(token) : Quoted(token);
}

}  // namespace

std::string TranslateParameters(std::string_view text, std::int32_t majorVersion) {
  if (majorVersion < kFirstOtherVersion) return std::string(text);
  std::string translated;
  while (!text.empty()) {
    if (text.starts_with(kStartUp)) {
      text.remove_prefix(kStartUp.size());
      continue;
    }
    const std::size_t end = text.find(kLineEnd);
    translated.append(TranslateToken(text.substr(0, end))).append(kLineEnd);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + kLineEnd.size());
  }
  return translated;
}

}  // namespace tessary
