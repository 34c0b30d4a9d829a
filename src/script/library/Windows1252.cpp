#include "script/library/Windows1252.h"

#include <algorithm>
#include <array>

#include "script/library/Utf16.h"

namespace tessary::script {
namespace {

constexpr std::array<char16_t, 32> kFrom0x80 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::u16string DecodeUtf16(std::string_view bytes, bool bigEndian) {
  std::u16string units;
  units.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<unsigned char>(bytes[i]), second = static_cast<unsigned char>(bytes[i + 1]);
    units.push_back(static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first));
  }
  return units;
}

}  // namespace

char16_t FromWindows1252(unsigned char byte) {
  return byte >= 0x80 && byte < 0xA0 ? kFrom0x80[byte - 0x80U] : byte;
}

unsigned char ToWindows1252(char16_t unit) {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<unsigned char>(unit);
  const auto* const found = std::find(kFrom0x80.begin(), kFrom0x80.end(), unit);
  return found == kFrom0x80.end() ? '?' : static_cast<unsigned char>(0x80 + (found - kFrom0x80.begin()));
}

std::u16string DecodeFile(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE")) return DecodeUtf16(bytes.substr(2), false);
  if (bytes.starts_with("\xFE\xFF")) return DecodeUtf16(bytes.substr(2), true);
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  std::u16string units = ToUtf16(bytes);
  if (ToUtf8(units) == bytes) return units;
  units.resize(bytes.size());
  std::transform(bytes.begin(), bytes.end(), units.begin(),
                 [](char byte) { return FromWindows1252(static_cast<unsigned char>(byte)); });
  return units;
}

}  // namespace tessary::script
