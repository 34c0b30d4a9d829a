#include "script/Value.h"

#include <algorithm>
#include <limits>

#include "script/Object.h"
#include "script/ScriptError.h"

namespace tessary::script {

namespace {

// An element on loan: keeps the array alive and its shape as it is.
class ElementLoan final : public Counted {
 public:
  ElementLoan(Array& array, std::size_t element) : array_(&array), element_(element) { array.Lock(); }
  ~ElementLoan() override { array_->Unlock(); }
  Value& Element() noexcept { return array_->elements()[element_]; }

 private:
  Ref<Array> array_;
  std::size_t element_;
};

bool IsSurrogate(std::string_view bytes, unsigned char firstOfRange) {
  const auto second = static_cast<unsigned char>(bytes[1]);
  return static_cast<unsigned char>(bytes[0]) == 0xED && second >= firstOfRange && second < firstOfRange + 0x10;
}

unsigned SurrogateBits(std::string_view bytes) {
  return (static_cast<unsigned>(bytes[1]) & 0x0FU) << 6 | (static_cast<unsigned>(bytes[2]) & 0x3FU);
}

// The pair as one character of four bytes.
void AppendPair(std::string& text, std::string_view high, std::string_view low) {
  const unsigned point = 0x10000 + (SurrogateBits(high) << 10) + SurrogateBits(low);
  text += static_cast<char>(0xF0 | point >> 18);
  text += static_cast<char>(0x80 | (point >> 12 & 0x3F));
  text += static_cast<char>(0x80 | (point >> 6 & 0x3F));
  text += static_cast<char>(0x80 | (point & 0x3F));
}

}  // namespace

bool Text::IsAscii() const noexcept {
  if (kind_ == Kind::Unknown) {
    const bool ascii =
        std::ranges::all_of(bytes_, [](char byte) { return static_cast<signed char>(byte) >= 0; });
    kind_ = ascii ? Kind::Ascii : Kind::Other;
  }
  return kind_ == Kind::Ascii;
}

void Text::Append(std::string_view tail) {
  if (tail.empty()) return;
  if (tail.size() > kMaxTextBytes - std::min(bytes_.size(), kMaxTextBytes)) Raise(kOutOfMemory);
  if (kind_ == Kind::Ascii && tail.size() < 16) {
    for (const char byte : tail) {
      if (static_cast<signed char>(byte) < 0) kind_ = Kind::Other;
    }
  } else if (kind_ == Kind::Ascii) {
    kind_ = Kind::Unknown;
  }
  if (tail.size() >= 3 && IsSurrogate(tail, 0xB0) && bytes_.size() >= 3) {
    const std::string high = bytes_.substr(bytes_.size() - 3);
    if (IsSurrogate(high, 0xA0)) {
      bytes_.resize(bytes_.size() - 3);
      AppendPair(bytes_, high, tail);
      tail.remove_prefix(3);
    }
  }
  bytes_.append(tail);
}

Value Value::Of(const Ref<script::Object>& object) noexcept {
  return Value(Type::Object, static_cast<Counted*>(object.get()));
}

Value Value::Of(const Ref<script::Array>& array) noexcept { return Value(Type::Array, array.get()); }

Value Value::Whole(std::int64_t number) noexcept {
  if (number == static_cast<std::int16_t>(number)) return Integer(static_cast<std::int16_t>(number));
  if (number == static_cast<std::int32_t>(number)) return Long(static_cast<std::int32_t>(number));
  return Double(static_cast<double>(number));
}

Text& Value::MutableText() {
  if (payload_.counted->references() > 1) *this = String(string());
  return static_cast<Text&>(*payload_.counted);
}

script::Array& Value::MutableArray() {
  if (payload_.counted->references() > 1 && !array().locked()) *this = Of(array().Copy());
  return static_cast<script::Array&>(*payload_.counted);
}

Value Value::ReferenceTo(Value& variable) noexcept {
  Value reference(Type::Reference, 0);
  reference.payload_.variable = &variable;
  return reference;
}

Value Value::ReferenceTo(script::Array& array, std::size_t element) {
  return Value(Type::ElementReference, static_cast<Counted*>(new ElementLoan(array, element)));
}

Value& Value::Referenced() noexcept {
  if (type_ == Type::Reference) return *payload_.variable;
  return static_cast<ElementLoan&>(*payload_.counted).Element();
}

Array::Array(std::vector<Value> elements) : elements_(std::move(elements)) {
  sizes_ = {static_cast<std::int32_t>(elements_.size())};
}

Array::Array(const std::vector<std::int32_t>& upperBounds, bool fixed) : fixed_(fixed) {
  if (upperBounds.size() > kMaxDimensions) Raise(kSubscript);
  std::size_t count = 1;
  for (const std::int32_t bound : upperBounds) {
    if (bound < -1) Raise(kSubscript);
    if (bound == std::numeric_limits<std::int32_t>::max()) Raise(kOutOfMemory);
    const auto size = static_cast<std::size_t>(bound) + 1;
    if (size != 0 && count > kMaxElements / size) Raise(kOutOfMemory);
    count *= size;
    sizes_.push_back(bound + 1);
  }
  elements_.resize(count);
}

std::size_t Array::Position(const std::int32_t* indices, std::size_t count) const {
  if (count != sizes_.size()) Raise(kSubscript);
  std::size_t position = 0;
  for (std::size_t i = count; i-- > 0;) {
    if (indices[i] < 0 || indices[i] >= sizes_[i])
      Raise(kSubscript, "[number: " + std::to_string(indices[i]) + "]");
    position = position * static_cast<std::size_t>(sizes_[i]) + static_cast<std::size_t>(indices[i]);
  }
  if (count == 0) Raise(kSubscript);
  return position;
}

void Array::Resize(const std::vector<std::int32_t>& upperBounds) {
  if (upperBounds.size() != sizes_.size() && !sizes_.empty()) Raise(kSubscript);
  for (std::size_t i = 0; i + 1 < sizes_.size(); ++i) {
    if (upperBounds[i] + 1 != sizes_[i]) Raise(kSubscript);
  }
  Array shape(upperBounds);
  elements_.resize(shape.elements_.size());
  sizes_ = shape.sizes_;
}

Ref<Array> Array::Copy() const {
  auto copy = Make<Array>();
  copy->sizes_ = sizes_;
  copy->elements_ = elements_;
  copy->fixed_ = fixed_;
  return copy;
}

}  // namespace tessary::script
