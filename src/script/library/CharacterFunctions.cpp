#include <array>

#include "script/library/Arguments.h"
#include "script/library/Tables.h"
#include "script/library/Windows1252.h"

namespace tessary::script {
namespace {

Value OneUnit(char16_t unit) { return Value::String(ToUtf8({&unit, 1})); }

char16_t FirstUnit(const Value& value) {
  const std::string text = ToText(value);
  if (text.empty()) Raise(kInvalidCall);
  return ToUtf16(std::string_view(text).substr(0, 4))[0];
}

Value Asc(Context&, Arguments arguments) { return Value::Integer(ToWindows1252(FirstUnit(arguments[0]))); }

Value AscB(Context&, Arguments arguments) {
  return Value::Integer(static_cast<std::int16_t>(FirstUnit(arguments[0]) & 0xFF));
}

Value AscW(Context&, Arguments arguments) {
  return Value::Integer(static_cast<std::int16_t>(FirstUnit(arguments[0])));
}

Value Chr(Context&, Arguments arguments) {
  return OneUnit(FromWindows1252(static_cast<unsigned char>(LongWithin(arguments, 0, 0, 0, 255))));
}

Value ChrB(Context&, Arguments arguments) {
  return OneUnit(static_cast<char16_t>(LongWithin(arguments, 0, 0, 0, 255)));
}

Value ChrW(Context&, Arguments arguments) {
  return OneUnit(static_cast<char16_t>(LongWithin(arguments, 0, 0, -32768, 65535)));
}

// The bytes of a text in memory, two for each unit with the lower one first.
std::string BytesOf(const Value& value) {
  std::string bytes;
  for (const char16_t unit : ToUtf16(ToText(value))) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

// An odd byte at the end becomes a unit of its own.
Value FromBytes(std::string_view bytes) {
  std::u16string units;
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    const auto high = static_cast<unsigned char>(i + 1 < bytes.size() ? bytes[i + 1] : '\0');
    units += static_cast<char16_t>(high << 8 | low);
  }
  return Text8(ToUtf8(units));
}

Value LenB(Context&, Arguments arguments) {
  if (arguments[0].Is(Type::Null)) return Value::Null();
  return LongOf(2 * LengthOf(AsText(arguments[0])));
}

Value PartOfBytes(Arguments arguments, std::size_t start, std::size_t count) {
  const std::string bytes = BytesOf(arguments[0]);
  return FromBytes(start < bytes.size() ? std::string_view(bytes).substr(start, count) : std::string_view());
}

constexpr std::int32_t kMost = 0x7FFFFFFF;

Value LeftB(Context&, Arguments arguments) {
  const std::int32_t count = LongWithin(arguments, 1, 0, 0, kMost);
  return arguments[0].Is(Type::Null) ? Value::Null()
                                     : PartOfBytes(arguments, 0, static_cast<std::size_t>(count));
}

Value RightB(Context&, Arguments arguments) {
  const auto count = static_cast<std::size_t>(LongWithin(arguments, 1, 0, 0, kMost));
  if (arguments[0].Is(Type::Null)) return Value::Null();
  const std::size_t size = 2 * LengthOf(AsText(arguments[0]));
  return PartOfBytes(arguments, size - std::min(count, size), count);
}

Value MidB(Context&, Arguments arguments) {
  const std::int32_t start = LongWithin(arguments, 1, 0, 1, kMost);
  const std::int32_t count = LongWithin(arguments, 2, kMost, 0, kMost);
  if (arguments[0].Is(Type::Null)) return Value::Null();
  return PartOfBytes(arguments, static_cast<std::size_t>(start) - 1, static_cast<std::size_t>(count));
}

Value InStrB(Context&, Arguments arguments) {
  const bool hasStart = arguments.size() > 2;
  const std::int32_t start = hasStart ? LongWithin(arguments, 0, 1, 1, kMost) : 1;
  const Value& text = arguments[hasStart ? 1 : 0];
  const Value& wanted = arguments[hasStart ? 2 : 1];
  if (text.Is(Type::Null) || wanted.Is(Type::Null)) return Value::Null();
  const std::string bytes = BytesOf(text);
  const std::size_t found = bytes.find(BytesOf(wanted), static_cast<std::size_t>(start) - 1);
  return found >= bytes.size() ? Value::Long(0) : LongOf(found + 1);
}

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

Value Escape(Context&, Arguments arguments) {
  constexpr std::string_view kPlain = "@*_+-./";
  if (arguments[0].Is(Type::Null)) return Value::Null();
  std::string escaped;
  for (const char16_t unit : ToUtf16(ToText(arguments[0]))) {
    const bool letter = (unit >= u'0' && unit <= u'9') || (LowerOf(unit) >= u'a' && LowerOf(unit) <= u'z');
    if (letter || (unit < 0x80 && kPlain.find(static_cast<char>(unit)) != kPlain.npos)) {
      escaped += static_cast<char>(unit);
      continue;
    }
    escaped += unit > 0xFF ? "%u" : "%";
    for (int shift = unit > 0xFF ? 12 : 4; shift >= 0; shift -= 4)
      escaped += kHexDigits[(unit >> shift) & 0xFU];
  }
  return Text8(std::move(escaped));
}

// The value of `count` hexadecimal digits at `at`; -1 if there are not as many.
int HexAt(std::u16string_view text, std::size_t at, std::size_t count) {
  int value = 0;
  for (std::size_t i = at; i < at + count; ++i) {
    const char16_t unit = i < text.size() ? UpperOf(text[i]) : u'\0';
    const std::size_t digit =
        unit < 0x80 && unit != 0 ? kHexDigits.find(static_cast<char>(unit)) : kHexDigits.npos;
    if (digit == kHexDigits.npos) return -1;
    value = value * 16 + static_cast<int>(digit);
  }
  return value;
}

Value Unescape(Context&, Arguments arguments) {
  if (arguments[0].Is(Type::Null)) return Value::Null();
  const std::u16string text = ToUtf16(ToText(arguments[0]));
  std::u16string units;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool wide = text[i] == u'%' && i + 1 < text.size() && LowerOf(text[i + 1]) == u'u';
    const std::size_t skip = wide ? 2 : 1, digits = wide ? 4 : 2;
    const int value = text[i] == u'%' ? HexAt(text, i + skip, digits) : -1;
    units += value < 0 ? text[i] : static_cast<char16_t>(value);
    if (value >= 0) i += skip + digits - 1;
  }
  return Text8(ToUtf8(units));
}

constexpr NativeFunction kFunctions[] = {
    {"Asc", 1, 1, Asc},           {"AscB", 1, 1, AscB}, {"AscW", 1, 1, AscW},     {"Chr", 1, 1, Chr},
    {"ChrB", 1, 1, ChrB},         {"ChrW", 1, 1, ChrW}, {"Escape", 1, 1, Escape}, {"InStrB", 2, 4, InStrB},
    {"LeftB", 2, 2, LeftB},       {"LenB", 1, 1, LenB}, {"MidB", 2, 3, MidB},     {"RightB", 2, 2, RightB},
    {"Unescape", 1, 1, Unescape},
};

}  // namespace

FunctionTable CharacterFunctions() { return kFunctions; }

}  // namespace tessary::script
