#include "host/posix/PosixMachineSettings.h"

#include <algorithm>
#include <string_view>

#include "host/CodePage.h"
#include "host/posix/PosixFile.h"
#include "host/posix/UserFolders.h"

namespace tessary {

namespace {

constexpr std::string_view kSettingsKey = "SOFTWARE\\" TESSARY_COMPANY "\\PDF Printer\\Settings";
constexpr std::string_view kSettingsSection = "settings";
constexpr const char* kSettingsFile = "/etc/tessary/machine.ini";
constexpr const char* kGhostscriptFolder = "ghostscriptfolder";
constexpr RegistryKey kTheKey = 1;

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

}  // namespace

RegistryKey PosixMachineSettings::OpenKey(std::uint32_t root, const std::string& key, std::uint32_t) {
  return root == registry::kLocalMachine && LowerCase(key) == LowerCase(kSettingsKey) ? kTheKey : 0;
}

RegistryValue PosixMachineSettings::ReadValue(RegistryKey key, const std::string& name) {
  if (key != kTheKey) return {registry::kNotFound, 0, {}};
  if (!values_) values_ = ReadSettings();

  const std::string lowerName = LowerCase(name);
  const auto found = values_->find(lowerName);
  std::string value = found == values_->end() ? "" : found->second;
  if (lowerName == kGhostscriptFolder && value.empty()) value = FindOnPath("gs");
  if (found == values_->end() && value.empty()) return {registry::kNotFound, 0, {}};
  return {0, registry::kString, value + '\0'};
}

PosixMachineSettings::Values PosixMachineSettings::ReadSettings() {
  const std::string named = EnvironmentValue("TESSARY_MACHINE_SETTINGS");
  const std::string text = DecodeText(CodePage::Utf8, ReadWholeFile(named.empty() ? kSettingsFile : named));
  Values values;
  bool inSection = false;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    const std::string_view line = Trimmed(std::string_view(text).substr(begin, end - begin));
    begin = end + 1;
    if (line.starts_with('[') && line.ends_with(']')) {
      inSection = LowerCase(Trimmed(line.substr(1, line.size() - 2))) == kSettingsSection;
    } else if (const std::size_t equals = line.find('='); inSection && equals != std::string_view::npos) {
      values[LowerCase(Trimmed(line.substr(0, equals)))] = Trimmed(line.substr(equals + 1));
    }
  }
  return values;
}

}  // namespace tessary
