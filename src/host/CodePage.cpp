#include "host/CodePage.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace tessary {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr char32_t kReplacement = 0xFFFD;

/// The characters of the bytes 0x80 to 0x9F of Windows-1252; all other bytes stand for the character of their
/// own number.
constexpr std::array<char32_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// The length of the run of ASCII at the start of `bytes`.
std::size_t AsciiRun(std::string_view bytes) {
  std::size_t length = 0;
  while (bytes.size() - length >= sizeof(std::uint64_t)) {
    std::uint64_t block = 0;
    std::memcpy(&block, bytes.data() + length, sizeof block);
    if ((block & 0x8080808080808080u) != 0) break;
    length += sizeof block;
  }
  while (length < bytes.size() && static_cast<unsigned char>(bytes[length]) < 0x80) ++length;
  return length;
}

struct Character {
  char32_t code = 0;
  std::size_t length = 0;  // 0: not valid UTF-8
};

/// The character at the start of `bytes`, which does not begin with ASCII and is not empty.
Character FirstCharacter(std::string_view bytes) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char lead = byte(0);
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return {};

  // The second byte is where overlong forms, surrogates and numbers above the last character show.
  const unsigned char lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned char highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (byte(1) < lowest || byte(1) > highest) return {};

  char32_t code = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return {};
    code = (code << 6) | (byte(i) & 0x3Fu);
  }
  return {code, length};
}

void AppendUtf8(std::string& text, char32_t code) {
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0 | (code >> 6));
    text += static_cast<char>(0x80 | (code & 0x3F));
  } else {
    text += static_cast<char>(0xE0 | (code >> 12));
    text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (code & 0x3F));
  }
}

void AppendUtf16(std::u16string& units, char32_t code) {
  if (code < 0x10000) {
    units += static_cast<char16_t>(code);
  } else {
    units += static_cast<char16_t>(0xD7C0 + (code >> 10));  // 0xD800 less what 0x10000 adds
    units += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
  }
}

std::string DecodeWindows1252(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    AppendUtf8(text, byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80u] : byte);
  }
  return text;
}

char EncodeWindows1252(char32_t code) {
  if (code >= 0xA0 && code <= 0xFF) return static_cast<char>(code);
  const auto* found = std::find(kWindows1252.begin(), kWindows1252.end(), code);
  return found == kWindows1252.end() ? '?' : static_cast<char>(0x80 + (found - kWindows1252.begin()));
}

}  // namespace

bool IsValidUtf8(std::string_view bytes) {
  while (true) {
    bytes.remove_prefix(AsciiRun(bytes));
    if (bytes.empty()) return true;
    const std::size_t length = FirstCharacter(bytes).length;
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
}

std::string DecodeText(CodePage codePage, std::string_view bytes) {
  if (codePage == CodePage::Windows1252) return DecodeWindows1252(bytes);
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  return IsValidUtf8(bytes) ? std::string(bytes) : DecodeWindows1252(bytes);
}

std::string EncodeText(CodePage codePage, std::string_view text) {
  if (codePage == CodePage::Utf8) return std::string(text);

  std::string bytes;
  bytes.reserve(text.size());
  while (true) {
    const std::size_t ascii = AsciiRun(text);
    bytes += text.substr(0, ascii);
    text.remove_prefix(ascii);
    if (text.empty()) return bytes;
    const Character character = FirstCharacter(text);
    bytes += character.length == 0 ? '?' : EncodeWindows1252(character.code);
    text.remove_prefix(std::max<std::size_t>(character.length, 1));
  }
}

std::u16string ToUtf16(std::string_view text) {
  std::u16string units;
  units.reserve(text.size());
  while (true) {
    const std::size_t ascii = AsciiRun(text);
    units.append(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(ascii));
    text.remove_prefix(ascii);
    if (text.empty()) return units;
    const Character character = FirstCharacter(text);
    AppendUtf16(units, character.length == 0 ? kReplacement : character.code);
    text.remove_prefix(std::max<std::size_t>(character.length, 1));
  }
}

}  // namespace tessary
