// The quoting of `name=value` parameters, shared by every host that builds a command line from arguments.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessary {

/// `argument` as it has to stand in a command line so that its value reads back: in `name=value` a value that
/// is empty, begins or ends with a blank, or holds a blank, a comma or a double quote goes into double quotes
/// and its double quotes are doubled. Blanks at the ends of a value are lost when it is read. An argument
/// without "=" stays as it is, since names cannot be quoted.
std::string QuoteParameter(std::string_view argument);

/// The arguments, quoted, with a blank between them; empty arguments are left out.
std::string JoinParameters(const std::vector<std::string>& arguments);

}  // namespace tessary
