// Bytes of any kind within a PostScript program.
#pragma once

#include <string>
#include <string_view>

namespace tessary {

/// A PostScript string of any bytes, such as a path in the machine's code page: "<2F61>". Nothing in it needs
/// an escape.
std::string HexString(std::string_view bytes);

}  // namespace tessary
