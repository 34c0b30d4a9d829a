#include "host/posix/UserDirs.h"

#include <algorithm>

#include "host/posix/UserFolders.h"

namespace tessary {

namespace {

void SkipBlanks(std::string_view& line) {
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
}

/// Takes `start` off the front of `line`, if it stands there.
bool Take(std::string_view& line, std::string_view start) {
  if (!line.starts_with(start)) return false;
  line.remove_prefix(start.size());
  return true;
}

/// The quoted text whose opening quote was taken, up to its closing one; a "\" stands before a letter that
/// means itself.
std::string Unquote(std::string_view line) {
  std::string text;
  for (std::size_t i = 0; i < line.size() && line[i] != '"'; ++i) {
    if (line[i] == '\\' && i + 1 < line.size()) ++i;
    text += line[i];
  }
  return text;
}

}  // namespace

std::string FindUserDir(std::string_view text, std::string_view key, const std::string& home) {
  std::string found;
  while (!text.empty()) {
    std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    SkipBlanks(line);
    if (!Take(line, key)) continue;
    SkipBlanks(line);
    if (!Take(line, "=")) continue;
    SkipBlanks(line);
    if (!Take(line, "\"")) continue;
    const bool belowHome = Take(line, "$HOME/");
    if (!belowHome && !line.starts_with('/')) continue;
    found = WithoutSlashes(belowHome ? Below(home, Unquote(line)) : Unquote(line));
  }
  return found;
}

}  // namespace tessary
