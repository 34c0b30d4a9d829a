#include <cmath>

#include "script/library/Arguments.h"
#include "script/library/Clock.h"
#include "script/library/Tables.h"
#include "script/library/TextForms.h"

namespace tessary::script {

LocalTime Now(Context& context) {
  const auto& now = context.services().now;
  return now ? now() : LocalTime{};
}

int ThisYear(Context& context) { return Now(context).year; }

double SerialOf(const LocalTime& time) {
  const std::int64_t day = DayNumber(time.year, time.month, time.day).value_or(0);
  return SerialOf(day, time.hour * 3600 + time.minute * 60 + time.second).value_or(0);
}

double DateOf(Context& context, const Value& value) {
  if (value.Is(Type::String)) {
    if (const auto serial = ParseDate(value.string(), ThisYear(context))) return *serial;
  }
  return ToDate(value);
}

namespace {

Value DateOrInvalid(std::optional<double> serial) {
  if (!serial) Raise(kInvalidCall);
  return Value::Date(*serial);
}

Value NowFunction(Context& context, Arguments) { return Value::Date(SerialOf(Now(context))); }

Value DateFunction(Context& context, Arguments) { return Value::Date(std::floor(SerialOf(Now(context)))); }

Value TimeFunction(Context& context, Arguments) {
  const LocalTime now = Now(context);
  return DateOrInvalid(SerialOf(0, now.hour * 3600 + now.minute * 60 + now.second));
}

Value Timer(Context& context, Arguments) {
  const auto& timer = context.services().timer;
  return Value::Single(static_cast<float>(timer ? timer() : 0.0));
}

Value DateSerialFunction(Context&, Arguments arguments) {
  const std::int64_t year = FullYear(ToInteger(arguments[0]));
  const auto day = DayNumber(year, ToInteger(arguments[1]), ToInteger(arguments[2]));
  return DateOrInvalid(day ? SerialOf(*day, 0) : std::nullopt);
}

Value TimeSerial(Context&, Arguments arguments) {
  const std::int64_t hour = ToInteger(arguments[0]), minute = ToInteger(arguments[1]);
  return DateOrInvalid(SerialOf(0, hour * 3600 + minute * 60 + ToInteger(arguments[2])));
}

// DateValue and TimeValue take dates and texts that hold one, but no numbers.
double DateInText(Context& context, const Value& value) {
  if (value.Is(Type::Date)) return value.real();
  if (value.Is(Type::Null)) Raise(kInvalidNull);
  const auto serial = value.Is(Type::String) ? ParseDate(value.string(), ThisYear(context)) : std::nullopt;
  if (!serial) Raise(kTypeMismatch, Describe(value));
  return *serial;
}

Value DateValue(Context& context, Arguments arguments) {
  return Value::Date(std::trunc(DateInText(context, arguments[0])));
}

Value TimeValue(Context& context, Arguments arguments) {
  const double serial = DateInText(context, arguments[0]);
  return Value::Date(std::fabs(serial - std::trunc(serial)));
}

struct IntervalName {
  std::string_view name;
  Interval interval;
};

constexpr IntervalName kIntervals[] = {
    {"yyyy", Interval::Year}, {"q", Interval::Quarter}, {"m", Interval::Month}, {"y", Interval::DayOfYear},
    {"d", Interval::Day},     {"w", Interval::Weekday}, {"ww", Interval::Week}, {"h", Interval::Hour},
    {"n", Interval::Minute},  {"s", Interval::Second},
};

Interval IntervalOf(const Value& value) {
  const std::string name = ToText(value);
  for (const IntervalName& entry : kIntervals) {
    if (SameName(entry.name, name)) return entry.interval;
  }
  Raise(kInvalidCall);
}

// vbUseSystem (0) is Sunday.
int FirstDayOf(Arguments arguments, std::size_t index) {
  const int day = LongWithin(arguments, index, 1, 0, 7);
  return day == 0 ? 1 : day;
}

int FirstWeekOf(Arguments arguments, std::size_t index) {
  const int week = LongWithin(arguments, index, 1, 0, 3);
  return week == 0 ? 1 : week;
}

Value DateAdd(Context& context, Arguments arguments) {
  const Interval interval = IntervalOf(arguments[0]);
  const std::int32_t count = ToLong(arguments[1]);
  if (arguments[2].Is(Type::Null)) return Value::Null();
  return DateOrInvalid(AddInterval(interval, count, DateOf(context, arguments[2])));
}

Value DateDiff(Context& context, Arguments arguments) {
  const Interval interval = IntervalOf(arguments[0]);
  const int firstDay = FirstDayOf(arguments, 3);
  FirstWeekOf(arguments, 4);
  if (arguments[1].Is(Type::Null) || arguments[2].Is(Type::Null)) return Value::Null();
  const double from = DateOf(context, arguments[1]), to = DateOf(context, arguments[2]);
  const std::int64_t count = CountIntervals(interval, from, to, firstDay);
  if (count != static_cast<std::int32_t>(count)) Raise(kOverflow);
  return Value::Long(static_cast<std::int32_t>(count));
}

Value DatePart(Context& context, Arguments arguments) {
  const Interval interval = IntervalOf(arguments[0]);
  const int firstDay = FirstDayOf(arguments, 2), firstWeek = FirstWeekOf(arguments, 3);
  if (arguments[1].Is(Type::Null)) return Value::Null();
  const int part = PartOf(interval, DateOf(context, arguments[1]), firstDay, firstWeek);
  return Value::Integer(static_cast<std::int16_t>(part));
}

template <Interval interval>
Value Part(Context& context, Arguments arguments) {
  if (arguments[0].Is(Type::Null)) return Value::Null();
  const int firstDay = FirstDayOf(arguments, 1);
  const int part = PartOf(interval, DateOf(context, arguments[0]), firstDay, 1);
  return Value::Integer(static_cast<std::int16_t>(part));
}

constexpr NativeFunction kFunctions[] = {
    {"Date", 0, 0, DateFunction},
    {"DateAdd", 3, 3, DateAdd},
    {"DateDiff", 3, 5, DateDiff},
    {"DatePart", 2, 4, DatePart},
    {"DateSerial", 3, 3, DateSerialFunction},
    {"DateValue", 1, 1, DateValue},
    {"Day", 1, 1, Part<Interval::Day>},
    {"Hour", 1, 1, Part<Interval::Hour>},
    {"Minute", 1, 1, Part<Interval::Minute>},
    {"Month", 1, 1, Part<Interval::Month>},
    {"Now", 0, 0, NowFunction},
    {"Second", 1, 1, Part<Interval::Second>},
    {"Time", 0, 0, TimeFunction},
    {"TimeSerial", 3, 3, TimeSerial},
    {"TimeValue", 1, 1, TimeValue},
    {"Timer", 0, 0, Timer},
    {"Weekday", 1, 2, Part<Interval::Weekday>},
    {"Year", 1, 1, Part<Interval::Year>},
};

}  // namespace

FunctionTable DateFunctions() { return kFunctions; }

}  // namespace tessary::script
