#include "monitor/Ascii85.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace tessary {

namespace {

constexpr std::size_t kGroup = 4, kCode = 5;
constexpr std::size_t kGroupsPerLine = 48;
constexpr std::uint32_t kBase = 85, kBase2 = kBase * kBase;

constexpr char Digit(std::uint32_t value) { return static_cast<char>('!' + value); }

using DigitPair = std::array<char, 2>;

constexpr std::array<DigitPair, kBase2> MakePairs() {
  std::array<DigitPair, kBase2> pairs{};
  for (std::uint32_t value = 0; value < kBase2; ++value)
    pairs[value] = {Digit(value / kBase), Digit(value % kBase)};
  return pairs;
}

constexpr std::array<DigitPair, kBase2> kPairs = MakePairs();

std::uint32_t Load(const char* group) {
  std::array<unsigned char, kGroup> bytes;
  std::memcpy(bytes.data(), group, kGroup);
  return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 |
         bytes[3];
}

/// Writes the five digits of `value`, two at a time.
void PutDigits(char* out, std::uint32_t value) {
  const std::uint32_t high = value / kBase2;
  *out = Digit(high / kBase2);
  std::memcpy(out + 1, kPairs[high % kBase2].data(), 2);
  std::memcpy(out + 3, kPairs[value % kBase2].data(), 2);
}

}  // namespace

void Ascii85Encoder::Append(std::string_view bytes) {
  if (!rest_.empty()) {
    const std::size_t missing = std::min(kGroup - rest_.size(), bytes.size());
    rest_ += bytes.substr(0, missing);
    bytes.remove_prefix(missing);
    if (rest_.size() < kGroup) return;
    PutGroups(rest_);
  }
  const std::size_t whole = bytes.size() / kGroup * kGroup;
  PutGroups(bytes.substr(0, whole));
  rest_ = bytes.substr(whole);
}

void Ascii85Encoder::Finish() {
  std::string end = groupsInLine_ == 0 ? " " : "";
  if (!rest_.empty()) {
    std::array<char, kGroup> group{};
    std::array<char, kCode> code{};
    rest_.copy(group.data(), kGroup);
    PutDigits(code.data(), Load(group.data()));
    end.append(code.data(), rest_.size() + 1);
  }
  writer_.Append(end + "~>\r\n");
}

void Ascii85Encoder::PutGroups(std::string_view bytes) {
  const char* from = bytes.data();
  const char* const end = from + bytes.size();
  while (from != end) {
    const std::size_t count =
        std::min(static_cast<std::size_t>(end - from) / kGroup, kGroupsPerLine - groupsInLine_);
    char* const start = writer_.Reserve();
    char* out = start;
    if (groupsInLine_ == 0) *out++ = ' ';
    for (std::size_t group = 0; group < count; ++group, from += kGroup) {
      if (const std::uint32_t value = Load(from)) {
        PutDigits(out, value);
        out += kCode;
      } else {
        *out++ = 'z';
      }
    }
    groupsInLine_ = (groupsInLine_ + count) % kGroupsPerLine;
    if (groupsInLine_ == 0) {
      *out++ = '\r';
      *out++ = '\n';
    }
    writer_.Commit(static_cast<std::size_t>(out - start));
  }
}

}  // namespace tessary
