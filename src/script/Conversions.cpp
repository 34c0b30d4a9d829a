#include "script/Conversions.h"

#include <cmath>
#include <cstdlib>
#include <limits>

#include "script/Object.h"
#include "script/library/TextForms.h"

namespace tessary::script {

namespace {

constexpr double kCurrencyScale = 10000.0;
constexpr double kFirstDate = -657434.0;    // 0100-01-01
constexpr double kBehindDates = 2958466.0;  // 10000-01-01

double NumberIn(const Value& text) {
  if (const std::optional<double> number = ParseNumber(text.string())) return *number;
  Raise(kTypeMismatch, Describe(text));
}

std::int64_t WholeNumber(const Value& value, std::int64_t lowest, std::int64_t highest) {
  std::int64_t whole = 0;
  switch (value.type()) {
    case Type::Boolean:
    case Type::Byte:
    case Type::Integer:
    case Type::Long:
      whole = value.whole();
      break;
    default: {
      const double rounded = RoundHalfEven(ToDouble(value));
      // Written so that what is not a number fails too.
      if (!(rounded >= static_cast<double>(lowest) && rounded <= static_cast<double>(highest))) {
        Raise(kOverflow, Describe(value));
      }
      return static_cast<std::int64_t>(rounded);
    }
  }
  if (whole < lowest || whole > highest) Raise(kOverflow, Describe(value));
  return whole;
}

template <typename Number>
Number ToWhole(const Value& value) {
  return static_cast<Number>(
      WholeNumber(value, std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max()));
}

std::string CurrencyText(std::int64_t tenThousandths) {
  const std::uint64_t size = tenThousandths < 0 ? 0 - static_cast<std::uint64_t>(tenThousandths)
                                                : static_cast<std::uint64_t>(tenThousandths);
  std::string text = (tenThousandths < 0 ? "-" : "") + std::to_string(size / 10000);
  std::string fraction = std::to_string(10000 + size % 10000).substr(1);
  fraction.erase(fraction.find_last_not_of('0') + 1);
  return fraction.empty() ? text : text + '.' + fraction;
}

}  // namespace

void RaiseNotPlain(const Value& value) {
  switch (value.type()) {
    case Type::Null:
      Raise(kInvalidNull);
    case Type::Object:
      Raise(value.IsNothing() ? kObjectNotSet : kNoSuchMember);
    default:
      Raise(kTypeMismatch, Describe(value));
  }
}

std::string Describe(const Value& value) {
  constexpr std::size_t kLongest = 20;
  switch (value.type()) {
    case Type::Empty:
      return "[undefined]";
    case Type::Null:
      return "[null]";
    case Type::Object:
      return "[object]";
    case Type::Array:
      return "[array]";
    case Type::Error:
      return "[error]";
    case Type::String: {
      std::string shown = value.string();
      if (shown.size() > kLongest) {
        std::size_t end = kLongest;
        while (end > 0 && (static_cast<unsigned char>(shown[end]) & 0xC0U) == 0x80U) --end;
        shown = shown.substr(0, end) + "...";
      }
      return "[string: \"" + shown + "\"]";
    }
    default:
      return (value.Is(Type::Boolean) ? "[boolean: "
              : value.Is(Type::Date)  ? "[date: "
                                      : "[number: ") +
             ToText(value) + "]";
  }
}

double RoundHalfEven(double number) noexcept {
  const double below = std::floor(number);
  const double rest = number - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1;
  return std::fmod(below, 2.0) == 0 ? below : below + 1;
}

std::string ToText(const Value& value) {
  switch (value.type()) {
    case Type::Empty:
      return {};
    case Type::Boolean:
      return value.boolean() ? "True" : "False";
    case Type::Byte:
    case Type::Integer:
    case Type::Long:
      return std::to_string(value.whole());
    case Type::Single:
      return SingleText(static_cast<float>(value.real()));
    case Type::Double:
      return NumberText(value.real());
    case Type::Currency:
      return CurrencyText(value.whole());
    case Type::Date:
      return DateText(value.real());
    case Type::String:
      return value.string();
    default:
      RaiseNotPlain(value);
  }
}

double ToDouble(const Value& value) {
  switch (value.type()) {
    case Type::Empty:
      return 0;
    case Type::Boolean:
    case Type::Byte:
    case Type::Integer:
    case Type::Long:
      return static_cast<double>(value.whole());
    case Type::Single:
    case Type::Double:
    case Type::Date:
      return value.real();
    case Type::Currency:
      return static_cast<double>(value.whole()) / kCurrencyScale;
    case Type::String:
      return NumberIn(value);
    default:
      RaiseNotPlain(value);
  }
}

float ToSingle(const Value& value) {
  const double number = ToDouble(value);
  if (std::fabs(number) > static_cast<double>(std::numeric_limits<float>::max()))
    Raise(kOverflow, Describe(value));
  return static_cast<float>(number);
}

bool ToBoolean(const Value& value) {
  if (value.Is(Type::String)) {
    if (SameName(value.string(), "True")) return true;
    if (SameName(value.string(), "False")) return false;
  }
  return ToDouble(value) != 0;
}

std::uint8_t ToByte(const Value& value) { return ToWhole<std::uint8_t>(value); }
std::int16_t ToInteger(const Value& value) { return ToWhole<std::int16_t>(value); }
std::int32_t ToLong(const Value& value) { return ToWhole<std::int32_t>(value); }

std::int64_t ToCurrency(const Value& value) {
  if (value.Is(Type::Currency)) return value.whole();
  const double scaled = RoundHalfEven(ToDouble(value) * kCurrencyScale);
  constexpr double kLimit = 9223372036854775807.0;  // rounds up to 2^63, which does not fit
  if (!(scaled > -kLimit && scaled < kLimit)) Raise(kOverflow, Describe(value));
  return static_cast<std::int64_t>(scaled);
}

double ToDate(const Value& value) {
  double days = 0;
  if (value.Is(Type::String)) {
    std::optional<double> parsed = ParseDate(value.string());
    if (!parsed) parsed = ParseNumber(value.string());
    if (!parsed) Raise(kTypeMismatch, Describe(value));
    days = *parsed;
  } else {
    days = ToDouble(value);
  }
  // A time before 1899-12-30 counts backwards in its fraction, hence the whole days.
  if (!(std::trunc(days) >= kFirstDate && days < kBehindDates)) Raise(kOverflow, Describe(value));
  return days;
}

Value ToNumber(const Value& value) {
  switch (value.type()) {
    case Type::Empty:
      return Value::Integer(0);
    case Type::String:
      return Value::Double(NumberIn(value));
    case Type::Boolean:
    case Type::Byte:
    case Type::Integer:
    case Type::Long:
    case Type::Single:
    case Type::Double:
    case Type::Currency:
    case Type::Date:
      return value;
    default:
      RaiseNotPlain(value);
  }
}

}  // namespace tessary::script
