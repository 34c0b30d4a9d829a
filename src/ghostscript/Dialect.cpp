#include "ghostscript/Dialect.h"

#include "system/Conversions.h"

namespace tessary {

namespace {

constexpr std::int32_t kFirstOtherVersion = 9;
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kPagePattern = "%08d";

bool IsQuoted(std::string_view token) {
  return token.size() >= 2 && token.front() == '"' && token.back() == '"';
}

std::string_view Unquoted(std::string_view token) {
  return IsQuoted(token) ? token.substr(1, token.size() - 2) : token;
}

std::string Quoted(std::string_view token) { return '"' + ReplaceAll(token, "\"", "\\\"") + '"'; }

/// Doubles every "%" but that of the page pattern.
std::string EscapePercents(std::string_view path) {
  std::string escaped;
  for (std::size_t i = 0; i < path.size(); ++i) {
    escaped += path[i];
    if (path[i] == '%' && !path.substr(i).starts_with(kPagePattern)) escaped += '%';
  }
  return escaped;
}

/// One token of the file; empty for one that is dropped.
std::string TranslateToken(std::string_view token) {
  if (token == "-c" || token == ".setpdfwrite") return {};
  if (IsQuoted(token)) return Quoted(Unquoted(token));
  const std::size_t joiner = token.find('#');
  if (!token.starts_with("-s") || joiner == std::string_view::npos) return std::string(token);
  const std::string_view name = token.substr(0, joiner + 1), value = Unquoted(token.substr(joiner + 1));
  return Quoted(std::string(name).append(name == "-sOutputFile#" ? EscapePercents(value) : std::string(value)));
}

}  // namespace

std::string TranslateParameters(std::string_view text, std::int32_t majorVersion) {
  if (majorVersion < kFirstOtherVersion) return std::string(text);
  std::string translated;
  while (!text.empty()) {
    const std::size_t end = text.find(kLineEnd);
    const std::string token = TranslateToken(text.substr(0, end));
    if (!token.empty()) translated.append(token).append(kLineEnd);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + kLineEnd.size());
  }
  return translated;
}

}  // namespace tessary
