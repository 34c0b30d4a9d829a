#include <cmath>
#include <limits>

#include "script/Conversions.h"
#include "script/Operators.h"
#include "script/ScriptError.h"

namespace tessary::script {

namespace {

constexpr std::int64_t kLongMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t kLongMin = std::numeric_limits<std::int32_t>::min();

bool EitherIs(const Value& left, const Value& right, Type type) { return left.Is(type) || right.Is(type); }

// The subtypes that count in whole numbers, Empty among them.
bool IsWhole(const Value& value) { return value.type() <= Type::Long && !value.Is(Type::Null); }

Type Wider(Type left, Type right) {
  if (left == Type::Empty || left == Type::Boolean) left = Type::Integer;
  if (right == Type::Empty || right == Type::Boolean) right = Type::Integer;
  return left > right ? left : right;
}

// `number` as the narrowest of `type` and the types wider than it.
Value Fit(std::int64_t number, Type type) {
  if (type == Type::Byte && number >= 0 && number <= 255) return Value::Byte(static_cast<std::uint8_t>(number));
  if (type == Type::Long && number >= kLongMin && number <= kLongMax) {
    return Value::Long(static_cast<std::int32_t>(number));
  }
  return Value::Whole(number);
}

Value FitReal(double number, Type type) {
  if (type == Type::Single && std::fabs(number) <= static_cast<double>(std::numeric_limits<float>::max())) {
    return Value::Single(static_cast<float>(number));
  }
  if (!std::isfinite(number)) Raise(kOverflow);
  return Value::Double(number);
}

Value FitDate(double days) {
  try {
    return Value::Date(ToDate(Value::Double(days)));
  } catch (const ScriptError&) {
    return FitReal(days, Type::Double);
  }
}

// Single stands against Byte, Integer and itself; against Long it would lose digits.
Type RealType(const Value& left, const Value& right) {
  const auto isShort = [](const Value& value) {
    return value.Is(Type::Single) || (IsWhole(value) && !value.Is(Type::Long));
  };
  return EitherIs(left, right, Type::Single) && isShort(left) && isShort(right) ? Type::Single : Type::Double;
}

enum class Sum { Plus, Minus };

Value AddCurrency(Sum sum, const Value& left, const Value& right) {
  std::int64_t result = 0;
  const std::int64_t a = ToCurrency(left);
  const std::int64_t b = ToCurrency(right);
  if (sum == Sum::Plus ? __builtin_add_overflow(a, b, &result) : __builtin_sub_overflow(a, b, &result)) {
    Raise(kOverflow);
  }
  return Value::Currency(result);
}

Value AddNumbers(Sum sum, const Value& left, const Value& right) {
  if (IsWhole(left) && IsWhole(right)) {
    const std::int64_t result = sum == Sum::Plus ? left.whole() + right.whole() : left.whole() - right.whole();
    return Fit(result, Wider(left.type(), right.type()));
  }
  if (EitherIs(left, right, Type::Currency) && !EitherIs(left, right, Type::Date)) {
    return AddCurrency(sum, left, right);
  }
  const double a = ToDouble(left);
  const double b = ToDouble(right);
  const double result = sum == Sum::Plus ? a + b : a - b;
  if (EitherIs(left, right, Type::Date)) {
    const bool span = sum == Sum::Minus && left.Is(Type::Date) && right.Is(Type::Date);
    return span ? Value::Double(result) : FitDate(result);
  }
  return FitReal(result, RealType(left, right));
}

Value MultiplyCurrency(const Value& left, const Value& right) {
  // In whole numbers when the product fits, so that no ten-thousandth is lost.
  std::int64_t product = 0;
  if (!__builtin_mul_overflow(ToCurrency(left), ToCurrency(right), &product)) {
    const std::int64_t quotient = product / 10000;
    const std::int64_t rest = std::abs(product % 10000);
    const bool up = rest > 5000 || (rest == 5000 && quotient % 2 != 0);
    return Value::Currency(quotient + (up ? (product < 0 ? -1 : 1) : 0));
  }
  return Value::Currency(ToCurrency(Value::Double(ToDouble(left) * ToDouble(right))));
}

// The subtype of \ and Mod and of the logic: Byte among themselves, Integer where both sides are at most that
// wide.
Type WholeType(const Value& left, const Value& right) {
  if (!IsWhole(left) || !IsWhole(right)) return Type::Long;
  return Wider(left.type(), right.type());
}

}  // namespace

Value Add(const Value& left, const Value& right) {
  if (EitherIs(left, right, Type::Null)) return Value::Null();
  if (left.Is(Type::String) && right.Is(Type::String)) return Concatenate(left, right);
  if (left.Is(Type::Empty) && right.Is(Type::String)) return right;
  if (right.Is(Type::Empty) && left.Is(Type::String)) return left;
  return AddNumbers(Sum::Plus, left, right);
}

Value Subtract(const Value& left, const Value& right) {
  if (EitherIs(left, right, Type::Null)) return Value::Null();
  return AddNumbers(Sum::Minus, left, right);
}

Value Multiply(const Value& left, const Value& right) {
  if (EitherIs(left, right, Type::Null)) return Value::Null();
  if (IsWhole(left) && IsWhole(right)) {
    // Two Longs fit into 64 bits always.
    return Fit(left.whole() * right.whole(), Wider(left.type(), right.type()));
  }
  const auto isExact = [](const Value& value) { return IsWhole(value) || value.Is(Type::Currency); };
  if (isExact(left) && isExact(right)) return MultiplyCurrency(left, right);
  return FitReal(ToDouble(left) * ToDouble(right), RealType(left, right));
}

Value Divide(const Value& left, const Value& right) {
  if (EitherIs(left, right, Type::Null)) return Value::Null();
  const double dividend = ToDouble(left);
  const double divisor = ToDouble(right);
  if (divisor == 0) Raise(dividend == 0 ? kOverflow : kDivisionByZero);
  return FitReal(dividend / divisor, RealType(left, right));
}

Value IntegerDivide(const Value& left, const Value& right) {
  if (EitherIs(left, right, Type::Null)) return Value::Null();
  const std::int64_t dividend = ToLong(left);
  const std::int64_t divisor = ToLong(right);
  if (divisor == 0) Raise(kDivisionByZero);
  const std::int64_t quotient = dividend / divisor;
  if (quotient > kLongMax) Raise(kOverflow);
  return Fit(quotient, WholeType(left, right));
}

Value Modulo(const Value& left, const Value& right) {
  if (EitherIs(left, right, Type::Null)) return Value::Null();
  const std::int64_t dividend = ToLong(left);
  const std::int64_t divisor = ToLong(right);
  if (divisor == 0) Raise(kDivisionByZero);
  return Fit(dividend % divisor, WholeType(left, right));
}

Value Power(const Value& left, const Value& right) {
  if (EitherIs(left, right, Type::Null)) return Value::Null();
  const double base = ToDouble(left);
  const double exponent = ToDouble(right);
  if (base == 0 && exponent < 0) Raise(kDivisionByZero);
  if (base < 0 && exponent != std::trunc(exponent)) Raise(kInvalidCall);
  return FitReal(std::pow(base, exponent), Type::Double);
}

Value Concatenate(const Value& left, const Value& right) {
  if (left.Is(Type::Null) && right.Is(Type::Null)) return Value::Null();
  std::string text = left.Is(Type::Null) ? std::string() : ToText(left);
  auto joined = Make<Text>(std::move(text));
  if (right.Is(Type::String)) {
    joined->Append(right.string());
  } else if (!right.Is(Type::Null)) {
    joined->Append(ToText(right));
  }
  return Value::String(joined);
}

Value Negate(const Value& operand) {
  if (operand.Is(Type::Null)) return operand;
  if (IsWhole(operand)) {
    const Type type = operand.Is(Type::Long) ? Type::Long : Type::Integer;
    return Fit(-operand.whole(), type);
  }
  const Value number = ToNumber(operand);
  switch (number.type()) {
    case Type::Single:
      return Value::Single(static_cast<float>(-number.real()));
    case Type::Currency:
      if (number.whole() == std::numeric_limits<std::int64_t>::min()) Raise(kOverflow);
      return Value::Currency(-number.whole());
    case Type::Date:
      return FitDate(-number.real());
    default:
      return Value::Double(-number.real());
  }
}

}  // namespace tessary::script
