// Reading the machine's registry by full paths.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "system/Run.h"

namespace tessary {

/// A text, bytes (as a string of their own kind), or a 32-bit number.
struct RegistryBytes {
  std::string bytes;
};
using RegistryData = std::variant<std::string, RegistryBytes, std::int32_t>;

/// Reads one value of an open key. The platform's status code, 0 on success; -1 for a type that is not read,
/// with `value` untouched.
std::int32_t QueryRegValue(Run& run, RegistryKey key, const std::string& name, RegistryData& value);

/// A value by its full path, `ROOT\key\name`; nothing when it is missing, when the root is unknown or on any
/// failure. A path ending in "\" names the key's default value. The 64-bit view is asked for on Windows XP and
/// later alone.
std::optional<RegistryData> RegRead(Run& run, const std::string& path, bool use64BitView);

/// `data` as text: a number in decimal; empty for bytes and for nothing.
std::string RegistryText(const std::optional<RegistryData>& data);

}  // namespace tessary
