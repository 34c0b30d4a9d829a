// Conversions between texts and numbers. The Safe ones never fail; blanks around a number are skipped and the
// decimal sign is always the point.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/Dictionary.h"

namespace tessary {

/// `value` as text; empty for a dictionary.
std::string SafeString(const Value& value);

/// The whole of `text` as a number, or nothing: decimal digits with sign, point and exponent, or "&h" and
/// hexadecimal digits.
std::optional<double> ToNumber(std::string_view text);

/// ToNumber rounded to 32 bits, halves to the even neighbour. Raises kTypeMismatch or kOverflow.
std::int32_t ToLong(std::string_view text);

/// ToLong and ToNumber with 0 in the place of a failure.
std::int32_t SafeLong(std::string_view text);
double SafeDouble(std::string_view text);

/// The number that `text` begins with: blanks skipped, up to the first character that cannot belong to it, 0
/// when there is none. "&h" reads hexadecimal.
double LeadingNumber(std::string_view text);

/// `number` as people write it: a point before the decimals, up to 15 digits, no zeros at the end.
std::string DecimalText(double number);

/// The nearest whole number, halves to the even neighbour.
double RoundHalfEven(double number);

/// `number`, or 0 when it is below 0.
std::int32_t NotNegative(std::int32_t number);

/// 2 to the power of (position - 1), for positions 1 to 31. Raises kCommon below 1 and kOverflow above 31.
std::int32_t Bit(std::int32_t position);

/// The channels of a packed colour, red in the lowest 8 bits.
void SplitColor(std::int32_t color, std::int32_t& red, std::int32_t& green, std::int32_t& blue);

/// The 8-bit text `bytes` as it stands in the query of an address: letters, digits, "-" and "." stay, blanks
/// become
/// "+", and every other byte becomes "%" and two upper-case hexadecimal digits ("_" and "~" too).
std::string UrlEncode(std::string_view bytes);

// Plain texts. Blanks are spaces and nothing else; only the letters A to Z have two cases.
std::string TrimBlanks(std::string_view text);
std::string ToLower(std::string_view text);
std::string ToUpper(std::string_view text);
std::string CutAtNul(std::string_view text);
/// `text` with a blank in the place of each control character, so that it is one line.
std::string OneLine(std::string text);
/// `text` with every `from`, which is not empty, replaced by `to` in one pass.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);
/// The parts of `text` between the separators; at least one, which may be empty.
std::vector<std::string> Split(std::string_view text, char separator);

}  // namespace tessary
