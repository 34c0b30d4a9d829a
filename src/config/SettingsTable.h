// Every settings key of the system, once: the default settings, the list of keys and their order in a new file
// come from this table.
#pragma once

#include <span>
#include <string_view>

namespace tessary {

enum class KeyKind {
  Listed,   ///< stands in the list of keys and in a new file
  Default,  ///< stands in no list, but has a default and follows the listed keys in a new file
  Read,     ///< is read and stands in no list; absent from a new file
};

enum class KeyHolds { Text, Path };  ///< Path: separators are brought into the machine's form

struct SettingKey {
  std::string_view key;
  std::string_view defaultValue;  ///< for KeyKind::Read: what an empty value acts as
  KeyKind kind;
  KeyHolds holds;
  std::string_view meaning;
};

/// All keys, in their order in a newly written file.
std::span<const SettingKey> SettingKeys();

/// The key's row, or null for a key that no row names. Such keys pass through the settings unchanged.
const SettingKey* FindSettingKey(std::string_view key);

}  // namespace tessary
