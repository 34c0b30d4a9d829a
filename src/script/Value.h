// The variant: one value of a script, with its subtype.
//
// 16 bytes. Strings, arrays and objects are shared by reference count; strings and arrays are values all the
// same: whoever changes one makes it his own first (MutableText, MutableArray). Text is UTF-8; what the
// language counts in UTF-16 units (Len, Mid, AscW) is up to the functions that count, which text().IsAscii()
// spares the conversion. A half of a surrogate pair is kept as its own three-byte sequence and joined with its
// other half by Append.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "script/Counted.h"

namespace tessary::script {

class Object;
class Array;

/// The subtypes, those with a counted part last.
enum class Type : std::uint8_t {
  Empty,
  Null,
  Boolean,
  Byte,
  Integer,  ///< 16 bits
  Long,     ///< 32 bits
  Single,
  Double,
  Currency,   ///< 64 bits, in ten-thousandths
  Date,       ///< days since 1899-12-30 as a double, the time of day in the fraction
  Error,      ///< an error code, or a left-out argument
  Reference,  ///< never seen by library functions: where a ByRef argument comes from
  String,
  Object,  ///< perhaps Nothing
  Array,
  ElementReference,  ///< like Reference, to an element of an array that it keeps alive and locked
};

/// The shared part of a string.
class Text final : public Counted {
 public:
  explicit Text(std::string text) : bytes_(std::move(text)) {}
  const std::string& bytes() const noexcept { return bytes_; }
  /// For changing; only when the caller holds the one reference.
  std::string& Mutable() noexcept {
    kind_ = Kind::Unknown;
    return bytes_;
  }
  /// True if bytes and UTF-16 units are the same. Asked once per text, then known.
  bool IsAscii() const noexcept;
  /// Appends in place, joining surrogate halves that meet. Raises error 7 beyond kMaxTextBytes.
  void Append(std::string_view tail);

 private:
  enum class Kind : std::uint8_t { Unknown, Ascii, Other };
  std::string bytes_;
  mutable Kind kind_ = Kind::Unknown;
};

class Value {
 public:
  Value() noexcept : type_(Type::Empty) { payload_.bits = 0; }
  Value(const Value& other) noexcept : type_(other.type_), payload_(other.payload_) {
    if (IsCounted() && payload_.counted) payload_.counted->AddReference();
  }
  Value(Value&& other) noexcept : type_(other.type_), payload_(other.payload_) {
    other.type_ = Type::Empty;
    other.payload_.bits = 0;
  }
  ~Value() {
    if (IsCounted() && payload_.counted) payload_.counted->Release();
  }
  Value& operator=(const Value& other) noexcept {
    if (this != &other) Value(other).Swap(*this);
    return *this;
  }
  Value& operator=(Value&& other) noexcept {
    Value(std::move(other)).Swap(*this);  // the old content ends after this value is whole again
    return *this;
  }
  void Swap(Value& other) noexcept {
    std::swap(type_, other.type_);
    std::swap(payload_, other.payload_);
  }

  static Value Null() noexcept { return Value(Type::Null, 0); }
  static Value Boolean(bool value) noexcept { return Value(Type::Boolean, value ? -1 : 0); }
  static Value Byte(std::uint8_t value) noexcept { return Value(Type::Byte, value); }
  static Value Integer(std::int16_t value) noexcept { return Value(Type::Integer, value); }
  static Value Long(std::int32_t value) noexcept { return Value(Type::Long, value); }
  static Value Single(float value) noexcept { return Value(Type::Single, static_cast<double>(value)); }
  static Value Double(double value) noexcept { return Value(Type::Double, value); }
  static Value Currency(std::int64_t tenThousandths) noexcept { return Value(Type::Currency, tenThousandths); }
  static Value Date(double days) noexcept { return Value(Type::Date, days); }
  static Value Error(std::int32_t code) noexcept { return Value(Type::Error, code); }
  /// A left-out argument, as in f(1, , 3).
  static Value Missing() noexcept { return Error(kMissing); }
  static Value String(std::string text) { return Value(Type::String, new Text(std::move(text))); }
  static Value String(const Ref<Text>& text) noexcept { return Value(Type::String, text.get()); }
  static Value Of(const Ref<script::Object>& object) noexcept;
  static Value Of(const Ref<script::Array>& array) noexcept;
  static Value Nothing() noexcept { return Value(Type::Object, static_cast<Counted*>(nullptr)); }
  /// The smallest of Integer, Long and Double that holds the number, as the language types whole results.
  static Value Whole(std::int64_t number) noexcept;

  [[nodiscard]] Type type() const noexcept { return type_; }
  [[nodiscard]] bool Is(Type type) const noexcept { return type_ == type; }
  [[nodiscard]] bool IsMissing() const noexcept { return type_ == Type::Error && payload_.whole == kMissing; }
  [[nodiscard]] bool IsNothing() const noexcept { return type_ == Type::Object && !payload_.counted; }

