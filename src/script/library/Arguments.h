// How library functions read their arguments and make their results.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "script/Conversions.h"
#include "script/NativeFunction.h"
#include "script/ScriptError.h"
#include "script/Value.h"
#include "script/library/Utf16.h"

namespace tessary::script {

using Arguments = std::span<Value>;

/// True if the argument was given and not left out.
inline bool Given(Arguments arguments, std::size_t index) {
  return index < arguments.size() && !arguments[index].IsMissing();
}

inline std::int32_t LongOr(Arguments arguments, std::size_t index, std::int32_t otherwise) {
  return Given(arguments, index) ? ToLong(arguments[index]) : otherwise;
}

inline bool BooleanOr(Arguments arguments, std::size_t index, bool otherwise) {
  return Given(arguments, index) ? ToBoolean(arguments[index]) : otherwise;
}

/// A whole number in a range; raises 5 outside of it.
inline std::int32_t LongWithin(Arguments arguments, std::size_t index, std::int32_t otherwise,
                               std::int32_t least, std::int32_t most) {
  const std::int32_t number = LongOr(arguments, index, otherwise);
  if (number < least || number > most) Raise(kInvalidCall);
  return number;
}

/// vbBinaryCompare (0) or vbTextCompare (1): true for the latter. Others raise 5.
inline bool IgnoresCase(Arguments arguments, std::size_t index) {
  return LongWithin(arguments, index, 0, 0, 1) == 1;
}

/// Raises 7 for a text that would be longer than any may be.
inline void CheckTextSize(std::size_t bytes) {
  if (bytes > kMaxTextBytes) Raise(kOutOfMemory);
}

inline Value Text8(std::string text) {
  CheckTextSize(text.size());
  return Value::String(std::move(text));
}

/// The argument as a text whose units can be counted: a string as it is, anything else converted.
inline Value AsText(const Value& value) {
  return value.Is(Type::String) ? value : Value::String(ToText(value));
}

inline std::size_t LengthOf(const Value& text) {
  return text.text().IsAscii() ? text.string().size() : Utf16Length(text.string());
}

inline Value PartOfText(const Value& text, std::size_t start, std::size_t count) {
  const std::string& bytes = text.string();
  if (!text.text().IsAscii()) return Value::String(Substring(bytes, start, count));
  return Value::String(start < bytes.size() ? bytes.substr(start, count) : std::string());
}

inline Value LongOf(std::size_t number) { return Value::Long(static_cast<std::int32_t>(number)); }

/// Calls `work` with the units of both texts: bytes when both are ASCII, else UTF-16.
template <class Work>
auto WithUnits(const Value& first, const Value& second, Work work) {
  if (first.text().IsAscii() && second.text().IsAscii()) {
    return work(std::string_view(first.string()), std::string_view(second.string()));
  }
  const std::u16string one = ToUtf16(first.string()), two = ToUtf16(second.string());
  return work(std::u16string_view(one), std::u16string_view(two));
}

inline std::string TextOf(std::string_view units) { return std::string(units); }
inline std::string TextOf(std::u16string_view units) { return ToUtf8(units); }

/// Looks for one text in another, with or without regard to case. Positions are those of the original text.
template <class Unit>
class Searcher {
 public:
  using View = std::basic_string_view<Unit>;
  Searcher(View text, View wanted, bool ignoreCase) : text_(text), wanted_(wanted) {
    if (!ignoreCase) return;
    foldedText_ = Fold(text);
    foldedWanted_ = Fold(wanted);
    text_ = foldedText_;
    wanted_ = foldedWanted_;
  }
  Searcher(const Searcher&) = delete;
  Searcher& operator=(const Searcher&) = delete;

  [[nodiscard]] std::size_t Find(std::size_t from) const { return text_.find(wanted_, from); }
  /// The last match that starts at `from` or earlier.
  [[nodiscard]] std::size_t FindLast(std::size_t from) const { return text_.rfind(wanted_, from); }

 private:
  static std::basic_string<Unit> Fold(View text) {
    std::basic_string<Unit> folded(text);
    for (Unit& unit : folded) unit = static_cast<Unit>(LowerOf(static_cast<char16_t>(unit)));
    return folded;
  }

  std::basic_string<Unit> foldedText_, foldedWanted_;
  View text_, wanted_;
};

}  // namespace tessary::script
