// The machine settings of this machine: one section of a file in the place of the registry.
#pragma once

#include <map>
#include <optional>

#include "host/MachineSettings.h"

namespace tessary {

/// Serves the key of this product's machine settings from the section "Settings" of /etc/tessary/machine.ini,
/// or of the file named by the environment variable TESSARY_MACHINE_SETTINGS. The file is read when the first
/// value is asked for. No other key exists.
class PosixMachineSettings final : public MachineSettings {
 public:
  RegistryKey OpenKey(std::uint32_t root, const std::string& key, std::uint32_t access) override;
  RegistryValue ReadValue(RegistryKey key, const std::string& name) override;
  void Close(RegistryKey) override {}

 private:
  using Values = std::map<std::string, std::string>;  // names in lower case

  static Values ReadSettings();

  std::optional<Values> values_;  // nothing: not read yet
};

}  // namespace tessary