  // The content as it is, without conversion; the caller knows the type.
  [[nodiscard]] bool boolean() const noexcept { return payload_.whole != 0; }
  /// Boolean (-1 or 0), Byte, Integer, Long, Error; Currency in ten-thousandths.
  [[nodiscard]] std::int64_t whole() const noexcept { return payload_.whole; }
  /// Single, Double, Date.
  [[nodiscard]] double real() const noexcept { return payload_.real; }
  [[nodiscard]] const std::string& string() const noexcept { return text().bytes(); }
  [[nodiscard]] const Text& text() const noexcept { return static_cast<const Text&>(*payload_.counted); }
  [[nodiscard]] script::Object* object() const noexcept;  ///< null for Nothing
  [[nodiscard]] const script::Array& array() const noexcept;
  /// The string or the array, made this value's own if it was shared.
  Text& MutableText();
  script::Array& MutableArray();

  /// Variables handed on by reference.
  static Value ReferenceTo(Value& variable) noexcept;
  static Value ReferenceTo(script::Array& array, std::size_t element);
  [[nodiscard]] bool IsReference() const noexcept {
    return type_ == Type::Reference || type_ == Type::ElementReference;
  }
  /// The variable behind a reference, or this value itself.
  Value& Target() noexcept { return IsReference() ? Referenced() : *this; }
  [[nodiscard]] const Value& Target() const noexcept { return const_cast<Value*>(this)->Target(); }

 private:
  static constexpr std::int32_t kMissing = static_cast<std::int32_t>(0x80020004);

  Value(Type type, std::int64_t whole) noexcept : type_(type) { payload_.whole = whole; }
  Value(Type type, int whole) noexcept : type_(type) { payload_.whole = whole; }
  Value(Type type, double real) noexcept : type_(type) { payload_.real = real; }
  Value(Type type, Counted* counted) noexcept : type_(type) {
    payload_.counted = counted;
    if (counted) counted->AddReference();
  }
  [[nodiscard]] bool IsCounted() const noexcept { return type_ >= Type::String; }
  Value& Referenced() noexcept;

  Type type_;
  union Payload {
    std::uint64_t bits;
    std::int64_t whole;
    double real;
    Counted* counted;
    Value* variable;
  } payload_;
};

/// The longest string, in bytes: a runaway loop ends in error 7 before it takes the machine's memory.
inline constexpr std::size_t kMaxTextBytes = std::size_t{256} << 20;
/// The most elements of an array, for the same reason: 16 bytes each.
inline constexpr std::size_t kMaxElements = std::size_t{16} << 20;
/// The most dimensions of an array, the language's own limit.
inline constexpr int kMaxDimensions = 60;

/// The shared part of an array: elements of any subtype, lower bounds always 0.
class Array final : public Counted {
 public:
  /// An array without dimensions yet (Dim a()), whose bounds nobody may ask.
  Array() = default;
  /// One dimension with these elements; a fixed size only if made by Dim.
  explicit Array(std::vector<Value> elements);
  /// With the upper bounds of its dimensions, -1 for an empty one, all elements Empty. Raises error 9 for a
  /// lower bound, 7 beyond kMaxElements.
  explicit Array(const std::vector<std::int32_t>& upperBounds, bool fixed = false);

  [[nodiscard]] int dimensions() const noexcept { return static_cast<int>(sizes_.size()); }
  /// The upper bound of a dimension counted from 0, which must exist.
  [[nodiscard]] std::int32_t UpperBound(int dimension) const noexcept {
    return sizes_[static_cast<std::size_t>(dimension)] - 1;
  }
  /// All elements, the first index running fastest.
  std::vector<Value>& elements() noexcept { return elements_; }
  [[nodiscard]] const std::vector<Value>& elements() const noexcept { return elements_; }
  /// The place of an element; raises error 9 for a wrong number of indices or one out of bounds.
  std::size_t Position(const std::int32_t* indices, std::size_t count) const;
  /// ReDim Preserve: only the last dimension's bound may differ, error 9 otherwise.
  void Resize(const std::vector<std::int32_t>& upperBounds);
  [[nodiscard]] Ref<Array> Copy() const;

  /// Made by Dim with bounds: Erase empties its elements, ReDim is refused.
  [[nodiscard]] bool fixed() const noexcept { return fixed_; }
  /// Locked while an element is on loan by reference or the array is walked: ReDim and Erase are refused.
  [[nodiscard]] bool locked() const noexcept { return locks_ > 0; }
  void Lock() noexcept { ++locks_; }
  void Unlock() noexcept { --locks_; }

 private:
  std::vector<std::int32_t> sizes_;
  std::vector<Value> elements_;
  int locks_ = 0;
  bool fixed_ = false;
};

inline const Array& Value::array() const noexcept { return static_cast<const Array&>(*payload_.counted); }

}  // namespace tessary::script
