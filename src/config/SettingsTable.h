// Every settings key of the system, once: the default settings, the list of keys and their order in a new file
// come from this table, and so does the page docs/settings.md.
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

/// What a key belongs to, for people who look for it.
enum class KeyTopic {
  Destination,
  Dialogs,
  Display,
  Properties,
  View,
  Watermark,
  Pages,
  Security,
  Images,
  Programs,
  Maintenance
};

struct SettingKey {
  std::string_view key;
  std::string_view defaultValue;  ///< for KeyKind::Read: what an empty value acts as
  KeyKind kind;
  KeyHolds holds;
  KeyTopic topic;
  std::string_view meaning;  ///< one line of Markdown for the page of the settings
};

/// All keys, in their order in a newly written file.
std::span<const SettingKey> SettingKeys();

/// The key's row, or null for a key that no row names. Such keys pass through the settings unchanged.
const SettingKey* FindSettingKey(std::string_view key);

}  // namespace tessary
