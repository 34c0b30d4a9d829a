// What the machine says of itself.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "host/Failure.h"

namespace tessary {

/// The fields of the platform's version record (OSVERSIONINFOEXA).
struct VersionRecord {
  std::uint32_t majorVersion = 0, minorVersion = 0, buildNumber = 0;
  std::uint32_t platformId = 0;  ///< 1 Windows 95 and its family, 2 Windows NT and its family, others: neither
  std::string csdVersion;
  std::uint16_t servicePackMajor = 0, servicePackMinor = 0, suiteMask = 0;
  std::uint8_t productType = 0;
};

/// A GUID (RFC 4122) as its four fields.
struct Guid {
  std::uint32_t data1 = 0;
  std::uint16_t data2 = 0, data3 = 0;
  std::array<std::uint8_t, 8> data4{};
};

class System {
 public:
  virtual ~System() = default;
  virtual std::string ComputerName() = 0;
  virtual std::string UserName() = 0;
  /// The version record if the platform fills one of `recordSize` bytes: 156, or 148 without the fields behind
  /// `csdVersion`. Nothing if it refuses that size.
  virtual std::optional<VersionRecord> Version(int recordSize) = 0;
  /// The value of an environment variable, empty when it is not set. APPDATA and USERPROFILE are the folders of
  /// the user's settings and files on every machine; TEMP and TMP are made safe like TempPath.
  virtual std::string Environment(const std::string& name) = 0;
  /// The folder for temporary files, which need not exist. One that other users could write to is not given:
  /// in its place comes a folder of the user's own below it. Empty if there is no safe one.
  virtual std::string TempPath() = 0;
  virtual Result<Guid> NewGuid() = 0;
  /// The platform's text for one of its error codes, with its line end where the platform has one.
  virtual std::string ErrorText(std::int32_t code) = 0;
};

}  // namespace tessary
