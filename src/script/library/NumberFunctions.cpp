#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

#include "script/library/Arguments.h"
#include "script/library/Tables.h"

namespace tessary::script {
namespace {

Value Finite(double number) {
  if (!std::isfinite(number)) Raise(kOverflow);
  return Value::Double(number);
}

template <double (*Function)(double)>
Value Real(Context&, Arguments arguments) {
  return Finite(Function(ToDouble(arguments[0])));
}

Value Log(Context&, Arguments arguments) {
  const double number = ToDouble(arguments[0]);
  if (number <= 0) Raise(kInvalidCall);
  return Value::Double(std::log(number));
}

Value Sqr(Context&, Arguments arguments) {
  const double number = ToDouble(arguments[0]);
  if (number < 0) Raise(kInvalidCall);
  return Value::Double(std::sqrt(number));
}

// Numbers keep their subtype; a Boolean counts as an Integer.
Value Abs(Context&, Arguments arguments) {
  if (arguments[0].Is(Type::Null)) return Value::Null();
  const Value number = ToNumber(arguments[0]);
  switch (number.type()) {
    case Type::Single:
      return Value::Single(std::fabs(static_cast<float>(number.real())));
    case Type::Double:
      return Value::Double(std::fabs(number.real()));
    case Type::Date:
      return Value::Date(std::fabs(number.real()));
    case Type::Currency:
      if (number.whole() == std::numeric_limits<std::int64_t>::min()) Raise(kOverflow);
      return Value::Currency(std::abs(number.whole()));
    case Type::Byte:
      return number;
    case Type::Long:
      if (number.whole() >= 0) return number;
      if (number.whole() > std::numeric_limits<std::int32_t>::min()) {
        return Value::Long(static_cast<std::int32_t>(-number.whole()));
      }
      return Value::Double(-static_cast<double>(number.whole()));
    default:
      return Value::Whole(std::abs(number.whole()));
  }
}

// Int goes down, Fix towards zero; both keep the subtype.
template <double (*Cut)(double), bool down>
Value CutOff(Context&, Arguments arguments) {
  if (arguments[0].Is(Type::Null)) return Value::Null();
  const Value number = ToNumber(arguments[0]);
  switch (number.type()) {
    case Type::Single:
      return Value::Single(static_cast<float>(Cut(number.real())));
    case Type::Double:
      return Value::Double(Cut(number.real()));
    case Type::Date:
      return Value::Date(Cut(number.real()));
    case Type::Currency: {
      const std::int64_t rest = number.whole() % 10000;
      std::int64_t whole = number.whole() - rest;
      if (down && rest < 0) {
        if (whole < std::numeric_limits<std::int64_t>::min() + 10000) Raise(kOverflow);
        whole -= 10000;
      }
      return Value::Currency(whole);
    }
    case Type::Boolean:
      return Value::Integer(static_cast<std::int16_t>(number.whole()));
    default:
      return number;
  }
}

Value Sgn(Context&, Arguments arguments) {
  const double number = ToDouble(arguments[0]);
  return Value::Integer(number > 0 ? 1 : number < 0 ? -1 : 0);
}

// Halves go to the even neighbour.
std::int64_t RoundCurrency(std::int64_t amount, std::int32_t places) {
  constexpr std::int64_t kUnits[] = {10000, 1000, 100, 10};
  if (places >= 4) return amount;
  const std::int64_t unit = kUnits[places];
  const std::int64_t rest = amount % unit;
  const std::int64_t cut = amount - rest;
  const std::int64_t excess = 2 * std::abs(rest) - unit;
  if (excess < 0 || (excess == 0 && cut / unit % 2 == 0)) return cut;
  const std::int64_t step = amount < 0 ? -unit : unit;
  if (std::abs(cut / unit) >= std::numeric_limits<std::int64_t>::max() / unit) Raise(kOverflow);
  return cut + step;
}

Value Round(Context&, Arguments arguments) {
  const Value number = ToNumber(arguments[0]);
  const std::int32_t places = LongOr(arguments, 1, 0);
  if (places < 0) Raise(kInvalidCall);
  if (number.Is(Type::Currency)) return Value::Currency(RoundCurrency(number.whole(), places));
  if (!number.Is(Type::Single) && !number.Is(Type::Double) && !number.Is(Type::Date)) return number;
  const double scale = std::pow(10.0, places);
  const double scaled = number.real() * scale;
  const double rounded = std::isfinite(scaled) ? RoundHalfEven(scaled) / scale : number.real();
  if (number.Is(Type::Single)) return Value::Single(static_cast<float>(rounded));
  return number.Is(Type::Date) ? Value::Date(rounded) : Value::Double(rounded);
}

// Hex and Oct: a Byte or an Integer in its own width, anything else as a Long.
template <int Base>
Value Digits(Context&, Arguments arguments) {
  const Value& number = arguments[0];
  if (number.Is(Type::Null)) return Value::Null();
  const bool narrow = number.Is(Type::Integer) || number.Is(Type::Boolean);
  const auto bits =
      narrow ? static_cast<std::uint16_t>(number.whole()) : static_cast<std::uint32_t>(ToLong(number));
  char buffer[16];
  const char* const end = std::to_chars(buffer, buffer + sizeof buffer, bits, Base).ptr;
  return Value::String(UpperCase({buffer, static_cast<std::size_t>(end - buffer)}));
}

Value Rgb(Context&, Arguments arguments) {
  std::int32_t colour = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    const std::int16_t part = ToInteger(arguments[i]);
    if (part < 0) Raise(kInvalidCall);
    colour |= (part > 255 ? 255 : part) << (8 * i);
  }
  return Value::Long(colour);
}

constexpr std::uint32_t kRandomBits = 24;
constexpr std::uint32_t kRandomMask = (1U << kRandomBits) - 1;

// A negative number chooses the place in the sequence, 0 repeats the number before.
Value Rnd(Context& context, Arguments arguments) {
  const float number = Given(arguments, 0) ? ToSingle(arguments[0]) : 1.0F;
  std::uint32_t& state = context.randomState;
  if (number < 0) {
    const auto bits = std::bit_cast<std::uint32_t>(number);
    state = (bits + (bits >> kRandomBits)) & kRandomMask;
  }
  if (number != 0) state = (state * 0x43FD43FDU + 0xC39EC3U) & kRandomMask;
  return Value::Single(static_cast<float>(state) / static_cast<float>(1U << kRandomBits));
}

// Only the middle bits of the state are replaced: the same number does not start the same sequence again unless
// Rnd(-1) comes before it.
Value Randomize(Context& context, Arguments arguments) {
  const auto& timer = context.services().timer;
  const double seed = Given(arguments, 0) ? ToDouble(arguments[0]) : timer ? timer() : 0.0;
  const auto high = static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(seed) >> 32);
  const std::uint32_t mixed = (high & 0xFFFF) ^ (high >> 16);
  context.randomState = (context.randomState & 0xFF) | (mixed << 8);
  return {};
}

constexpr NativeFunction kFunctions[] = {
    {"Abs", 1, 1, Abs},
    {"Atn", 1, 1, Real<std::atan>},
    {"Cos", 1, 1, Real<std::cos>},
    {"Exp", 1, 1, Real<std::exp>},
    {"Fix", 1, 1, CutOff<std::trunc, false>},
    {"Hex", 1, 1, Digits<16>},
    {"Int", 1, 1, CutOff<std::floor, true>},
    {"Log", 1, 1, Log},
    {"Oct", 1, 1, Digits<8>},
    {"RGB", 3, 3, Rgb},
    {"Randomize", 0, 1, Randomize},
    {"Rnd", 0, 1, Rnd},
    {"Round", 1, 2, Round},
    {"Sgn", 1, 1, Sgn},
    {"Sin", 1, 1, Real<std::sin>},
    {"Sqr", 1, 1, Sqr},
    {"Tan", 1, 1, Real<std::tan>},
};

}  // namespace

FunctionTable NumberFunctions() { return kFunctions; }

}  // namespace tessary::script
