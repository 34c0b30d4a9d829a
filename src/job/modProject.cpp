#include "job/modProject.h"

#include <algorithm>

#include "system/Conversions.h"

namespace tessary {

namespace {

/// Takes the characters up to the first one of `stops` off `rest`.
std::string TakeUntil(std::string_view& rest, std::string_view stops) {
  const std::string taken(rest.substr(0, rest.find_first_of(stops)));
  rest.remove_prefix(taken.size());
  return taken;
}

/// Takes the characters up to the next single quote off `rest`, and the quote; a doubled quote stands for one.
std::string TakeQuoted(std::string_view& rest) {
  std::string taken;
  while (!rest.empty()) {
    const char c = rest.front();
    rest.remove_prefix(1);
    if (c == '"') {
      if (!rest.starts_with('"')) break;
      rest.remove_prefix(1);
    }
    taken += c;
  }
  return taken;
}

/// A name in quotes is read by the rule for values without stepping over its opening quote, which is thereby
/// the closing one: the name comes out empty.
std::string TakeName(std::string_view& rest) {
  std::string name = TrimBlanks(rest.starts_with('"') ? TakeQuoted(rest) : TakeUntil(rest, "=, "));
  if (name.starts_with('/') || name.starts_with('-')) name.erase(0, 1);
  return name;
}

std::string TakeValue(std::string_view& rest) {
  if (!rest.starts_with('=')) return {};
  rest.remove_prefix(1);
  if (!rest.starts_with('"')) return TakeUntil(rest, ", ");
  rest.remove_prefix(1);
  return TrimBlanks(TakeQuoted(rest));
}

}  // namespace

Dictionary ParseCommandLine(std::string_view commandLine) {
  Dictionary parameters;
  std::string_view rest = commandLine;
  for (;;) {
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    if (rest.empty()) return parameters;
    const std::string name = TakeName(rest);
    const std::string value = TakeValue(rest);
    if (rest.starts_with(',') || rest.starts_with(' ')) rest.remove_prefix(1);
    parameters.Add(name, value);
  }
}

std::string UnescapeMessage(std::string_view text) {
  std::string message;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      message += text[i];
      continue;
    }
    if (++i == text.size()) break;
    switch (text[i]) {
      case 't':
        message += '\t';
        break;
      case 'r':
        message += '\n';
        break;
      case 'n':
        message += '\r';
        break;
      default:
        message += text[i];
    }
  }
  return message;
}

}  // namespace tessary
