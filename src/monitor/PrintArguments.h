// The command line of tessary-print.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessary {

struct PrintArguments {
  std::string printer = "PDF Printer";
  std::optional<std::string> title;  ///< nothing: each document is named after its file
  std::vector<std::pair<std::string, std::string>> settings;  ///< keys in lower case, in the order given
  std::vector<std::string> files;                             ///< "-" is the standard input
  bool help = false;
  std::string problem;  ///< why the call is wrong; empty when it is not
};

/// Options may stand anywhere before "--", with their value behind "=" or as the next argument.
PrintArguments ParsePrintArguments(const std::vector<std::string>& arguments);

}  // namespace tessary
