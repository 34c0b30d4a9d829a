#include <cmath>

#include "script/library/Arguments.h"
#include "script/library/Clock.h"
#include "script/library/Tables.h"
#include "script/library/TextForms.h"

namespace tessary::script {
namespace {

constexpr std::int32_t kUseDefault = -2;

// A tristate: True (-1), False (0) or "as usual" (-2).
bool TristateOr(Arguments arguments, std::size_t index, bool usual) {
  const std::int32_t value = LongOr(arguments, index, kUseDefault);
  if (value < kUseDefault || value > 0) Raise(kInvalidCall);
  return value == kUseDefault ? usual : value != 0;
}

// FormatNumber, FormatCurrency and FormatPercent differ in their dress alone.
Value Format(Arguments arguments, double scale, NumberFormat format) {
  if (arguments[0].Is(Type::Null)) Raise(kTypeMismatch);
  const double number = ToDouble(arguments[0]) * scale;
  if (!std::isfinite(number)) Raise(kOverflow);
  const std::int32_t decimals = LongWithin(arguments, 1, -1, -1, 255);
  if (decimals >= 0) format.decimals = decimals;
  format.leadingZero = TristateOr(arguments, 2, true);
  format.parentheses = TristateOr(arguments, 3, format.parentheses);
  format.groups = TristateOr(arguments, 4, true);
  return Value::String(FormatDecimal(number, format));
}

Value FormatNumber(Context&, Arguments arguments) { return Format(arguments, 1, {}); }

Value FormatCurrency(Context&, Arguments arguments) {
  return Format(arguments, 1, {.parentheses = true, .prefix = "$"});
}

Value FormatPercent(Context&, Arguments arguments) { return Format(arguments, 100, {.suffix = "%"}); }

Value FormatDateTime(Context& context, Arguments arguments) {
  constexpr std::string (*kForms[])(double) = {DateText, LongDate, ShortDate, LongTime, ShortTime};
  if (arguments[0].Is(Type::Null)) Raise(kTypeMismatch);
  const std::int32_t form = LongWithin(arguments, 1, 0, 0, 4);
  return Value::String(kForms[form](DateOf(context, arguments[0])));
}

template <std::size_t Count>
Value NameOf(const std::array<std::string_view, Count>& names, std::size_t index, bool abbreviated) {
  return Value::String(std::string(names[index].substr(0, abbreviated ? 3 : std::string_view::npos)));
}

Value MonthName(Context&, Arguments arguments) {
  const std::int32_t month = LongWithin(arguments, 0, 0, 1, 12);
  return NameOf(kMonthNames, static_cast<std::size_t>(month) - 1, BooleanOr(arguments, 1, false));
}

Value WeekdayName(Context&, Arguments arguments) {
  const std::int32_t weekday = LongWithin(arguments, 0, 0, 1, 7);
  const bool abbreviated = BooleanOr(arguments, 1, false);
  const std::int32_t firstDay = LongWithin(arguments, 2, 1, 0, 7);
  const std::int32_t fromSunday = (weekday - 1) + (firstDay == 0 ? 0 : firstDay - 1);
  return NameOf(kDayNames, static_cast<std::size_t>(fromSunday % 7), abbreviated);
}

constexpr NativeFunction kFunctions[] = {
    {"FormatCurrency", 1, 5, FormatCurrency}, {"FormatDateTime", 1, 2, FormatDateTime},
    {"FormatNumber", 1, 5, FormatNumber},     {"FormatPercent", 1, 5, FormatPercent},
    {"MonthName", 1, 2, MonthName},           {"WeekdayName", 1, 3, WeekdayName},
};

}  // namespace

FunctionTable FormatFunctions() { return kFunctions; }

}  // namespace tessary::script
