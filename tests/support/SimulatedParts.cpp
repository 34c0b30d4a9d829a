#include "tests/support/SimulatedParts.h"

#include <gtest/gtest.h>

#include "tests/support/Wildcards.h"
#include "ui/Form.h"

namespace tessary {

namespace {

std::string RootName(std::uint32_t root) {
  switch (root) {
    case registry::kClassesRoot:
      return "HKEY_CLASSES_ROOT";
    case registry::kCurrentUser:
      return "HKEY_CURRENT_USER";
    case registry::kLocalMachine:
      return "HKEY_LOCAL_MACHINE";
    case registry::kUsers:
      return "HKEY_USERS";
    default:
      return "?";
  }
}

}  // namespace

void SimulatedRegistry::Set(const std::string& path, const std::string& text, View view) {
  SetValue(path, {0, registry::kString, text + '\0'}, view);
}

void SimulatedRegistry::SetValue(const std::string& path, const RegistryValue& value, View view) {
  const std::size_t end = path.rfind('\\');
  const std::string key = LowerCase(path.substr(0, end)), name = LowerCase(path.substr(end + 1));
  if (view != View::View64) keys_[key][name] = value;
  if (view != View::Plain) keys_["64 " + key][name] = value;
}

RegistryKey SimulatedRegistry::OpenKey(std::uint32_t root, const std::string& key, std::uint32_t access) {
  opened.push_back(((access & registry::kView64) != 0 ? "64 " : "") + RootName(root) + "\\" + key);
  const std::string wanted = LowerCase(opened.back());
  const auto found = keys_.lower_bound(wanted);
  const bool exists =
      found != keys_.end() && (found->first == wanted || found->first.rfind(wanted + "\\", 0) == 0);
  if (!exists) return 0;
  ++openKeys;
  handles_.push_back(wanted);
  return handles_.size();
}

RegistryValue SimulatedRegistry::ReadValue(RegistryKey key, const std::string& name) {
  const auto& values = keys_[handles_.at(key - 1)];
  const auto found = values.find(LowerCase(name));
  return found == values.end() ? RegistryValue{registry::kNotFound, 0, ""} : found->second;
}

void SimulatedRegistry::Close(RegistryKey key) {
  if (key != 0) --openKeys;
}

BoxAnswer SimulatedDesktop::ShowBox(const std::string& text, const std::string& caption, std::int32_t flags) {
  boxes.push_back({text, caption, flags});
  journal_.push_back("box " + text);
  if (onBox) onBox();
  const std::int32_t buttons = flags & 15;
  std::int32_t button = buttons == box::kYesNo                                         ? box::kAnswerNo
                        : buttons == box::kRetryCancel || buttons == box::kYesNoCancel ? box::kAnswerCancel
                                                                                       : box::kAnswerOk;
  if (attended && !answers.empty()) {
    button = answers.front();
    answers.pop_front();
  }
  return {button, attended};
}

bool SimulatedDesktop::ShowForm(Form& form) {
  if (!user) return false;
  journal_.push_back("form " + form.root.caption);
  form.window = 1;
  if (form.shown) form.shown();
  user(form);
  form.Unload();
  form.window = 0;
  return true;
}

Result<std::string> SimulatedDesktop::PickFile(const FilePicker& picker) {
  pickers.push_back(picker);
  if (picks.empty()) return Failure{failures::kCancelled, "Cancelled"};
  Result<std::string> pick = picks.front();
  picks.pop_front();
  return pick;
}

std::int32_t SimulatedDesktop::PickColor(const std::string& title, std::int32_t color) {
  colorPickers.push_back(title);
  return pickedColor < 0 ? color : pickedColor;
}

void SimulatedDesktop::PumpMessages() {
  ++pumped;
  if (onPump) onPump();
  if (onQueue) onQueue();
}

std::optional<std::string> SimulatedShell::SpecialFolder(std::int32_t id) {
  const auto found = specialFolders.find(id);
  if (found == specialFolders.end()) return std::nullopt;
  return found->second;
}

std::int32_t SimulatedShell::Open(const std::string& target) {
  opened.push_back(target);
  journal_.push_back("open " + target);
  return openResult;
}

SimulatedSystem::SimulatedSystem()
    : environment{{"TEMP", R"(C:\Temp)"},
                  {"TMP", R"(C:\Temp)"},
                  {"APPDATA", R"(C:\Documents and Settings\ann\Application Data)"},
                  {"USERPROFILE", R"(C:\Documents and Settings\ann)"}} {}

std::optional<VersionRecord> SimulatedSystem::Version(int recordSize) {
  if ((recordSize != 156 && recordSize != 148) || refusedSizes.count(recordSize) != 0) return std::nullopt;
  VersionRecord record = version;
  if (recordSize == 148)
    record.servicePackMajor = record.servicePackMinor = record.suiteMask = record.productType = 0;
  return record;
}

std::string SimulatedSystem::Environment(const std::string& name) {
  for (const auto& [key, value] : environment)
    if (LowerCase(key) == LowerCase(name)) return value;
  return {};
}

Result<Guid> SimulatedSystem::NewGuid() {
  if (guidFailure) return guidFailure;
  return Guid{++guids_, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
}

std::string SimulatedSystem::ErrorText(std::int32_t code) {
  const auto found = errorTexts.find(code);
  return found == errorTexts.end() ? "Error " + std::to_string(code) + ".\r\n" : found->second;
}

Failure SimulatedComponents::Create(const std::string& progId) {
  const auto found = components.find(progId);
  if (found != components.end()) return found->second;
  return {failures::kComponentMissing, "ActiveX component can't create object"};
}

ModuleHandle SimulatedComponents::LoadModule(const std::string& name) {
  loadedModules.push_back(name);
  ++openModules;
  return loadedModules.size();
}

void SimulatedComponents::UnloadModule(ModuleHandle module) {
  if (module != 0) --openModules;
}

Failure SimulatedComponents::StartControls(int recordSize, int classes) {
  startedControls.emplace_back(recordSize, classes);
  return controlsFailure;
}

}  // namespace tessary
