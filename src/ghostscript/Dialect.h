// Parameter files for Ghostscript versions that read their syntax differently.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ghostscript/Additions.h"

namespace tessary {

/// The parameter file `text` as the given version has to read it; the text itself where nothing differs.
///
/// From version 9 on: a switch with a text value is quoted as a whole (`-sName#"value"` would make the quotes
/// part of the value) and joined with "=" (a "=" in the value would be taken for the joiner before the "#", and
/// a password would stand in the comment that Ghostscript writes into a PDF about its call); any other token
/// that holds a blank is quoted, so that a setting cannot add switches; a double quote inside becomes `\"`;
/// a "%" in the name of an output file is doubled unless it is the page pattern "%08d" before the extension
/// (others would be read as patterns too); and `.setpdfwrite`, which is gone, is dropped together with its
/// "-c". A run that reads a PDF gets the password; from version 10 on it stops at a PDF that it cannot read,
/// which would be left out without an error otherwise.
/// The additions come in: the readable files as switches at the head, the prelude behind "-f".
std::string TranslateParameters(std::string_view text, std::int32_t majorVersion,
                                const GhostscriptAdditions& additions = {});

}  // namespace tessary
