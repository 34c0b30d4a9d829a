#include "system/RegistryHelpers.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "system/modUtil.h"

namespace tessary {

namespace {

struct RootName {
  std::string_view name;
  std::uint32_t root;
};

constexpr std::array<RootName, 8> kRoots{{
    {"HKEY_CLASSES_ROOT", registry::kClassesRoot},
    {"HKCR", registry::kClassesRoot},
    {"HKEY_CURRENT_USER", registry::kCurrentUser},
    {"HKCU", registry::kCurrentUser},
    {"HKEY_LOCAL_MACHINE", registry::kLocalMachine},
    {"HKLM", registry::kLocalMachine},
    {"HKEY_USERS", registry::kUsers},
    {"HKUR", registry::kUsers},  // the one short form of this root
}};

std::string ToUpper(std::string_view text) {
  std::string upper(text);
  for (char& c : upper)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return upper;
}

}  // namespace

std::int32_t QueryRegValue(Run& run, RegistryKey key, const std::string& name, RegistryData& value) {
  RegistryValue read = run.host.machineSettings.ReadValue(key, name);
  if (read.status != 0) return read.status;
  switch (read.type) {
    case registry::kString:
      if (!read.data.empty()) read.data.pop_back();  // the terminating NUL
      value = std::move(read.data);
      return 0;
    case registry::kBinary:
      value = RegistryBytes{std::move(read.data)};
      return 0;
    case registry::kDword: {
      std::uint32_t number = 0;
      for (std::size_t i = std::min<std::size_t>(read.data.size(), 4); i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(read.data[i]);
      value = static_cast<std::int32_t>(number);
      return 0;
    }
    default:
      return -1;
  }
}

std::optional<RegistryData> RegRead(Run& run, const std::string& path, bool use64BitView) {
  const std::size_t rootEnd = path.find('\\');
  const std::size_t keyEnd = path.rfind('\\');
  if (rootEnd == std::string::npos || keyEnd == rootEnd) return std::nullopt;
  const std::string rootName = ToUpper(std::string_view(path).substr(0, rootEnd));
  const auto* root = std::find_if(kRoots.begin(), kRoots.end(), [&rootName](const RootName& candidate) {
    return candidate.name == rootName;
  });
  if (root == kRoots.end()) return std::nullopt;

  const bool view64 = use64BitView && GetOpSysInfo(run).IsWinXP();
  const RegistryKey key =
      run.host.machineSettings.OpenKey(root->root, path.substr(rootEnd + 1, keyEnd - rootEnd - 1),
                                       view64 ? registry::kRead | registry::kView64 : registry::kRead);
  if (key == 0) return std::nullopt;
  RegistryData value;
  const std::int32_t status = QueryRegValue(run, key, path.substr(keyEnd + 1), value);
  run.host.machineSettings.Close(key);
  if (status != 0) return std::nullopt;
  return value;
}

std::string RegistryText(const std::optional<RegistryData>& data) {
  if (!data) return {};
  if (const auto* number = std::get_if<std::int32_t>(&*data)) return std::to_string(*number);
  const auto* text = std::get_if<std::string>(&*data);
  return text ? *text : std::string();
}

}  // namespace tessary
