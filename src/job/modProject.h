// The command line: `name=value` parameters, parted by blanks or commas.
#pragma once

#include <string>
#include <string_view>

#include "config/Dictionary.h"

namespace tessary {

/// The parameters of a raw command line, in their order. A name may begin with one "/" or "-", which is
/// dropped; a value in double quotes may hold anything, a quote in it is doubled; a name without "=" has an
/// empty value. Names in quotes are not supported: the quotes give an empty name, and what stands between them
/// is read on its own. Raises errors::kKeyExists for a name that comes twice, two empty ones included.
Dictionary ParseCommandLine(std::string_view commandLine);

/// The text of a `msg` parameter: "\t" is a TAB, "\r" code 10 and "\n" code 13 - the two are swapped, and
/// callers rely on it -, any other character behind a "\" stands for itself.
std::string UnescapeMessage(std::string_view text);

}  // namespace tessary
