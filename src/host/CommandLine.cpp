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

}  // namespace tessary
