// Numbers and dates as text and back, in the language's one locale, US English: "1,234.5", "$5.00",
// "1/31/2024 2:05:09 PM".
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessary::script {

/// The text of a Double: up to 15 significant digits, with an exponent of two digits or more from 1E+15 on and
/// where more than 15 decimals would be needed ("3.33333333333333E-02", but "0.00001"). Never "-0"; infinities
/// and "not a number" as "1.#INF", "-1.#INF", "-1.#IND".
std::string NumberText(double number);

/// The text of a Single: the same with 7 digits.
std::string SingleText(float number);

/// The number that a text holds, as CDbl and IsNumeric take it: blanks around it, one sign before or behind or
/// parentheses for a negative one, "$", thousands separators, decimals, an exponent by E or D, or whole as &H1F
/// or &O17 (up to 32 bits, &HFFFFFFFF is -1). Nothing if the text is no number; an infinity if it is too large.
std::optional<double> ParseNumber(std::string_view text);

/// The Currency that a text holds, in ten-thousandths, exact in all its digits; rounded half to even in the
/// fourth decimal. Nothing if the text is no number. `overflow` is set when it is one that Currency cannot
/// hold.
std::optional<std::int64_t> ParseCurrency(std::string_view text, bool& overflow);

/// How FormatNumber and its relatives write a number.
struct NumberFormat {
  int decimals = 2;
  bool leadingZero = true;       ///< "0.5" and not ".5"
  bool parentheses = false;      ///< "(5)" and not "-5"
  bool groups = true;            ///< "1,000" and not "1000"
  std::string_view prefix = {};  ///< before the digits, "$"
  std::string_view suffix = {};  ///< behind the digits, "%"
};

/// The number rounded half away from zero to the wanted decimals (0 to 255) and dressed up. 15 digits are
/// significant, what follows are zeros.
std::string FormatDecimal(double number, const NumberFormat& format);

inline constexpr std::array<std::string_view, 12> kMonthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
inline constexpr std::array<std::string_view, 7> kDayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                              "Thursday", "Friday", "Saturday"};

/// The text of a date of the years 100 to 9999: "12/31/1999", "1:05:09 PM", or both with a blank between them.
/// The time is left out at midnight, the date on the day 0.
std::string DateText(double serial);

/// Its parts alone: "12/31/1999" and "Friday, December 31, 1999", "1:05:09 PM" and "13:05".
std::string ShortDate(double serial);
std::string LongDate(double serial);
std::string LongTime(double serial);
std::string ShortTime(double serial);

/// The date that a text or the inside of a # literal holds. Understood are "m/d/yyyy" (also with "-", "." or
/// blanks; as day and month when it can be nothing else), "yyyy-mm-dd", names of months ("5 May 2001", "May 5,
/// 2001", "May 2001"), two-digit years (30 to 99 are in the 20th century), a name of a weekday beside it,
/// "hh:mm", "hh:mm:ss", "hh AM" in front of the date or behind it, or alone. ISO's "T" may stand between. A
/// date without its year needs `currentYear`. Nothing if it is no date.
std::optional<double> ParseDate(std::string_view text, int currentYear = 0);

}  // namespace tessary::script
