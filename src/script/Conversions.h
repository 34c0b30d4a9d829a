// From one subtype to another, as the language converts by itself and with CInt, CStr and their kin.
//
// All take plain values: an object raises 438 (Nothing 91), so callers ask Context::Plain first where one may
// come. Null raises 94, an array or an error value 13, a string that is no number 13, a number that does not
// fit 6. Empty is 0 or "". Whole numbers come about by rounding halves to the even neighbour.
#pragma once

#include <cstdint>
#include <string>

#include "script/Value.h"

namespace tessary::script {

std::string ToText(const Value& value);
double ToDouble(const Value& value);
float ToSingle(const Value& value);
bool ToBoolean(const Value& value);  ///< also "True" and "False" in any case
std::uint8_t ToByte(const Value& value);
std::int16_t ToInteger(const Value& value);
std::int32_t ToLong(const Value& value);
std::int64_t ToCurrency(const Value& value);  ///< in ten-thousandths
double ToDate(const Value& value);  ///< a string as a date or a number; 6 outside of the years 100 to 9999

/// Halves go to the even neighbour: 0.5 to 0, 1.5 to 2.
double RoundHalfEven(double number) noexcept;

/// How an error's detail shows a value: [string: "abc"].
std::string Describe(const Value& value);
/// Raises the error for a value that is no text, number or date.
[[noreturn]] void RaiseNotPlain(const Value& value);

/// The number in a Value as a variant number: strings become Double, Empty Integer 0, dates and booleans stay.
Value ToNumber(const Value& value);

}  // namespace tessary::script
