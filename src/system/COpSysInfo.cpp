#include "system/COpSysInfo.h"

#include "system/Conversions.h"

namespace tessary {

namespace {
// Sizes of the version record with and without the fields behind the service pack's name.
constexpr int kLongRecord = 156;
constexpr int kShortRecord = 148;
}  // namespace

COpSysInfo::COpSysInfo(System& system) {
  auto record = system.Version(kLongRecord);
  if (!record) record = system.Version(kShortRecord);
  if (record) record_ = *record;
  record_.csdVersion = TrimBlanks(CutAtNul(record_.csdVersion));
}

bool COpSysInfo::IsNtFrom(std::uint32_t major, std::uint32_t minor) const {
  return IsWinNT() && (MajorVersion() >= 6 || (MajorVersion() >= major && MinorVersion() >= minor));
}

std::string COpSysInfo::Platform() const {
  if (IsWinME()) return "Windows Me";
  if (IsWin98()) return "Windows 98";
  if (IsWin95()) return "Windows 95";
  if (IsWinVista()) return "Windows Vista";
  if (IsWin2003()) return "Windows Server 2003";
  if (IsWinXP()) return "Windows XP";
  if (IsWin2K()) return "Windows 2000";
  if (IsWinNT()) return "Windows NT";
  return {};
}

std::string COpSysInfo::Version() const {
  return Platform() + " v" + std::to_string(MajorVersion()) + "." + std::to_string(MinorVersion()) +
         ", Build " + std::to_string(BuildNumber());
}

std::string COpSysInfo::ProductTypeName() const {
  switch (ProductType()) {
    case 0:
      return "Unknown";
    case 1:
      return "NT Workstation";
    case 2:
      return "Domain Controller";
    case 3:
      return "NT Server";
    default:
      return {};
  }
}

}  // namespace tessary
