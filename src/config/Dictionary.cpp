#include "config/Dictionary.h"

#include "system/Error.h"

namespace tessary {

Dictionary::Dictionary(const Dictionary& other) {
  for (const Entry& entry : other) Set(entry.key, entry.value);
}

Dictionary& Dictionary::operator=(Dictionary other) {
  entries_.swap(other.entries_);
  index_.swap(other.index_);
  return *this;
}

Value& Dictionary::operator[](const std::string& key) {
  if (const auto found = index_.find(key); found != index_.end()) return found->second->value;
  entries_.push_back({key, Value()});
  const auto added = std::prev(entries_.end());
  index_.emplace(added->key, added);
  return added->value;
}

std::string Dictionary::Text(const std::string& key) {
  const std::string* text = (*this)[key].AsText();
  return text ? *text : std::string();
}

bool Dictionary::Exists(std::string_view key) const { return index_.contains(key); }

void Dictionary::Add(const std::string& key, Value value) {
  if (Exists(key))
    throw Error(errors::kKeyExists, "This key is already associated with an element of this collection");
  Set(key, std::move(value));
}

void Dictionary::Set(const std::string& key, Value value) { (*this)[key] = std::move(value); }

void Dictionary::Remove(const std::string& key) {
  const auto found = index_.find(key);
  if (found == index_.end()) return;
  const auto entry = found->second;
  index_.erase(found);
  entries_.erase(entry);
}

std::shared_ptr<Dictionary> NewDictionary() { return std::make_shared<Dictionary>(); }

}  // namespace tessary
