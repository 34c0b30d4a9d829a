#include <algorithm>
#include <limits>
#include <string_view>

#include "postscript/modSuperimpose.h"
#include "system/Conversions.h"
#include "system/Error.h"

namespace tessary {

namespace {

/// The counts `first` to `last`, made to pages by the letters.
struct Range {
  std::string letters;
  std::int32_t first = 1;
  std::int32_t last = 0;

  [[nodiscard]] bool Has(char letter) const { return letters.find(letter) != std::string::npos; }
};

/// Takes the letters off the head of `place`.
std::string TakeLetters(std::string_view& place) {
  static constexpr std::string_view kLetters = "FLOE";
  std::string taken;
  while (!place.empty()) {
    // Only the very first letter may be a small one. This is meant.
    const char letter = taken.empty() && place.front() >= 'a' && place.front() <= 'z'
                            ? static_cast<char>(place.front() - 'a' + 'A')
                            : place.front();
    if (kLetters.find(letter) == std::string_view::npos) break;
    taken += letter;
    place.remove_prefix(1);
  }
  return taken;
}

/// Takes the digits off the head of `place`; 0 when there are none.
std::int32_t TakeNumber(std::string_view& place) {
  std::int32_t number = 0;
  for (; !place.empty() && place.front() >= '0' && place.front() <= '9'; place.remove_prefix(1)) {
    number = number * 10 + (place.front() - '0');
    if (number > std::numeric_limits<std::int16_t>::max()) throw Error(errors::kOverflow, "Overflow");
  }
  return number;
}

Range ReadPlace(std::string_view place, std::int32_t pageCount) {
  Range range;
  range.last = pageCount;
  if (place.empty()) return range;
  range.letters = TakeLetters(place);
  range.first = TakeNumber(place);
  if (!place.starts_with('-')) {
    if (range.first > 0) range.last = range.first;
  } else {
    place.remove_prefix(1);
    if (const std::int32_t last = TakeNumber(place); last > 0) range.last = last;
  }
  if (range.first == 0) range.first = 1;
  return range;
}

/// Gives `path` to the pages of a range. Odd and even go by the count, not by the page that it leads to.
void Select(const Range& range, std::int32_t pageCount, const std::string& path, Dictionary& map) {
  const bool oddOnly = range.Has('O') && !range.Has('E');
  const bool evenOnly = range.Has('E') && !range.Has('O');
  const bool fromLast = range.Has('L');
  for (std::int32_t count = range.first; count <= range.last; ++count) {
    const bool even = count % 2 == 0;
    if ((oddOnly && even) || (evenOnly && !even)) continue;
    map.Set(std::to_string(fromLast ? pageCount + 1 - count : count), path);
  }
}

}  // namespace

Dictionary ParseSuperimposeValue(const std::string& value) {
  Dictionary entries;
  std::string_view rest = value;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('>'), rest.size());
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (part.empty()) continue;
    const std::size_t open = std::min(part.find('<'), part.size());
    std::string_view place = part.substr(std::min(open + 1, part.size()));
    place = place.substr(0, place.find('<'));
    auto entry = NewDictionary();
    entry->Add("filename", std::string(part.substr(0, open)));
    entry->Add("place", std::string(place));
    entries.Add(std::to_string(entries.size()), entry);
  }
  return entries;
}

Dictionary MakeSuperimposePageMap(Dictionary& settings, const std::string& epsFile, std::int16_t pageCount) {
  Dictionary map;
  for (std::int32_t page = 1; page <= pageCount; ++page) map.Add(std::to_string(page), "");
  std::size_t number = 0;
  for (const auto& [key, entry] : ParseSuperimposeValue(settings.Text("superimpose"))) {
    const std::string place = ReplaceAll(entry.AsDictionary()->Text("place"), " ", "");
    Select(ReadPlace(place, pageCount), pageCount, ReplaceAll(epsFile, "#", std::to_string(++number)), map);
  }
  return map;
}

}  // namespace tessary
