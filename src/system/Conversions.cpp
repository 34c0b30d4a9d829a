#include "system/Conversions.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "system/Error.h"

namespace tessary {

namespace {

struct Parsed {
  double number = 0;
  std::size_t length = 0;  ///< characters used; 0: no number
};

/// The longest number at the start of `text`.
Parsed ParseNumber(std::string_view text) {
  const char* const end = text.data() + text.size();
  if (text.size() > 2 && text[0] == '&' && (text[1] == 'h' || text[1] == 'H')) {
    std::uint64_t hex = 0;
    const auto read = std::from_chars(text.data() + 2, end, hex, 16);
    if (read.ec != std::errc()) return {};
    return {static_cast<double>(hex), static_cast<std::size_t>(read.ptr - text.data())};
  }
  const std::size_t sign = !text.empty() && text[0] == '+' ? 1 : 0;  // from_chars knows no plus sign
  const std::string_view digits = text.substr(sign);
  const std::size_t first = digits.find_first_not_of(sign ? "" : "-");
  // Keeps the words that from_chars would read, such as "inf" and "nan", out.
  if (first == std::string_view::npos || first > 1 || digits.find_first_of("0123456789.", first) != first)
    return {};
  double number = 0;
  const auto read = std::from_chars(digits.data(), end, number);
  if (read.ec != std::errc()) return {};
  return {number, static_cast<std::size_t>(read.ptr - text.data())};
}

}  // namespace

std::string SafeString(const Value& value) {
  const std::string* text = value.AsText();
  return text ? *text : std::string();
}

std::optional<double> ToNumber(std::string_view text) {
  const std::string trimmed = TrimBlanks(text);
  const Parsed parsed = ParseNumber(trimmed);
  if (parsed.length == 0 || parsed.length != trimmed.size()) return std::nullopt;
  return parsed.number;
}

std::int32_t ToLong(std::string_view text) {
  const std::optional<double> number = ToNumber(text);
  if (!number) throw Error(errors::kTypeMismatch, "Type mismatch");
  const double rounded = RoundHalfEven(*number);
  if (!(std::abs(rounded) <= 2147483647.0) && rounded != -2147483648.0)
    throw Error(errors::kOverflow, "Overflow");
  return static_cast<std::int32_t>(rounded);
}

std::int32_t SafeLong(std::string_view text) {
  try {
    return ToLong(text);
  } catch (const Error&) {
    return 0;
  }
}

double SafeDouble(std::string_view text) { return ToNumber(text).value_or(0); }

double LeadingNumber(std::string_view text) {
  std::string dense;
  for (const char c : text)
    if (c != ' ') dense += c;
  return ParseNumber(dense).number;
}

std::string DecimalText(double number) {
  char text[40];
  const double unsignedZero = number == 0 ? 0 : number;
  const auto written = std::to_chars(text, text + sizeof text, unsignedZero, std::chars_format::general, 15);
  return {text, written.ptr};
}

double RoundHalfEven(double number) { return std::nearbyint(number); }

std::int32_t NotNegative(std::int32_t number) { return number < 0 ? 0 : number; }

std::int32_t Bit(std::int32_t position) {
  if (position < 1) throw Error(errors::kCommon, "Do not call the Bit function with position values below 1.");
  if (position > 31) throw Error(errors::kOverflow, "Overflow");
  return std::int32_t{1} << (position - 1);
}

void SplitColor(std::int32_t color, std::int32_t& red, std::int32_t& green, std::int32_t& blue) {
  red = color & 255;
  green = (color / 256) & 255;
  blue = (color / 65536) & 255;
}

std::string UrlEncode(std::string_view bytes) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : bytes) {
    const auto code = static_cast<unsigned char>(c);
    const bool stays = code == '-' || code == '.' || (code >= '0' && code <= '9') ||
                       (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
    if (stays)
      encoded += c;
    else if (c == ' ')
      encoded += '+';
    else
      (encoded += '%').append({kDigits[code / 16], kDigits[code % 16]});
  }
  return encoded;
}

std::string TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string ToLower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

std::string ToUpper(std::string_view text) {
  std::string upper(text);
  for (char& c : upper)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return upper;
}

std::string CutAtNul(std::string_view text) { return std::string(text.substr(0, text.find('\0'))); }

std::string OneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
  return text;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t start = 0;
  for (std::size_t hit; (hit = text.find(from, start)) != std::string_view::npos; start = hit + from.size())
    result.append(text.substr(start, hit - start)).append(to);
  return result.append(text.substr(start));
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t end; (end = text.find(separator, start)) != std::string_view::npos; start = end + 1)
    parts.emplace_back(text.substr(start, end - start));
  parts.emplace_back(text.substr(start));
  return parts;
}

}  // namespace tessary
