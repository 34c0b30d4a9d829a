// The small PostScript file that Ghostscript reads ahead of a job: the stamp's program, the opening view and
// the document information. And how values are written in generated PostScript.
#pragma once

#include <string>
#include <string_view>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// Writes the header for a conversion with `settings` to `headerFile`, replacing an older one. The stamp stands
/// in it when `includeStamp` is set, as it is for the job itself and not for a merge, and the settings ask for
/// one. With `readsPdf` the job draws a PDF, whose own information must not win. False if anything fails;
/// nothing is raised.
bool WritePostScriptHeader(Run& run, const std::string& headerFile, Dictionary& settings, bool includeStamp,
                           bool readsPdf = false);

/// `value` as a PostScript string, parentheses included, in Windows-1252: "?" for a character that the page
/// lacks. CR is dropped, and at each LF the string ends and another begins, so that two lines are two objects.
std::string EscapePostScriptString(const std::string& value);

/// The same for bytes that are no text, such as a path in the machine's code page.
std::string EscapePostScriptBytes(std::string_view bytes);

/// `byte` within a PostScript string: a backslash and three octal digits.
std::string OctalEscape(unsigned char byte);

/// `number` with up to 15 significant digits, without zeros at the end or in front of the point: "-.5".
std::string FormatNumber(double number);

}  // namespace tessary
