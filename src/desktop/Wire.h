// How values become bytes on their way between gui and its helper, and values again. What a structure is made
// of is told once, by an overload of Fields that works both ways.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace tessary::wire {

/// Puts values at the end of `bytes`.
class Writer {
 public:
  std::string bytes{};

  template <class... Values>
  void operator()(Values&... values) {
    (Put(values), ...);
  }

 private:
  void Put(std::string& text) {
    PutRaw(static_cast<std::uint32_t>(text.size()));
    bytes += text;
  }
  template <class Item>
  void Put(std::vector<Item>& items) {
    PutRaw(static_cast<std::uint32_t>(items.size()));
    for (Item& item : items) Put(item);
  }
  template <class Value>
  void Put(Value& value) {
    if constexpr (std::is_arithmetic_v<Value> || std::is_enum_v<Value>)
      PutRaw(value);
    else
      Fields(*this, value);
  }
  template <class Value>
  void PutRaw(Value value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
  }
};

/// Takes values from the beginning of a text; what it does not hold is read as nothing.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  template <class... Values>
  void operator()(Values&... values) {
    (Get(values), ...);
  }

 private:
  void Get(std::string& text) {
    const std::size_t size = Count();
    text = rest_.substr(0, size);
    rest_.remove_prefix(size);
  }
  template <class Item>
  void Get(std::vector<Item>& items) {
    items.resize(Count());  // an item takes a byte at least
    for (Item& item : items) Get(item);
  }
  template <class Value>
  void Get(Value& value) {
    if constexpr (std::is_arithmetic_v<Value> || std::is_enum_v<Value>)
      GetRaw(value);
    else
      Fields(*this, value);
  }
  template <class Value>
  void GetRaw(Value& value) {
    value = {};
    if (rest_.size() < sizeof value) return rest_.remove_prefix(rest_.size());
    std::memcpy(&value, rest_.data(), sizeof value);
    rest_.remove_prefix(sizeof value);
  }
  std::size_t Count() {
    std::uint32_t count = 0;
    GetRaw(count);
    return count < rest_.size() ? count : rest_.size();
  }

  std::string_view rest_;
};

template <class Value>
std::string Encode(Value value) {
  Writer writer;
  writer(value);
  return std::move(writer.bytes);
}

template <class Value>
Value Decode(std::string_view bytes) {
  Value value{};
  Reader reader(bytes);
  reader(value);
  return value;
}

}  // namespace tessary::wire
