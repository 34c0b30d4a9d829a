// The one map type of the system: string keys in the order of their first insertion, values strings or further
// dictionaries. Settings, INI trees, labels and command-line parameters are all dictionaries.
#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

namespace tessary {

class Dictionary;

/// A value: a string (empty at first), or a dictionary, which is shared and not copied with the value.
class Value {
 public:
  Value() = default;
  Value(std::string text) : held_(std::move(text)) {}                  // NOLINT(google-explicit-constructor)
  Value(const char* text) : held_(std::string(text)) {}                // NOLINT(google-explicit-constructor)
  Value(std::shared_ptr<Dictionary> tree) : held_(std::move(tree)) {}  // NOLINT(google-explicit-constructor)

  /// The dictionary, or null if the value is a string. This is how a section is told from a plain value.
  [[nodiscard]] std::shared_ptr<Dictionary> AsDictionary() const {
    const auto* tree = std::get_if<std::shared_ptr<Dictionary>>(&held_);
    return tree ? *tree : nullptr;
  }
  /// The string, or null if the value is a dictionary.
  [[nodiscard]] const std::string* AsText() const { return std::get_if<std::string>(&held_); }

 private:
  std::variant<std::string, std::shared_ptr<Dictionary>> held_;
};

class Dictionary {
 public:
  struct Entry {
    std::string key;
    Value value;
  };

  Dictionary() = default;
  Dictionary(const Dictionary& other);
  Dictionary(Dictionary&&) = default;
  Dictionary& operator=(Dictionary other);

  /// The value of `key`. Reading a key that is missing gives an empty value and adds the key with it: this is
  /// how files and reports come to hold every key that was asked for.
  Value& operator[](const std::string& key);

  /// `(*this)[key]` as text, adding the key in the same way; a dictionary reads as empty.
  std::string Text(const std::string& key);

  /// Tests without adding.
  [[nodiscard]] bool Exists(std::string_view key) const;

  /// Adds a new key. Raises errors::kKeyExists when it is there already.
  void Add(const std::string& key, Value value);

  /// Adds the key or replaces its value, which keeps its place.
  void Set(const std::string& key, Value value);

  /// Removes the key, if it is there.
  void Remove(const std::string& key);

  [[nodiscard]] std::size_t size() const { return entries_.size(); }
  [[nodiscard]] bool empty() const { return entries_.empty(); }

  // In the order of first insertion. Keys must not be changed.
  [[nodiscard]] auto begin() const { return entries_.begin(); }
  [[nodiscard]] auto end() const { return entries_.end(); }

 private:
  std::list<Entry> entries_;
  std::unordered_map<std::string_view, std::list<Entry>::iterator> index_;  // views of the keys in entries_
};

/// A new, empty dictionary: the one way in which a tree is made.
std::shared_ptr<Dictionary> NewDictionary();

}  // namespace tessary
