// Parameter files for Ghostscript versions that read their syntax differently.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessary {

/// The parameter file `text` as the given version has to read it; the text itself where nothing differs.
///
/// From version 9 on: a switch whose value holds quotes or blanks is quoted as a whole (`-sName#"value"` would
/// make the quotes part of the value), a double quote inside becomes `\"`, a "%" in the name of an output file
/// is doubled unless it is the page pattern "%08d" (other percent signs would be read as patterns), and
/// `.setpdfwrite`, which is gone, is dropped together with its "-c".
std::string TranslateParameters(std::string_view text, std::int32_t majorVersion);

}  // namespace tessary
