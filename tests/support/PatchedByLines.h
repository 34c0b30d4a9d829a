// The patched copy of a job as its rules tell it, line by line over the whole text: what PatchPostScriptFile is
// held against.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace tessary {

/// The lines of `text` without their line ends. A line ends at CR or CR LF.
inline std::vector<std::string> JobLines(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\r', at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
  }
  return lines;
}

/// The copy for the title "T" and the author "A", with `underlay` behind each page line.
inline std::string PatchedByLines(const std::string& text, const std::string& underlay) {
  std::string copy;
  bool pageHasBegun = false;
  for (const std::string& line : JobLines(text)) {
    const bool page = line.starts_with("%%Page:");
    pageHasBegun = pageHasBegun || page;
    if (!pageHasBegun && line.starts_with("%%Title:"))
      copy += "%%Title: T";
    else if (!pageHasBegun && line.starts_with("%%For:"))
      copy += "%%For: A";
    else
      copy += line;
    copy += "\r\n";
    if (page) copy += underlay;
  }
  return copy;
}

}  // namespace tessary
