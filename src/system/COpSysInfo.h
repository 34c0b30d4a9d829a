// What the operating system says about itself: a snapshot, taken when the object is made.
#pragma once

#include <cstdint>
#include <string>

#include "host/System.h"

namespace tessary {

class COpSysInfo {
 public:
  /// Asks for the long version record and, where that is refused, for the short one. All values stay 0 and all
  /// flags false if both are refused.
  explicit COpSysInfo(System& system);

  [[nodiscard]] std::int16_t BuildNumber() const {
    return static_cast<std::int16_t>(record_.buildNumber & 0xFFFF);
  }
  [[nodiscard]] const std::string& CSDVersion() const { return record_.csdVersion; }
  [[nodiscard]] std::uint32_t MajorVersion() const { return record_.majorVersion; }
  [[nodiscard]] std::uint32_t MinorVersion() const { return record_.minorVersion; }
  [[nodiscard]] std::uint32_t PlatformID() const { return record_.platformId; }
  [[nodiscard]] std::uint8_t ProductType() const { return record_.productType; }
  [[nodiscard]] std::uint16_t ServicePackMajor() const { return record_.servicePackMajor; }
  [[nodiscard]] std::uint16_t ServicePackMinor() const { return record_.servicePackMinor; }
  [[nodiscard]] std::uint16_t SuiteMask() const { return record_.suiteMask; }

  // Products of the suite mask. HasDC stands for every mask above 127.
  [[nodiscard]] bool HasAS() const { return (record_.suiteMask & 0x02) != 0; }
  [[nodiscard]] bool HasBO() const { return (record_.suiteMask & 0x04) != 0; }
  [[nodiscard]] bool HasDC() const { return record_.suiteMask > 127; }
  [[nodiscard]] bool HasSBS() const { return (record_.suiteMask & 0x01) != 0; }
  [[nodiscard]] bool HasSBSr() const { return (record_.suiteMask & 0x20) != 0; }
  [[nodiscard]] bool HasTS() const { return (record_.suiteMask & 0x10) != 0; }

  // Each flag stands for its version or a later one of the same family, not for the exact version.
  [[nodiscard]] bool IsWin95() const { return record_.platformId == 1; }
  [[nodiscard]] bool IsWin98() const { return IsWin95() && record_.minorVersion >= 10; }
  [[nodiscard]] bool IsWinME() const { return IsWin95() && (record_.buildNumber & 0xFFFF) >= 3000; }
  [[nodiscard]] bool IsWin9x() const { return IsWin95() || IsWin98() || IsWinME(); }
  [[nodiscard]] bool IsWinNT() const { return record_.platformId == 2; }
  [[nodiscard]] bool IsWin2K() const { return IsNtFrom(5, 0); }
  [[nodiscard]] bool IsWinXP() const { return IsNtFrom(5, 1); }
  [[nodiscard]] bool IsWin2003() const { return IsNtFrom(5, 2); }
  [[nodiscard]] bool IsWinVista() const { return IsNtFrom(6, 0); }

  /// Name of the newest version that the system is at least, such as "Windows XP"; nothing newer than
  /// "Windows Vista" is known. Empty for other platforms.
  [[nodiscard]] std::string Platform() const;
  /// Such as "Windows XP v5.1, Build 2600".
  [[nodiscard]] std::string Version() const;
  /// "Unknown", "NT Workstation", "Domain Controller" or "NT Server" for the product types 0 to 3, else empty.
  [[nodiscard]] std::string ProductTypeName() const;

 private:
  [[nodiscard]] bool IsNtFrom(std::uint32_t major, std::uint32_t minor) const;

  VersionRecord record_;
};

}  // namespace tessary
