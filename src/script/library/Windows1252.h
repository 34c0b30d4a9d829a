// The 8-bit code page of Chr, Asc and of text files that are not UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace tessary::script {

/// The unit that a byte stands for. The five unassigned bytes stand for themselves.
char16_t FromWindows1252(unsigned char byte);

/// The byte for a unit, "?" for one that the code page lacks.
unsigned char ToWindows1252(char16_t unit);

/// The text of a file: UTF-16 behind its byte-order mark (either byte order), UTF-8 when the bytes are valid
/// UTF-8 (a byte-order mark is dropped), Windows-1252 otherwise.
std::u16string DecodeFile(std::string_view bytes);

}  // namespace tessary::script
