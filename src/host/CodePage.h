// The boundary between text (UTF-8 in std::string) and the files of a machine, of 8 bits a character or of 16.
// Nothing else converts.
#pragma once

#include <string>
#include <string_view>

namespace tessary {

enum class CodePage {
  Utf8,         ///< files are UTF-8; one that is not valid UTF-8 is read as Windows-1252
  Windows1252,  ///< files are Windows-1252 (the WHATWG mapping of its five unassigned bytes)
};

/// True if `bytes` are well-formed UTF-8 (RFC 3629: no overlong forms, no surrogates, nothing above U+10FFFF).
bool IsValidUtf8(std::string_view bytes);

/// The text that `bytes` of a file hold, as UTF-8. A UTF-8 byte-order mark at the start is dropped with
/// `CodePage::Utf8`. Never fails.
std::string DecodeText(CodePage codePage, std::string_view bytes);

/// The bytes to write for `text`. With `CodePage::Utf8` the text as it stands, so that a path that is no valid
/// UTF-8 survives; with `CodePage::Windows1252` a character that the page lacks, or a byte that is not part of
/// valid UTF-8, becomes "?". Never fails.
std::string EncodeText(CodePage codePage, std::string_view text);

/// The UTF-16 units of `text`. A byte that is not part of valid UTF-8 becomes U+FFFD. Never fails.
std::u16string ToUtf16(std::string_view text);

}  // namespace tessary
