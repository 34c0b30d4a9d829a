// The names of an engine: identifiers and members, each once, whatever the case of its letters.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tessary::script {

/// The number of a name; 0 is no name.
using NameId = std::uint32_t;

class Names {
 public:
  /// The number of a name, a new one if it was never seen.
  NameId Intern(std::string_view name);
  /// The name as it was first written.
  const std::string& Spelling(NameId id) const { return spellings_[id]; }
  std::size_t size() const noexcept { return spellings_.size(); }

 private:
  std::deque<std::string> spellings_{std::string()};
  std::unordered_map<std::string, NameId> ids_;
};

}  // namespace tessary::script
