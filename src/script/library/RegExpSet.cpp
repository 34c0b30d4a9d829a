#include <algorithm>

#include "script/library/RegExpProgram.h"
#include "script/library/Utf16.h"

namespace tessary::script {

void RegExpSet::AddAllBut(const RegExpSet& other) {
  auto ranges = other.ranges_;
  std::sort(ranges.begin(), ranges.end());
  unsigned next = 0;
  for (const auto& [first, last] : ranges) {
    if (next < first) Add(static_cast<char16_t>(next), static_cast<char16_t>(first - 1));
    next = last + 1U;
  }
  if (next <= 0xFFFF) Add(static_cast<char16_t>(next), 0xFFFF);
}

void RegExpSet::Finish(bool negated, bool ignoreCase) {
  negated_ = negated;
  ignoreCase_ = ignoreCase;
  for (std::size_t unit = 0; unit < ascii_.size(); ++unit) ascii_[unit] = Find(static_cast<char16_t>(unit));
}

bool RegExpSet::InRanges(char16_t unit) const {
  return std::any_of(ranges_.begin(), ranges_.end(),
                     [unit](const auto& range) { return unit >= range.first && unit <= range.second; });
}

bool RegExpSet::Find(char16_t unit) const {
  const bool found = InRanges(unit) || (ignoreCase_ && (InRanges(LowerOf(unit)) || InRanges(UpperOf(unit))));
  return found != negated_;
}

}  // namespace tessary::script
