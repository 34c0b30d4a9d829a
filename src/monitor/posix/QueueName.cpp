#include "monitor/posix/QueueName.h"

#include <algorithm>
#include <string_view>

#include "host/CodePage.h"
#include "system/Conversions.h"

namespace tessary {

namespace {

// What the print server stores of a name at most, in bytes.
constexpr std::size_t kLongest = 127;
// Leaves room for a number behind it.
constexpr std::size_t kLongestStem = 120;

constexpr std::string_view kMeaningful = " /#'\"\\?<>|[](){}@%$&*;:,`!~^=+";

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }

/// The beginning of `text` that ends with a whole character and has `size` bytes at most.
std::string Beginning(const std::string& text, std::size_t size) {
  if (text.size() <= size) return text;
  while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) --size;
  return text.substr(0, size);
}

}  // namespace

std::string WhyNoPrinterName(const std::string& name) {
  if (name.find_first_not_of(' ') == std::string::npos) return "is empty";
  if (std::any_of(name.begin(), name.end(), IsControl))
    return "has a line end or another control character in it";
  if (name.size() > kLongest) return "is too long";
  if (!IsValidUtf8(name)) return "is not valid UTF-8";
  return {};
}

std::string QueueName(const std::string& name, const std::vector<std::string>& taken) {
  std::string stem;
  for (const char c : name) {
    const bool meaningful = IsControl(c) || kMeaningful.find(c) != std::string_view::npos;
    if (!meaningful) stem += c;
    // A name that begins like an option would be taken for one.
    else if (!stem.empty() && !stem.ends_with('_'))
      stem += '_';
  }
  stem.erase(0, stem.find_first_not_of("-._"));
  stem = Beginning(stem, kLongestStem);
  while (stem.ends_with('_')) stem.pop_back();
  if (stem.empty()) stem = "Printer";
  const auto isTaken = [&](const std::string& queue) {
    return std::any_of(taken.begin(), taken.end(),
                       [&](const std::string& other) { return ToLower(other) == ToLower(queue); });
  };
  std::string queue = stem;
  for (int number = 2; isTaken(queue); ++number) queue = stem + "_" + std::to_string(number);
  return queue;
}

}  // namespace tessary
