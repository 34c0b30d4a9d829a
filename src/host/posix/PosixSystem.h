// What this machine says of itself.
#pragma once

#include "host/System.h"

namespace tessary {

/// The version record holds the first two numbers of the kernel's release. The environment variables APPDATA
/// and USERPROFILE are the folder of the user's settings and the home folder.
class PosixSystem final : public System {
 public:
  std::string ComputerName() override;
  std::string UserName() override;
  std::optional<VersionRecord> Version(int recordSize) override;
  std::string Environment(const std::string& name) override;
  std::string TempPath() override;
  Result<Guid> NewGuid() override;
  std::string ErrorText(std::int32_t code) override;
};

}  // namespace tessary
