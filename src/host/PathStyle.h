// How paths of this machine are written. A value, so that the logic never asks where it runs.
#pragma once

#include <string>

namespace tessary {

struct PathStyle {
  char separator = '/';      ///< the one that this program writes
  bool acceptsBoth = true;   ///< '\' and '/' both part folders in what it reads
  bool ignoresCase = false;  ///< names that differ in the case of letters are one name
  bool hasDrives = false;    ///< a path begins with a drive, "C:", or with two separators and a server

  static PathStyle Windows() { return {'\\', false, true, true}; }
  static PathStyle Posix() { return {}; }

  [[nodiscard]] bool IsSeparator(char c) const {
    return c == separator || (acceptsBoth && (c == '\\' || c == '/'));
  }

  /// `path` as it comes from a person or a settings file, in the machine's own form: where both separators are
  /// accepted the foreign one is replaced, otherwise nothing changes.
  [[nodiscard]] std::string Native(std::string path) const {
    if (acceptsBoth)
      for (char& c : path)
        if (IsSeparator(c)) c = separator;
    return path;
  }
};

}  // namespace tessary
