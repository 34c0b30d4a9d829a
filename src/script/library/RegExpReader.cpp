#include "script/library/RegExpReader.h"

#include <algorithm>

#include "script/library/Utf16.h"

namespace tessary::script {
namespace {

constexpr int kSyntaxError = 5017;
constexpr int kExpectedBracket = 5019;
constexpr int kInvalidRange = 5021;

}  // namespace

std::uint32_t RegExpReader::CountGroups() const {
  std::uint32_t groups = 0;
  bool inSet = false;
  for (std::size_t i = 0; i < pattern_.size(); ++i) {
    if (pattern_[i] == u'\\') {
      ++i;
    } else if (inSet) {
      inSet = pattern_[i] != u']';
    } else if (pattern_[i] == u'[') {
      inSet = true;
      if (pattern_.compare(i + 1, 1, u"^") == 0) ++i;
      if (pattern_.compare(i + 1, 1, u"]") == 0) ++i;
    } else if (pattern_[i] == u'(' && pattern_.compare(i + 1, 1, u"?") != 0) {
      ++groups;
    }
  }
  return groups;
}

// The digit that is still to come, -1 if there is none of that base.
int RegExpReader::DigitAt(std::size_t ahead, int base) const {
  const char16_t unit = LowerOf(Peek(ahead));
  const int digit = unit >= u'0' && unit <= u'9'   ? unit - u'0'
                    : unit >= u'a' && unit <= u'f' ? unit - u'a' + 10
                                                   : base;
  return digit < base ? digit : -1;
}

std::optional<RegExpQuantifier> RegExpReader::ReadQuantifier() {
  std::optional<RegExpQuantifier> quantifier;
  if (Peek() == u'{') {
    quantifier = ReadBraces();
  } else if (Accept(u"*")) {
    quantifier = RegExpQuantifier{0, RegExpQuantifier::kUnlimited};
  } else if (Accept(u"+")) {
    quantifier = RegExpQuantifier{1, RegExpQuantifier::kUnlimited};
  } else if (Accept(u"?")) {
    quantifier = RegExpQuantifier{0, 1};
  }
  if (quantifier) quantifier->greedy = !Accept(u"?");
  return quantifier;
}

// Braces that hold no counts are ordinary text.
std::optional<RegExpQuantifier> RegExpReader::ReadBraces() {
  const std::size_t start = at_++;
  if (DigitAt(0, 10) >= 0) {
    RegExpQuantifier quantifier;
    quantifier.min = quantifier.max = ReadCount();
    if (Accept(u",")) quantifier.max = DigitAt(0, 10) < 0 ? RegExpQuantifier::kUnlimited : ReadCount();
    if (Accept(u"}")) {
      if (quantifier.min > quantifier.max) throw RegExpFailed{kSyntaxError};
      return quantifier;
    }
  }
  at_ = start;
  return std::nullopt;
}

std::int32_t RegExpReader::ReadCount() {
  std::int64_t count = 0;
  for (; DigitAt(0, 10) >= 0; ++at_) {
    count = std::min<std::int64_t>(count * 10 + DigitAt(0, 10), RegExpQuantifier::kUnlimited);
  }
  return static_cast<std::int32_t>(count);
}

std::optional<RegExpSet> RegExpReader::ReadClass() {
  const char16_t letter = Peek();
  RegExpSet set;
  switch (LowerOf(letter)) {
    case u'w':
      set.Add(u'A', u'Z');
      set.Add(u'a', u'z');
      set.Add(u'_', u'_');
      [[fallthrough]];
    case u'd':
      set.Add(u'0', u'9');
      break;
    case u's':
      set.Add(u'\t', u'\r');
      set.Add(u' ', u' ');
      break;
    default:
      return std::nullopt;
  }
  ++at_;
  if (letter == LowerOf(letter)) return set;
  RegExpSet opposite;
  opposite.AddAllBut(set);
  return opposite;
}

std::optional<std::uint32_t> RegExpReader::ReadBackReference(std::uint32_t groups) {
  std::uint32_t group = 0;
  for (; DigitAt(0, 10) >= 0 && (group > 0 || Peek() != u'0'); ++at_) {
    const std::uint32_t longer = group * 10 + static_cast<std::uint32_t>(DigitAt(0, 10));
    if (longer > groups) break;
    group = longer;
  }
  if (group == 0) return std::nullopt;
  return group;
}

char16_t RegExpReader::ReadEscapedUnit() {
  if (DigitAt(0, 8) >= 0) return ReadOctal();
  const char16_t letter = Next();
  switch (letter) {
    case u'f':
      return u'\f';
    case u'n':
      return u'\n';
    case u'r':
      return u'\r';
    case u't':
      return u'\t';
    case u'v':
      return u'\v';
    case u'x':
      return ReadHex(2, letter);
    case u'u':
      return ReadHex(4, letter);
    case u'c':
      if (LowerOf(Peek()) < u'a' || LowerOf(Peek()) > u'z') return letter;
      return static_cast<char16_t>(Next() & 0x1F);
    default:
      return letter;
  }
}

char16_t RegExpReader::ReadHex(std::size_t digits, char16_t otherwise) {
  int value = 0;
  for (std::size_t i = 0; i < digits; ++i) {
    const int digit = DigitAt(i, 16);
    if (digit < 0) return otherwise;
    value = value * 16 + digit;
  }
  at_ += digits;
  return static_cast<char16_t>(value);
}

char16_t RegExpReader::ReadOctal() {
  int value = 0;
  for (int i = 0; i < 3 && DigitAt(0, 8) >= 0 && value * 8 <= 0xFF; ++i, ++at_)
    value = value * 8 + DigitAt(0, 8);
  return static_cast<char16_t>(value);
}

// A "]" that stands first is one of the set's own units.
RegExpSet RegExpReader::ReadSet(bool& negated) {
  negated = Accept(u"^");
  RegExpSet set;
  bool inRange = false;  // behind a "-" that waits for its second unit
  char16_t rangeStart = 0;
  for (bool first = true; first || AtEnd() || Peek() != u']'; first = false) {
    if (AtEnd()) throw RegExpFailed{kExpectedBracket};
    char16_t unit = Next();
    if (unit == u'\\') {
      if (AtEnd()) throw RegExpFailed{kExpectedBracket};
      if (const auto inner = ReadClass()) {
        set.Add(*inner);
        if (inRange) set.Add(u'-', u'-');
        inRange = false;
        continue;
      }
      unit = Accept(u"b") ? u'\b' : ReadEscapedUnit();
    }
    if (inRange) {
      if (rangeStart > unit) throw RegExpFailed{kInvalidRange};
      set.Add(rangeStart, unit);
      inRange = false;
      continue;
    }
    set.Add(unit, unit);
    if (Peek() == u'-' && Peek(1) != u']' && at_ + 1 < pattern_.size()) {
      rangeStart = unit;
      inRange = true;
      ++at_;
    }
  }
  ++at_;
  return set;
}

}  // namespace tessary::script
