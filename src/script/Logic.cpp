#include <algorithm>
#include <cmath>

#include "script/Conversions.h"
#include "script/Object.h"
#include "script/Operators.h"
#include "script/ScriptError.h"

namespace tessary::script {

namespace {

// The subtypes of the logic, narrowest first.
enum class Width { Boolean, Byte, Integer, Long };

struct Bits {
  std::int32_t bits;
  Width width;
};

Bits BitsOf(const Value& value) {
  switch (value.type()) {
    case Type::Empty:
      return {0, Width::Integer};
    case Type::Boolean:
      return {value.boolean() ? -1 : 0, Width::Boolean};
    case Type::Byte:
      return {ToLong(value), Width::Byte};
    case Type::Integer:
      return {ToLong(value), Width::Integer};
    case Type::String:
      if (SameName(value.string(), "True")) return {-1, Width::Boolean};
      if (SameName(value.string(), "False")) return {0, Width::Boolean};
      return {ToLong(value), Width::Long};
    default:
      return {ToLong(value), Width::Long};
  }
}

// Boolean and Byte mix to Integer, like all else of different width that fits.
Width Common(Width left, Width right) { return left == right ? left : std::max({left, right, Width::Integer}); }

Value FromBits(std::int32_t bits, Width width) {
  switch (width) {
    case Width::Boolean:
      return Value::Boolean(bits != 0);
    case Width::Byte:
      return Value::Byte(static_cast<std::uint8_t>(bits & 0xFF));
    case Width::Integer:
      return Value::Integer(static_cast<std::int16_t>(bits));
    case Width::Long:
      break;
  }
  return Value::Long(bits);
}

template <typename Operation>
Value Combine(const Value& left, const Value& right, Operation operation) {
  const Bits a = BitsOf(left);
  const Bits b = BitsOf(right);
  return FromBits(operation(a.bits, b.bits), Common(a.width, b.width));
}

// What And and Or give beside Null: the other side where it decides alone, otherwise Null.
Value BesideNull(const Value& left, const Value& right, bool zeroDecides) {
  const Value& other = left.Is(Type::Null) ? right : left;
  if (other.Is(Type::Null)) return Value::Null();
  const Bits bits = BitsOf(other);
  return (bits.bits == 0) == zeroDecides ? FromBits(bits.bits, bits.width) : Value::Null();
}

bool EitherNull(const Value& left, const Value& right) { return left.Is(Type::Null) || right.Is(Type::Null); }

int Order(double left, double right) { return left < right ? -1 : left > right ? 1 : 0; }

int OrderTexts(std::string_view left, std::string_view right) {
  const int order = left.compare(right);
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

bool IsExact(const Value& value) { return value.type() <= Type::Long || value.Is(Type::Currency); }

int OrderNumbers(const Value& left, const Value& right) {
  if ((left.Is(Type::Currency) || right.Is(Type::Currency)) && IsExact(left) && IsExact(right)) {
    const std::int64_t a = ToCurrency(left);
    const std::int64_t b = ToCurrency(right);
    return a < b ? -1 : a > b ? 1 : 0;
  }
  return Order(ToDouble(left), ToDouble(right));
}

int OrderMixed(Literal literal, const Value& left, const Value& right) {
  const bool textLeft = left.Is(Type::String);
  const Literal numberSide = textLeft ? Literal::Right : Literal::Left;
  const Literal textSide = textLeft ? Literal::Left : Literal::Right;
  if (literal == numberSide || literal == Literal::Both) return OrderNumbers(left, right);
  if (literal == textSide) return OrderTexts(ToText(left), ToText(right));
  return textLeft ? 1 : -1;
}

void CheckComparable(const Value& value) {
  if (value.type() > Type::Date && !value.Is(Type::String)) RaiseNotPlain(value);
}

int OrderOf(Literal literal, const Value& left, const Value& right) {
  CheckComparable(left);
  CheckComparable(right);
  const bool textLeft = left.Is(Type::String);
  const bool textRight = right.Is(Type::String);
  if (textLeft && textRight) return OrderTexts(left.string(), right.string());
  if (textLeft && right.Is(Type::Empty)) return OrderTexts(left.string(), {});
  if (textRight && left.Is(Type::Empty)) return OrderTexts({}, right.string());
  if (textLeft || textRight) return OrderMixed(literal, left, right);
  return OrderNumbers(left, right);
}

}  // namespace

Value Not(const Value& operand) {
  if (operand.Is(Type::Null)) return operand;
  const Bits bits = BitsOf(operand);
  return FromBits(~bits.bits, bits.width);
}

Value And(const Value& left, const Value& right) {
  if (EitherNull(left, right)) return BesideNull(left, right, true);
  return Combine(left, right, [](std::int32_t a, std::int32_t b) { return a & b; });
}

Value Or(const Value& left, const Value& right) {
  if (EitherNull(left, right)) return BesideNull(left, right, false);
  return Combine(left, right, [](std::int32_t a, std::int32_t b) { return a | b; });
}

Value Xor(const Value& left, const Value& right) {
  if (EitherNull(left, right)) return Value::Null();
  return Combine(left, right, [](std::int32_t a, std::int32_t b) { return a ^ b; });
}

Value Eqv(const Value& left, const Value& right) {
  if (EitherNull(left, right)) return Value::Null();
  return Combine(left, right, [](std::int32_t a, std::int32_t b) { return ~(a ^ b); });
}

Value Imp(const Value& left, const Value& right) {
  if (left.Is(Type::Null)) {
    if (right.Is(Type::Null)) return right;
    return BitsOf(right).bits != 0 ? right : Value::Null();
  }
  if (right.Is(Type::Null)) {
    const Bits bits = BitsOf(left);
    return bits.bits == -1 ? Value::Null() : FromBits(~bits.bits, bits.width);
  }
  return Combine(left, right, [](std::int32_t a, std::int32_t b) { return ~a | b; });
}

Value Compare(Comparison comparison, Literal literal, const Value& left, const Value& right) {
  if (EitherNull(left, right)) return Value::Null();
  const int order = OrderOf(literal, left, right);
  switch (comparison) {
    case Comparison::Equal:
      return Value::Boolean(order == 0);
    case Comparison::NotEqual:
      return Value::Boolean(order != 0);
    case Comparison::Less:
      return Value::Boolean(order < 0);
    case Comparison::LessOrEqual:
      return Value::Boolean(order <= 0);
    case Comparison::Greater:
      return Value::Boolean(order > 0);
    case Comparison::GreaterOrEqual:
      break;
  }
  return Value::Boolean(order >= 0);
}

}  // namespace tessary::script
