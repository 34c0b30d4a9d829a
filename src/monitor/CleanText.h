// Clean text: what can be read line by line and written with other line ends without harm.
#pragma once

#include <string_view>

#include "monitor/Passages.h"
#include "system/Blocks.h"

namespace tessary {

/// True if `text` holds only printable ASCII and white space, and in its comment lines, those
/// that begin with "%", letters of any other code page as well. `beginsLine` tells if its first line is whole.
bool IsCleanText(std::string_view text, bool beginsLine);

/// The first line end in `text`.
LineEnd FirstLineEnd(std::string_view text);

/// True if all line ends in `text` are of the one kind. `text` must not be cut between CR and LF.
bool HasOnlyLineEnds(std::string_view text, LineEnd kind);

/// Writes `text`, whose line ends are all of the one kind, with CR LF in their place.
void WriteLines(BlockWriter& writer, std::string_view text, LineEnd kind);

}  // namespace tessary
