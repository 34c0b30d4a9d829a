// Parameter files for Ghostscript versions that read their syntax differently.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessary {

/// The parameter file `text` as the given version has to read it; the text itself where nothing differs.
///
/// From version 9 on: a switch with a text value is quoted as a whole (`-sName#"value"` would make the quotes
/// part of the value) and joined with "=" (a "=" in the value would be taken for the joiner before the "#");
/// any other token that holds a blank is quoted, so that a setting cannot add switches; a double quote inside
/// becomes `\"`; a "%" in the name of an output file is doubled unless it is the page pattern "%08d" before the
/// extension (others would be read as patterns too); and `.setpdfwrite`, which is gone, is dropped together
/// with its "-c".
std::string TranslateParameters(std::string_view text, std::int32_t majorVersion);

}  // namespace tessary
