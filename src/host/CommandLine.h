// Command lines as texts, for every host that builds one: the quoting of `name=value` parameters, and the
// placeholders of commands that people write.
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

/// `text` with every "%1" replaced by the first of `values`, then every "%2" by the second, and on: a later
/// placeholder is seen in an earlier value too. "%10" is the first value and a 0.
std::string FillPlaceholders(std::string text, const std::vector<std::string>& values);

}  // namespace tessary
