#include "script/library/Utf16.h"

#include <algorithm>

namespace tessary::script {
namespace {

constexpr char16_t kReplacement = 0xFFFD;

bool IsTrail(std::string_view text, std::size_t at) {
  return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
}

// The code point at `at`, which moves behind it. Lone surrogates are accepted, overlong forms are not.
char32_t Decode(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t index) {
    return static_cast<char32_t>(static_cast<unsigned char>(text[index]));
  };
  const char32_t lead = byte(at);
  const std::size_t trails = lead < 0x80   ? 0
                             : lead < 0xC2 ? 9
                             : lead < 0xE0 ? 1
                             : lead < 0xF0 ? 2
                             : lead < 0xF5 ? 3
                                           : 9;
  const std::size_t start = at++;
  if (trails == 0) return lead;
  if (trails == 9) return kReplacement;
  char32_t code = lead & (0x3FU >> trails);
  for (std::size_t i = 1; i <= trails; ++i) {
    if (!IsTrail(text, start + i)) return kReplacement;
    code = (code << 6) | (byte(start + i) & 0x3F);
  }
  if ((trails == 2 && code < 0x800) || (trails == 3 && (code < 0x10000 || code > 0x10FFFF)))
    return kReplacement;
  at = start + trails + 1;
  return code;
}

void Encode(char32_t code, std::string& out) {
  const auto put = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | (code >> 6));
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | (code >> 12));
    put(0x80 | ((code >> 6) & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | (code >> 18));
    put(0x80 | ((code >> 12) & 0x3F));
    put(0x80 | ((code >> 6) & 0x3F));
    put(0x80 | (code & 0x3F));
  }
}

// A run of upper-case units whose lower-case forms stand `delta` above them; `step` 2 where the cases
// alternate.
struct CaseRun {
  char16_t first, last;
  int delta;
  char16_t step;
};

constexpr CaseRun kCaseRuns[] = {
    {0x00C0, 0x00D6, 32, 1}, {0x00D8, 0x00DE, 32, 1},   {0x0100, 0x012E, 1, 2},    {0x0132, 0x0136, 1, 2},
    {0x0139, 0x0147, 1, 2},  {0x014A, 0x0176, 1, 2},    {0x0178, 0x0178, -121, 1}, {0x0179, 0x017D, 1, 2},
    {0x01CD, 0x01DB, 1, 2},  {0x01DE, 0x01EE, 1, 2},    {0x01F8, 0x021E, 1, 2},    {0x0222, 0x0232, 1, 2},
    {0x0386, 0x0386, 38, 1}, {0x0388, 0x038A, 37, 1},   {0x038C, 0x038C, 64, 1},   {0x038E, 0x038F, 63, 1},
    {0x0391, 0x03A1, 32, 1}, {0x03A3, 0x03AB, 32, 1},   {0x0400, 0x040F, 80, 1},   {0x0410, 0x042F, 32, 1},
    {0x0460, 0x0480, 1, 2},  {0x048A, 0x04BE, 1, 2},    {0x04C1, 0x04CD, 1, 2},    {0x04D0, 0x052E, 1, 2},
    {0x0531, 0x0556, 48, 1}, {0x10A0, 0x10C5, 7264, 1}, {0x1E00, 0x1E94, 1, 2},    {0x1EA0, 0x1EFE, 1, 2},
    {0x1F08, 0x1F0F, -8, 1}, {0x1F18, 0x1F1D, -8, 1},   {0x1F28, 0x1F2F, -8, 1},   {0x1F38, 0x1F3F, -8, 1},
    {0x1F48, 0x1F4D, -8, 1}, {0x1F68, 0x1F6F, -8, 1},   {0x2160, 0x216F, 16, 1},   {0x24B6, 0x24CF, 26, 1},
    {0xFF21, 0xFF3A, 32, 1},
};

bool InRun(const CaseRun& run, int unit) {
  return unit >= run.first && unit <= run.last && (unit - run.first) % run.step == 0;
}

template <class Map>
std::string MapUnits(std::string_view text, Map map) {
  if (IsAscii(text)) {
    std::string mapped(text);
    for (char& c : mapped) c = static_cast<char>(map(static_cast<char16_t>(c)));
    return mapped;
  }
  std::u16string units = ToUtf16(text);
  std::transform(units.begin(), units.end(), units.begin(), map);
  return ToUtf8(units);
}

template <class Text>
int Compare(const Text& left, const Text& right, bool ignoreCase) {
  const std::size_t common = std::min(left.size(), right.size());
  for (std::size_t i = 0; i < common; ++i) {
    auto a = static_cast<char16_t>(static_cast<std::make_unsigned_t<typename Text::value_type>>(left[i]));
    auto b = static_cast<char16_t>(static_cast<std::make_unsigned_t<typename Text::value_type>>(right[i]));
    if (ignoreCase) a = LowerOf(a), b = LowerOf(b);
    if (a != b) return a < b ? -1 : 1;
  }
  return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

}  // namespace

bool IsAscii(std::string_view text) {
  unsigned char all = 0;
  for (const char c : text) all = static_cast<unsigned char>(all | static_cast<unsigned char>(c));
  return all < 0x80;
}

std::size_t Utf16Length(std::string_view text) {
  if (IsAscii(text)) return text.size();
  std::size_t length = 0;
  for (std::size_t at = 0; at < text.size();) length += Decode(text, at) >= 0x10000 ? 2 : 1;
  return length;
}

std::u16string ToUtf16(std::string_view text) {
  std::u16string units;
  units.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const char32_t code = Decode(text, at);
    if (code >= 0x10000) {
      units.push_back(static_cast<char16_t>(0xD7C0 + (code >> 10)));
      units.push_back(static_cast<char16_t>(0xDC00 + (code & 0x3FF)));
    } else {
      units.push_back(static_cast<char16_t>(code));
    }
  }
  return units;
}

std::string ToUtf8(std::u16string_view units) {
  std::string text;
  text.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    const char32_t unit = units[i];
    const bool pair = (unit & 0xFC00) == 0xD800 && i + 1 < units.size() && (units[i + 1] & 0xFC00) == 0xDC00;
    Encode(pair ? 0x10000 + ((unit & 0x3FF) << 10) + (units[++i] & 0x3FFU) : unit, text);
  }
  return text;
}

std::string Substring(std::string_view text, std::size_t start, std::size_t count) {
  if (IsAscii(text)) return std::string(start < text.size() ? text.substr(start, count) : std::string_view());
  const std::u16string units = ToUtf16(text);
  if (start >= units.size()) return {};
  return ToUtf8(std::u16string_view(units).substr(start, count));
}

char16_t UpperOf(char16_t unit) {
  if (unit < 0x80) return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
  for (const CaseRun& run : kCaseRuns) {
    if (InRun(run, unit - run.delta)) return static_cast<char16_t>(unit - run.delta);
  }
  return unit == 0x03C2 ? char16_t{0x03A3} : unit;  // the final sigma shares its capital with the other one
}

char16_t LowerOf(char16_t unit) {
  if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
  for (const CaseRun& run : kCaseRuns) {
    if (InRun(run, unit)) return static_cast<char16_t>(unit + run.delta);
  }
  return unit;
}

std::string UpperCase(std::string_view text) { return MapUnits(text, UpperOf); }

std::string LowerCase(std::string_view text) { return MapUnits(text, LowerOf); }

int CompareText(std::string_view left, std::string_view right, bool ignoreCase) {
  if (IsAscii(left) && IsAscii(right)) return Compare(left, right, ignoreCase);
  return Compare(ToUtf16(left), ToUtf16(right), ignoreCase);
}

}  // namespace tessary::script
