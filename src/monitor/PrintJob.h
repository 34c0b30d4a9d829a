// One document on its way from a file to `gui`.
#pragma once

#include <string>

#include "monitor/PrintArguments.h"
#include "system/Run.h"

namespace tessary {

/// Spools `file` ("-": the standard input) into the temporary folder, has `gui` print it and waits for its end.
/// Returns an empty text when it became a PDF, otherwise why not, for people. The spooled job is removed unless
/// `gui` failed with it: then it stays, and the text says where.
std::string PrintFile(Run& run, const PrintArguments& arguments, const std::string& file);

}  // namespace tessary
