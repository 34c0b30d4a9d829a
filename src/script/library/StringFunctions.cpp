#include <algorithm>

#include "script/library/Arguments.h"
#include "script/library/Tables.h"
#include "script/library/Windows1252.h"

namespace tessary::script {
namespace {

// A length or count that must not be negative.
std::size_t CountOf(const Value& value) {
  const std::int32_t count = ToLong(value);
  if (count < 0) Raise(kInvalidCall);
  return static_cast<std::size_t>(count);
}

Value Len(Context&, Arguments arguments) {
  if (arguments[0].Is(Type::Null)) return Value::Null();
  return LongOf(LengthOf(AsText(arguments[0])));
}

Value Left(Context&, Arguments arguments) {
  const std::size_t count = CountOf(arguments[1]);
  if (arguments[0].Is(Type::Null)) return Value::Null();
  return PartOfText(AsText(arguments[0]), 0, count);
}

Value Right(Context&, Arguments arguments) {
  const std::size_t count = CountOf(arguments[1]);
  if (arguments[0].Is(Type::Null)) return Value::Null();
  const Value text = AsText(arguments[0]);
  const std::size_t length = LengthOf(text);
  return count >= length ? text : PartOfText(text, length - count, count);
}

Value Mid(Context&, Arguments arguments) {
  const std::int32_t start = ToLong(arguments[1]);
  const std::size_t count = Given(arguments, 2) ? CountOf(arguments[2]) : std::string::npos;
  if (start < 1) Raise(kInvalidCall);
  if (arguments[0].Is(Type::Null)) return Value::Null();
  return PartOfText(AsText(arguments[0]), static_cast<std::size_t>(start) - 1, count);
}

template <std::string (*Map)(std::string_view)>
Value Mapped(Context&, Arguments arguments) {
  if (arguments[0].Is(Type::Null)) return Value::Null();
  return Text8(Map(ToText(arguments[0])));
}

std::string TrimmedLeft(std::string_view text) {
  return std::string(text.substr(std::min(text.find_first_not_of(' '), text.size())));
}

std::string TrimmedRight(std::string_view text) {
  return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

std::string Trimmed(std::string_view text) { return TrimmedLeft(TrimmedRight(text)); }

Value Space(Context&, Arguments arguments) {
  const std::size_t count = CountOf(arguments[0]);
  CheckTextSize(count);
  return Value::String(std::string(count, ' '));
}

Value StringOf(Context&, Arguments arguments) {
  if (arguments[0].Is(Type::Null) || arguments[1].Is(Type::Null)) return Value::Null();
  const std::size_t count = CountOf(arguments[0]);
  std::string unit;
  if (arguments[1].Is(Type::String)) {
    if (arguments[1].string().empty()) Raise(kInvalidCall);
    unit = PartOfText(arguments[1], 0, 1).string();
  } else {
    const char16_t character = FromWindows1252(static_cast<unsigned char>(ToLong(arguments[1]) & 0xFF));
    unit = ToUtf8({&character, 1});
  }
  CheckTextSize(count > kMaxTextBytes ? count : count * unit.size());
  std::string text;
  text.reserve(count * unit.size());
  for (std::size_t i = 0; i < count; ++i) text += unit;
  return Value::String(std::move(text));
}

Value StrReverse(Context&, Arguments arguments) {
  const Value text = AsText(arguments[0]);
  if (text.text().IsAscii()) return Value::String(std::string(text.string().rbegin(), text.string().rend()));
  std::u16string units = ToUtf16(text.string());
  std::reverse(units.begin(), units.end());
  return Text8(ToUtf8(units));
}

Value StrComp(Context&, Arguments arguments) {
  const bool ignoreCase = IgnoresCase(arguments, 2);
  if (arguments[0].Is(Type::Null) || arguments[1].Is(Type::Null)) return Value::Null();
  const int order = CompareText(ToText(arguments[0]), ToText(arguments[1]), ignoreCase);
  return Value::Integer(static_cast<std::int16_t>(order));
}

// InStr([start, ] text, wanted [, compare]): two arguments are never a start.
Value InStr(Context&, Arguments arguments) {
  const bool hasStart = arguments.size() > 2;
  const std::int32_t start = hasStart ? LongOr(arguments, 0, 1) : 1;
  const bool ignoreCase = IgnoresCase(arguments, 3);
  if (start < 1) Raise(kInvalidCall);
  const Value& first = arguments[hasStart ? 1 : 0];
  const Value& second = arguments[hasStart ? 2 : 1];
  if (first.Is(Type::Null) || second.Is(Type::Null)) return Value::Null();
  return WithUnits(AsText(first), AsText(second), [&](auto text, auto wanted) {
    const auto from = static_cast<std::size_t>(start) - 1;
    if (from >= text.size()) return Value::Long(0);
    if (wanted.empty()) return Value::Long(start);
    const std::size_t found = Searcher(text, wanted, ignoreCase).Find(from);
    return found == text.npos ? Value::Long(0) : LongOf(found + 1);
  });
}

// The match has to end at `start` or before it.
Value InStrRev(Context&, Arguments arguments) {
  const Value first = AsText(arguments[0]), second = AsText(arguments[1]);
  const std::int32_t start = LongOr(arguments, 2, -1);
  const bool ignoreCase = IgnoresCase(arguments, 3);
  if (start == 0 || start < -1) Raise(kInvalidCall);
  return WithUnits(first, second, [&](auto text, auto wanted) {
    const std::size_t end = start == -1 ? text.size() : static_cast<std::size_t>(start);
    if (text.empty() || end > text.size()) return Value::Long(0);
    if (wanted.empty()) return LongOf(end);
    if (wanted.size() > end) return Value::Long(0);
    const std::size_t found = Searcher(text, wanted, ignoreCase).FindLast(end - wanted.size());
    return found == text.npos ? Value::Long(0) : LongOf(found + 1);
  });
}

Value Replace(Context&, Arguments arguments) {
  const Value whole = AsText(arguments[0]), wanted = AsText(arguments[1]);
  const std::string replacement = ToText(arguments[2]);
  const std::int32_t start = LongOr(arguments, 3, 1);
  const std::int32_t count = LongOr(arguments, 4, -1);
  const bool ignoreCase = IgnoresCase(arguments, 5);
  if (start < 1 || count < -1) Raise(kInvalidCall);
  if (wanted.string().empty() && start == 1) return whole;
  return WithUnits(whole, wanted, [&](auto text, auto search) {
    text.remove_prefix(std::min(static_cast<std::size_t>(start) - 1, text.size()));
    if (search.empty()) return Text8(TextOf(text));
    const Searcher searcher(text, search, ignoreCase);
    std::string result;
    std::size_t at = 0;
    for (std::int32_t left = count; left != 0; --left) {
      const std::size_t found = searcher.Find(at);
      if (found == text.npos) break;
      result += TextOf(text.substr(at, found - at));
      result += replacement;
      CheckTextSize(result.size());
      at = found + search.size();
    }
    return Text8(result + TextOf(text.substr(at)));
  });
}

constexpr NativeFunction kFunctions[] = {
    {"InStr", 2, 4, InStr},
    {"InStrRev", 2, 4, InStrRev},
    {"LCase", 1, 1, Mapped<LowerCase>},
    {"LTrim", 1, 1, Mapped<TrimmedLeft>},
    {"Left", 2, 2, Left},
    {"Len", 1, 1, Len},
    {"Mid", 2, 3, Mid},
    {"RTrim", 1, 1, Mapped<TrimmedRight>},
    {"Replace", 3, 6, Replace},
    {"Right", 2, 2, Right},
    {"Space", 1, 1, Space},
    {"StrComp", 2, 3, StrComp},
    {"StrReverse", 1, 1, StrReverse},
    {"String", 2, 2, StringOf},
    {"Trim", 1, 1, Mapped<Trimmed>},
    {"UCase", 1, 1, Mapped<UpperCase>},
};

}  // namespace

FunctionTable StringFunctions() { return kFunctions; }

}  // namespace tessary::script
