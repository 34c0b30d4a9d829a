// Settings of the whole machine: the registry, or what stands in for it. Read only.
#pragma once

#include <cstdint>
#include <string>

namespace tessary {

namespace registry {
inline constexpr std::uint32_t kClassesRoot = 0x80000000;
inline constexpr std::uint32_t kCurrentUser = 0x80000001;
inline constexpr std::uint32_t kLocalMachine = 0x80000002;
inline constexpr std::uint32_t kUsers = 0x80000003;
inline constexpr std::uint32_t kRead = 0x20019;
inline constexpr std::uint32_t kView64 = 0x100;  ///< or-ed to the access: the 64-bit view
inline constexpr std::uint32_t kString = 1;
inline constexpr std::uint32_t kBinary = 3;
inline constexpr std::uint32_t kDword = 4;  ///< 32 bits, little-endian
inline constexpr std::int32_t kNotFound = 2;
}  // namespace registry

/// An open key; 0 is none.
using RegistryKey = std::uint64_t;

struct RegistryValue {
  std::int32_t status = 0;  ///< 0, or the platform's status code: kNotFound for a missing value
  std::uint32_t type = 0;
  std::string data;  ///< the bytes; a kString value is UTF-8 with its terminating NUL
};

class MachineSettings {
 public:
  virtual ~MachineSettings() = default;
  /// Opens `key`, written with "\" between its parts on every machine, under one of the roots. 0 on failure.
  virtual RegistryKey OpenKey(std::uint32_t root, const std::string& key, std::uint32_t access) = 0;
  /// Reads one value; an empty `name` is the key's default value. Names are compared without regard to case.
  virtual RegistryValue ReadValue(RegistryKey key, const std::string& name) = 0;
  virtual void Close(RegistryKey key) = 0;
};

}  // namespace tessary
