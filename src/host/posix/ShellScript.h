// Commands that people write, as scripts for the shell.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessary {

/// The script for `sh -c` that does what `command` says. Each placeholder, "%1" for the first of `count` values
/// (at most nine) and on, becomes a reference to the positional parameter of its number, in the form that the
/// quoting around it asks for: `"$1"` outside of quotes, `${1}` in double quotes, `'"$1"'` in single quotes. So
/// the text of the script holds no value, and a value is one word that the shell never reads as a command,
/// unless the command itself calculates with it or hands it to `eval` or to another interpreter.
///
/// A backslash or a `$` in front of a placeholder stands for itself where it would take the reference for its
/// own, and is dropped where the shell would drop it. Comments stay as they are. Here-documents, which no
/// command of one line can have, are not known.
std::string ShellScript(std::string_view command, std::size_t count);

}  // namespace tessary
