#include "script/Names.h"

namespace tessary::script {

NameId Names::Intern(std::string_view name) {
  std::string key(name);
  for (char& letter : key) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter + 32);
  }
  const auto [entry, isNew] = ids_.try_emplace(std::move(key), static_cast<NameId>(spellings_.size()));
  if (isNew) spellings_.emplace_back(name);
  return entry->second;
}

}  // namespace tessary::script
