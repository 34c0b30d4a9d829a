#include <cmath>

#include "script/library/Arguments.h"
#include "script/library/Clock.h"
#include "script/library/Tables.h"
#include "script/library/TextForms.h"

namespace tessary::script {
namespace {

Value CBool(Context&, Arguments arguments) { return Value::Boolean(ToBoolean(arguments[0])); }
Value CByte(Context&, Arguments arguments) {
  // True has all bits set, here as in every other width.
  if (arguments[0].Is(Type::Boolean)) return Value::Byte(arguments[0].boolean() ? 255 : 0);
  return Value::Byte(ToByte(arguments[0]));
}
Value CInt(Context&, Arguments arguments) { return Value::Integer(ToInteger(arguments[0])); }
Value CLng(Context&, Arguments arguments) { return Value::Long(ToLong(arguments[0])); }
Value CSng(Context&, Arguments arguments) { return Value::Single(ToSingle(arguments[0])); }
Value CStr(Context&, Arguments arguments) { return AsText(arguments[0]); }

Value CCur(Context&, Arguments arguments) {
  if (!arguments[0].Is(Type::String)) return Value::Currency(ToCurrency(arguments[0]));
  bool overflow = false;
  const auto amount = ParseCurrency(arguments[0].string(), overflow);
  if (!amount) Raise(kTypeMismatch, Describe(arguments[0]));
  if (overflow) Raise(kOverflow);
  return Value::Currency(*amount);
}

Value CDbl(Context&, Arguments arguments) {
  const double number = ToDouble(arguments[0]);
  if (arguments[0].Is(Type::String) && std::isinf(number)) Raise(kOverflow);
  return Value::Double(number);
}

Value CDate(Context& context, Arguments arguments) { return Value::Date(DateOf(context, arguments[0])); }

bool IsNumber(const Value& value) {
  switch (value.type()) {
    case Type::Empty:
    case Type::Boolean:
    case Type::Byte:
    case Type::Integer:
    case Type::Long:
    case Type::Single:
    case Type::Double:
    case Type::Currency:
      return true;
    case Type::String:
      return ParseNumber(value.string()).has_value();
    default:
      return false;
  }
}

// The value, or that of an object's default member where it has one.
Value PlainIfPossible(Context& context, const Value& value) {
  if (!value.Is(Type::Object) || value.IsNothing()) return value;
  try {
    return context.Plain(value);
  } catch (const ScriptError&) {
    return value;
  }
}

Value IsNumeric(Context& context, Arguments arguments) {
  return Value::Boolean(IsNumber(PlainIfPossible(context, arguments[0])));
}

Value IsDate(Context& context, Arguments arguments) {
  const Value value = PlainIfPossible(context, arguments[0]);
  return Value::Boolean(value.Is(Type::Date) ||
                        (value.Is(Type::String) && ParseDate(value.string(), ThisYear(context)).has_value()));
}

template <Type type>
Value IsType(Context&, Arguments arguments) {
  return Value::Boolean(arguments[0].Is(type));
}

struct TypeFacts {
  Type type;
  std::string_view name;
  std::int16_t number;
};

constexpr std::int16_t kObjectNumber = 9;
constexpr std::int16_t kVariantArrayNumber = 8204;

constexpr TypeFacts kTypes[] = {
    {Type::Empty, "Empty", 0},
    {Type::Null, "Null", 1},
    {Type::Integer, "Integer", 2},
    {Type::Long, "Long", 3},
    {Type::Single, "Single", 4},
    {Type::Double, "Double", 5},
    {Type::Currency, "Currency", 6},
    {Type::Date, "Date", 7},
    {Type::String, "String", 8},
    {Type::Error, "Error", 10},
    {Type::Boolean, "Boolean", 11},
    {Type::Byte, "Byte", 17},
    {Type::Object, "Nothing", kObjectNumber},
    {Type::Array, "Variant()", kVariantArrayNumber},
};

const TypeFacts& FactsOf(const Value& value) {
  for (const TypeFacts& facts : kTypes) {
    if (facts.type == value.type()) return facts;
  }
  return kTypes[0];
}

Value TypeName(Context&, Arguments arguments) {
  const Value& value = arguments[0];
  const bool instance = value.Is(Type::Object) && !value.IsNothing();
  return Value::String(instance ? value.object()->ClassName() : std::string(FactsOf(value).name));
}

Value VarType(Context& context, Arguments arguments) {
  return Value::Integer(FactsOf(PlainIfPossible(context, arguments[0])).number);
}

constexpr NativeFunction kFunctions[] = {
    {"CBool", 1, 1, CBool},
    {"CByte", 1, 1, CByte},
    {"CCur", 1, 1, CCur},
    {"CDate", 1, 1, CDate},
    {"CDbl", 1, 1, CDbl},
    {"CInt", 1, 1, CInt},
    {"CLng", 1, 1, CLng},
    {"CSng", 1, 1, CSng},
    {"CStr", 1, 1, CStr},
    {"IsArray", 1, 1, IsType<Type::Array>, true},
    {"IsDate", 1, 1, IsDate, true},
    {"IsEmpty", 1, 1, IsType<Type::Empty>, true},
    {"IsNull", 1, 1, IsType<Type::Null>, true},
    {"IsNumeric", 1, 1, IsNumeric, true},
    {"IsObject", 1, 1, IsType<Type::Object>, true},
    {"TypeName", 1, 1, TypeName, true},
    {"VarType", 1, 1, VarType, true},
};

}  // namespace

FunctionTable ConversionFunctions() { return kFunctions; }

}  // namespace tessary::script
