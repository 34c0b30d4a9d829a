#include "host/CommandLine.h"

namespace tessary {

namespace {

bool NeedsQuotes(std::string_view value) {
  return value.empty() || value.find_first_of(" ,\"") != std::string_view::npos;
}

}  // namespace

std::string QuoteParameter(std::string_view argument) {
  const std::size_t equals = argument.find('=');
  if (equals == std::string_view::npos || !NeedsQuotes(argument.substr(equals + 1)))
    return std::string(argument);

  std::string quoted(argument.substr(0, equals + 1));
  quoted += '"';
  for (const char c : argument.substr(equals + 1)) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  quoted += '"';
  return quoted;
}

std::string JoinParameters(const std::vector<std::string>& arguments) {
  std::string line;
  for (const std::string& argument : arguments) {
    if (argument.empty()) continue;
    if (!line.empty()) line += ' ';
    line += QuoteParameter(argument);
  }
  return line;
}

std::string FillPlaceholders(std::string text, const std::vector<std::string>& values) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::string placeholder = "%" + std::to_string(i + 1);
    for (std::size_t at = 0; (at = text.find(placeholder, at)) != std::string::npos; at += values[i].size())
      text.replace(at, placeholder.size(), values[i]);
  }
  return text;
}

}  // namespace tessary
