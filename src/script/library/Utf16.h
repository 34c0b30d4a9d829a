// Text in the script language counts UTF-16 units; inside it is UTF-8. This is the one place that converts.
//
// A surrogate that stands alone (ChrW(&HD83D)) is kept as its own three-byte sequence, so that it survives and
// can be joined with its other half later. A byte that belongs to no valid sequence counts as one unit, U+FFFD.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessary::script {

bool IsAscii(std::string_view text);

/// The length of `text` in UTF-16 units.
std::size_t Utf16Length(std::string_view text);

std::u16string ToUtf16(std::string_view text);

/// The UTF-8 of `units`. Surrogates that form a pair become one four-byte sequence.
std::string ToUtf8(std::u16string_view units);

/// `count` units of `text` from the unit `start` (from 0); fewer where the text ends earlier.
std::string Substring(std::string_view text, std::size_t start, std::size_t count);

/// The other case of one unit, for the scripts that have two cases within the Basic Multilingual Plane: Latin,
/// Greek, Cyrillic, Armenian, Georgian capitals, Roman numerals, circled and full-width letters. Others stay.
char16_t UpperOf(char16_t unit);
char16_t LowerOf(char16_t unit);

std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);

/// Less than, equal to or greater than 0, by the units' values, or without regard to case.
int CompareText(std::string_view left, std::string_view right, bool ignoreCase);

}  // namespace tessary::script
