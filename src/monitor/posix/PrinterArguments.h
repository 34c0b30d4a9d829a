// The command line of tessary-printer.
#pragma once

#include <string>
#include <vector>

namespace tessary {

struct PrinterArguments {
  std::string command;  ///< "add", "remove", "list", "default" or "share"
  std::string name;     ///< of the printer; empty for "list"
  std::string location;
  std::string paper;                  ///< a page size; empty: the usual one
  bool makeDefault = false;           ///< of "add"
  bool on = false;                    ///< of "share"
  std::vector<std::string> networks;  ///< those that print without a proof of who they are
  bool help = false;
  std::string problem;  ///< why the call is wrong; empty when it is not
};

/// Options may stand anywhere before "--", with their value behind "=" or as the next argument.
PrinterArguments ParsePrinterArguments(const std::vector<std::string>& arguments);

}  // namespace tessary
