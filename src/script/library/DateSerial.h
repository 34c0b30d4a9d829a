// Dates as the language counts them: days since 1899-12-30 as a double, with the time of day in the fraction.
// Before that day the fraction still counts forward: -1.25 is 1899-12-29 06:00.
#pragma once

#include <cstdint>
#include <optional>

namespace tessary::script {

struct DateParts {
  int year = 1899, month = 12, day = 30, hour = 0, minute = 0, second = 0;
};

inline constexpr std::int64_t kFirstDay = -657434;  ///< 0100-01-01
inline constexpr std::int64_t kLastDay = 2958465;   ///< 9999-12-31
inline constexpr std::int64_t kSecondsPerDay = 86400;

/// The parts of a date in range, its time rounded to the second.
DateParts PartsOf(double serial);

/// The day's number, counted from 1899-12-30. `month` and `day` may be anything: month 13 is January of the
/// next year, day 0 the last of the month before. Nothing outside the years 100 to 9999.
std::optional<std::int64_t> DayNumber(std::int64_t year, std::int64_t month, std::int64_t day);

/// The serial of a day and the seconds since its midnight, which may be negative or more than a day. Nothing
/// when the result is out of range.
std::optional<double> SerialOf(std::int64_t day, std::int64_t seconds);

/// Seconds since 1899-12-30 00:00, counted straight on through midnight.
std::int64_t SecondsOf(double serial);

int DaysInMonth(int year, int month);

/// The day of the week from 1 to 7, where `firstDay` (1 Sunday to 7 Saturday) counts as 1.
int WeekdayOf(std::int64_t day, int firstDay);

/// A year of one or two digits: 0 to 29 are 2000 to 2029, 30 to 99 are 1930 to 1999. Others stay.
std::int64_t FullYear(std::int64_t year);

/// The intervals of DateAdd, DateDiff and DatePart: "yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s".
enum class Interval : std::uint8_t {
  Year,
  Quarter,
  Month,
  DayOfYear,
  Day,
  Weekday,
  Week,
  Hour,
  Minute,
  Second
};

/// Adds whole intervals; the day is cut to the end of a shorter month. Nothing when the result is out of range.
std::optional<double> AddInterval(Interval interval, std::int64_t count, double serial);

/// How many borders of the interval lie between two dates; negative when `to` is earlier. Weeks begin on
/// `firstDay`.
std::int64_t CountIntervals(Interval interval, double from, double to, int firstDay);

/// The part of a date. `firstWeek`: the first week of a year is the one with 1 January (1), the first with four
/// days in the year (2), the first whole one (3).
int PartOf(Interval interval, double serial, int firstDay, int firstWeek);

}  // namespace tessary::script
