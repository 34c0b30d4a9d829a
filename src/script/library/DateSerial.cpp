#include "script/library/DateSerial.h"

#include <algorithm>
#include <cmath>

namespace tessary::script {
namespace {

// Years of the algorithms below begin in March, so that the leap day is the last one. 0000-03-01 is this day.
constexpr std::int64_t kMarchOfYearZero = -693899;
constexpr std::int64_t kDaysPer400Years = 146097;

std::int64_t FloorDivide(std::int64_t number, std::int64_t by) {
  return number / by - (number % by < 0 ? 1 : 0);
}

struct Moment {
  std::int64_t day;
  std::int64_t second;  ///< of the day
};

Moment MomentOf(double serial) {
  const double day = std::trunc(serial);
  const auto second = static_cast<std::int64_t>(std::floor(std::fabs(serial - day) * kSecondsPerDay + 0.5));
  Moment moment{static_cast<std::int64_t>(day), second};
  if (second == kSecondsPerDay) moment = {moment.day + 1, 0};
  return moment;
}

std::int64_t DayOf(int year, int month, int day) { return DayNumber(year, month, day).value_or(kFirstDay); }

// The first day of the week 1 of a year.
std::int64_t FirstWeek(int year, int firstDay, int firstWeek) {
  const std::int64_t january = DayOf(year, 1, 1);
  const int before = WeekdayOf(january, firstDay) - 1;
  const bool next = (firstWeek == 2 && before > 3) || (firstWeek == 3 && before > 0);
  return january - before + (next ? 7 : 0);
}

int WeekOf(std::int64_t day, int year, int firstDay, int firstWeek) {
  // The years at both ends have no neighbour to lend a week.
  if (firstWeek != 1 && year < 9999 && day >= FirstWeek(year + 1, firstDay, firstWeek)) return 1;
  std::int64_t first = FirstWeek(year, firstDay, firstWeek);
  if (day < first && year > 100) first = FirstWeek(year - 1, firstDay, firstWeek);
  return static_cast<int>(FloorDivide(day - first, 7)) + 1;
}

}  // namespace

DateParts PartsOf(double serial) {
  const Moment moment = MomentOf(serial);
  const std::int64_t days = moment.day - kMarchOfYearZero;
  const std::int64_t era = FloorDivide(days, kDaysPer400Years);
  const std::int64_t dayOfEra = days - era * kDaysPer400Years;
  const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::int64_t month = (5 * dayOfYear + 2) / 153;  // 0 is March
  DateParts parts;
  parts.month = static_cast<int>(month < 10 ? month + 3 : month - 9);
  parts.year = static_cast<int>(era * 400 + yearOfEra + (parts.month <= 2 ? 1 : 0));
  parts.day = static_cast<int>(dayOfYear - (153 * month + 2) / 5 + 1);
  parts.hour = static_cast<int>(moment.second / 3600);
  parts.minute = static_cast<int>(moment.second / 60 % 60);
  parts.second = static_cast<int>(moment.second % 60);
  return parts;
}

std::optional<std::int64_t> DayNumber(std::int64_t year, std::int64_t month, std::int64_t day) {
  year += FloorDivide(month - 1, 12);
  month -= FloorDivide(month - 1, 12) * 12;
  const std::int64_t marchYear = month <= 2 ? year - 1 : year;
  const std::int64_t era = FloorDivide(marchYear, 400);
  const std::int64_t yearOfEra = marchYear - era * 400;
  const std::int64_t dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5;
  const std::int64_t number = kMarchOfYearZero + era * kDaysPer400Years + yearOfEra * 365 + yearOfEra / 4 -
                              yearOfEra / 100 + dayOfYear + day - 1;
  if (number < kFirstDay || number > kLastDay) return std::nullopt;
  return number;
}

std::optional<double> SerialOf(std::int64_t day, std::int64_t seconds) {
  day += FloorDivide(seconds, kSecondsPerDay);
  seconds -= FloorDivide(seconds, kSecondsPerDay) * kSecondsPerDay;
  if (day < kFirstDay || day > kLastDay) return std::nullopt;
  const double fraction = static_cast<double>(seconds) / kSecondsPerDay;
  return static_cast<double>(day) + (day < 0 ? -fraction : fraction);
}

std::int64_t SecondsOf(double serial) {
  const Moment moment = MomentOf(serial);
  return moment.day * kSecondsPerDay + moment.second;
}

int DaysInMonth(int year, int month) {
  if (month == 2) return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0) ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

int WeekdayOf(std::int64_t day, int firstDay) {
  const std::int64_t fromSunday = day - 1;  // the day 1, 1899-12-31, was a Sunday
  const std::int64_t shifted = fromSunday - (firstDay - 1);
  return static_cast<int>(shifted - FloorDivide(shifted, 7) * 7) + 1;
}

std::int64_t FullYear(std::int64_t year) {
  if (year < 0 || year > 99) return year;
  return year + (year < 30 ? 2000 : 1900);
}

std::optional<double> AddInterval(Interval interval, std::int64_t count, double serial) {
  const auto [day, second] = MomentOf(serial);
  const auto addMonths = [&, second = second](std::int64_t months) -> std::optional<double> {
    const DateParts parts = PartsOf(serial);
    const auto first = DayNumber(parts.year, parts.month + months, 1);
    if (!first) return std::nullopt;
    const DateParts target = PartsOf(static_cast<double>(*first));
    return SerialOf(*first + std::min(parts.day, DaysInMonth(target.year, target.month)) - 1, second);
  };
  switch (interval) {
    case Interval::Year:
      return addMonths(count * 12);
    case Interval::Quarter:
      return addMonths(count * 3);
    case Interval::Month:
      return addMonths(count);
    case Interval::Week:
      return SerialOf(day + count * 7, second);
    case Interval::Hour:
      return SerialOf(day, second + count * 3600);
    case Interval::Minute:
      return SerialOf(day, second + count * 60);
    case Interval::Second:
      return SerialOf(day, second + count);
    case Interval::DayOfYear:
    case Interval::Day:
    case Interval::Weekday:
      break;
  }
  return SerialOf(day + count, second);
}

std::int64_t CountIntervals(Interval interval, double from, double to, int firstDay) {
  const DateParts a = PartsOf(from), b = PartsOf(to);
  const std::int64_t years = b.year - a.year;
  const std::int64_t dayA = MomentOf(from).day, dayB = MomentOf(to).day;
  const auto borders = [&](std::int64_t seconds) {
    return FloorDivide(SecondsOf(to), seconds) - FloorDivide(SecondsOf(from), seconds);
  };
  switch (interval) {
    case Interval::Year:
      return years;
    case Interval::Quarter:
      return years * 4 + (b.month - 1) / 3 - (a.month - 1) / 3;
    case Interval::Month:
      return years * 12 + b.month - a.month;
    case Interval::DayOfYear:
    case Interval::Day:
      return dayB - dayA;
    case Interval::Weekday:
      return (dayB - dayA) / 7;
    case Interval::Week:
      return (dayB - WeekdayOf(dayB, firstDay) - dayA + WeekdayOf(dayA, firstDay)) / 7;
    case Interval::Hour:
      return borders(3600);
    case Interval::Minute:
      return borders(60);
    case Interval::Second:
      break;
  }
  return borders(1);
}

int PartOf(Interval interval, double serial, int firstDay, int firstWeek) {
  const DateParts parts = PartsOf(serial);
  const std::int64_t day = MomentOf(serial).day;
  switch (interval) {
    case Interval::Year:
      return parts.year;
    case Interval::Quarter:
      return (parts.month - 1) / 3 + 1;
    case Interval::Month:
      return parts.month;
    case Interval::DayOfYear:
      return static_cast<int>(day - DayOf(parts.year, 1, 1)) + 1;
    case Interval::Day:
      return parts.day;
    case Interval::Weekday:
      return WeekdayOf(day, firstDay);
    case Interval::Week:
      return WeekOf(day, parts.year, firstDay, firstWeek);
    case Interval::Hour:
      return parts.hour;
    case Interval::Minute:
      return parts.minute;
    case Interval::Second:
      break;
  }
  return parts.second;
}

}  // namespace tessary::script
