#include "job/PageNumbers.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "system/Conversions.h"
#include "system/Error.h"

namespace tessary {

namespace {

constexpr int kMostTags = 100;
constexpr double kWidest = 32767;  // "9e99" is a width too; no path is longer than this

/// The first character of a text that is not empty, which may be several bytes.
std::string FirstCharacter(const std::string& text) {
  std::size_t length = 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) ++length;
  return text.substr(0, length);
}

/// What stands in the place of a tag, of which `inner` is what is between "<" and ">".
std::string NumberFor(std::string_view inner, std::int32_t page) {
  std::vector<std::string> pieces = Split(inner, ',');
  for (std::string& piece : pieces) piece = TrimBlanks(piece);
  const double width = pieces.size() > 1 ? RoundHalfEven(LeadingNumber(pieces[1].substr(0, 4))) : 0;
  if (width > kWidest) throw Error(errors::kOverflow, "Overflow");
  std::string pad = "0";
  if (pieces.size() > 2) pad = pieces[2].empty() ? " " : FirstCharacter(pieces[2]);

  const std::string digits = std::to_string(page);
  std::string number;
  for (auto left = static_cast<std::ptrdiff_t>(width) - std::ssize(digits); left > 0; --left) number += pad;
  return number + digits;
}

}  // namespace

std::size_t FindPageTag(const std::string& text) {
  const std::string lower = ToLower(text);
  return std::min(lower.find("<pageno"), lower.find("<pagenumber"));
}

std::string SubstitutePageNo(const std::string& text, std::int32_t page) {
  try {
    std::string result = text;
    for (int count = 0; count < kMostTags; ++count) {
      const std::size_t start = FindPageTag(result);
      if (start == std::string::npos) break;
      const std::size_t end = result.find('>', start);
      if (end == std::string::npos) break;
      const std::string number = NumberFor(std::string_view(result).substr(start + 1, end - start - 1), page);
      result.replace(start, end + 1 - start, number);
    }
    return result;
  } catch (const Error& error) {
    throw Error(errors::kPageTag, "Error in page no substitution '" + text + "' page no " +
                                      std::to_string(page) + ". Error " + std::to_string(error.number()) +
                                      ": " + error.description());
  }
}

}  // namespace tessary
