// Reads the small parts of a regular expression: escapes, sets, quantifiers.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "script/library/RegExpProgram.h"

namespace tessary::script {

/// Thrown with the number of the script error; goes no further than CompileRegExp.
struct RegExpFailed {
  int number;
};

struct RegExpQuantifier {
  static constexpr std::int32_t kUnlimited = std::numeric_limits<std::int32_t>::max();
  std::int32_t min = 1, max = 1;
  bool greedy = true;
};

/// A pattern and a position in it. What cannot be read leaves the position where it was.
class RegExpReader {
 public:
  explicit RegExpReader(std::u16string pattern) : pattern_(std::move(pattern)) {}

  [[nodiscard]] bool AtEnd() const { return at_ == pattern_.size(); }
  /// A unit that is still to come; NUL behind the end.
  [[nodiscard]] char16_t Peek(std::size_t ahead = 0) const {
    return at_ + ahead < pattern_.size() ? pattern_[at_ + ahead] : u'\0';
  }
  char16_t Next() { return pattern_[at_++]; }
  bool Accept(std::u16string_view text) {
    if (pattern_.compare(at_, text.size(), text) != 0) return false;
    at_ += text.size();
    return true;
  }

  /// The capturing groups of the whole pattern.
  [[nodiscard]] std::uint32_t CountGroups() const;

  std::optional<RegExpQuantifier> ReadQuantifier();
  /// Behind a "\": the letter of a class such as \d.
  std::optional<RegExpSet> ReadClass();
  /// Behind a "\": as many digits as name one of the first `groups` groups.
  std::optional<std::uint32_t> ReadBackReference(std::uint32_t groups);
  /// Behind a "\": the unit that an escape stands for.
  char16_t ReadEscapedUnit();
  /// Behind a "[": the set up to its "]". `negated` tells of a "^".
  RegExpSet ReadSet(bool& negated);

 private:
  [[nodiscard]] int DigitAt(std::size_t ahead, int base) const;
  std::optional<RegExpQuantifier> ReadBraces();
  std::int32_t ReadCount();
  char16_t ReadHex(std::size_t digits, char16_t otherwise);
  char16_t ReadOctal();

  std::u16string pattern_;
  std::size_t at_ = 0;
};

}  // namespace tessary::script
