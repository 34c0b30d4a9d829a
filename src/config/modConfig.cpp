#include "config/modConfig.h"

#include <algorithm>
#include <cmath>

#include "config/IniFile.h"
#include "config/SettingsTable.h"
#include "config/modFolders.h"
#include "config/modMacros.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/modLog.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

/// `<folder>/<role><suffix>.ini` of the run's instance.
std::string InstanceFile(Run& run, const std::string& folder, const std::string& role) {
  const std::string suffix = run.job.InstanceName.empty() ? "" : "-" + run.job.InstanceName;
  return JoinPath(run.host.paths, folder, role + suffix + ".ini");
}

std::string ErrorText(std::int32_t number, const std::string& description) {
  return "Error " + std::to_string(number) + ": " + description;
}

std::string LastErrorText(const IniFile& ini) { return ErrorText(ini.LastError(), ini.LastErrorMessage()); }

/// Runs `body`; what it raises passes on with the operation's name in front of its source.
template <class Body>
auto Sourced(const char* operation, Body body) {
  try {
    return body();
  } catch (const Error& error) {
    throw Error(error.number(), error.description(), std::string(operation) + "::" + error.source());
  }
}

std::shared_ptr<Dictionary> SettingsTree(const Settings& settings) {
  auto root = NewDictionary();
  root->Set(kSettingsSection, settings);
  return root;
}

void CopyLowerCased(const Dictionary& from, Dictionary& to) {
  for (const auto& [key, value] : from) to.Set(ToLower(key), value);
}

/// The section of a loaded file, or null, which is logged.
Settings SectionOf(Run& run, const IniFile& ini, const std::string& file) {
  Settings section = (*ini.data())[kSettingsSection].AsDictionary();
  if (!section) WriteLog(run, "No [PDF Printer] section found in the settings file '" + file + "'.");
  return section;
}

/// Chooses the file of the user layer and makes it when missing. True if it is a run-once file.
bool ChooseUserFile(Run& run, bool ignoreRunOnce, std::string& file) {
  file = GetRunOnceFile(run);
  WriteLog(run, "Look for settings in " + file);
  if (!ignoreRunOnce && FileExists(run, file)) return true;
  file = GetSettingsFile(run);
  WriteLog(run, "Look for settings in " + file);
  if (!FileExists(run, file)) WriteConfig(run, file, GetDefaultConfig());
  return false;
}

void RemoveRunOnceFile(Run& run, const std::string& file) {
  WriteLog(run, "Remove runonce.ini");
  if (const Failure failure = run.host.files.Remove(file))
    WriteLog(run, "Error removing '" + file + "'. " + ErrorText(failure.number, failure.text));
}

void LoadUserLayer(Run& run, bool ignoreRunOnce, std::string& settingsFile, Dictionary& result) {
  std::string file;
  const bool runOnce = ChooseUserFile(run, ignoreRunOnce, file);
  settingsFile = file;
  WriteLog(run, "Load settings from " + file);
  IniFile ini(run);
  if (!ini.Load(file)) {
    const std::string text = "Unable to load settings. " + LastErrorText(ini);
    WriteLog(run, text);
    throw Error(errors::kSettingsUnreadable, text);
  }
  if (runOnce) RemoveRunOnceFile(run, file);
  if (const Settings section = SectionOf(run, ini, file))
    CopyLowerCased(*section, result);
  else
    WriteConfig(run, file, GetDefaultConfig());
}

void LoadGlobalLayer(Run& run, Dictionary& result) {
  const std::string file = GetGlobalFile(run);
  IniFile ini(run);
  if (!FileExists(run, file) || !ini.Load(file)) return;
  if (const Settings section = SectionOf(run, ini, file)) CopyLowerCased(*section, result);
}

/// `watermarktransparency`, a percentage, was a grey.
void ConvertRetiredColor(Dictionary& settings) {
  const bool unset = settings.Text("watermarkcolor").empty();
  if (!settings.Exists("watermarktransparency") || !unset) return;
  const std::int32_t percent = SafeLong(settings.Text("watermarktransparency"));
  if (percent >= 0 && percent <= 100) {
    const auto grey = static_cast<std::int32_t>(RoundHalfEven(percent / 100.0 * 255));
    settings.Set("watermarkcolor", ColorToHex(grey * 0x010101));
  }
  settings.Remove("watermarktransparency");
}

/// `watermarksize` was counted in sixths of today's default font size.
void ConvertRetiredSize(Dictionary& settings) {
  const bool unset = settings.Text("watermarkfontsize").empty();
  if (!settings.Exists("watermarksize") || !unset) return;
  const double size = LeadingNumber(settings.Text("watermarksize"));
  const double points = std::floor(size / 6 * 45);
  if (size >= 0 && points <= 2147483647.0)
    settings.Set("watermarkfontsize", std::to_string(static_cast<std::int32_t>(points)));
  settings.Remove("watermarksize");
}

void AddMissing(Dictionary& settings) {
  const Settings defaults = GetDefaultConfig();
  for (const auto& [key, value] : *defaults)
    if (!settings.Exists(key)) settings.Add(key, value);
}

/// Brings paths as people write them into the machine's form.
void MakePathsNative(Run& run, Dictionary& settings) {
  for (const SettingKey& row : SettingKeys()) {
    const std::string key(row.key);
    if (row.holds == KeyHolds::Path && settings.Exists(key))
      settings.Set(key, NativeOutsideMacros(run.host.paths, settings.Text(key)));
  }
}

/// Loads a file of remembered values. Raises kSettingsUnreadable in the name of `operation`.
void LoadUserFile(Run& run, IniFile& ini, const std::string& file, const char* operation) {
  if (ini.Load(file)) return;
  const std::string text = "Unable to load user settings (" + file + "). " + LastErrorText(ini);
  WriteLog(run, text);
  throw Error(errors::kSettingsUnreadable, text, operation);
}

}  // namespace

std::string GetRunOnceFile(Run& run) { return InstanceFile(run, GetUserDataFolder(run), "runonce"); }
std::string GetSettingsFile(Run& run) { return InstanceFile(run, GetUserDataFolder(run), "settings"); }
std::string GetUserSettingsFile(Run& run) { return InstanceFile(run, GetUserDataFolder(run), "user"); }
std::string GetGlobalFile(Run& run) { return InstanceFile(run, GetProgramFolder(run), "global"); }

Settings LoadConfig(Run& run, bool ignoreRunOnce, std::string& settingsFile) {
  return Sourced("LoadConfig", [&] {
    Settings result = NewDictionary();
    LoadUserLayer(run, ignoreRunOnce, settingsFile, *result);
    LoadGlobalLayer(run, *result);
    ConvertRetiredColor(*result);
    ConvertRetiredSize(*result);
    AddMissing(*result);
    MakePathsNative(run, *result);
    return result;
  });
}

bool WriteConfig(Run& run, const std::string& file, const Settings& settings) {
  return Sourced("WriteConfig", [&] {
    IniFile ini(run);
    ini.set_data(SettingsTree(settings));
    if (!ini.Save(file))
      throw Error(errors::kSettingsNotWritable,
                  "Error writing settings file '" + file + "'. " + LastErrorText(ini));
    return true;
  });
}

std::string GetConfigContent(const Settings& settings) {
  return Sourced("GetConfigContent", [&] { return IniFile::IniDict2String(*SettingsTree(settings)); });
}

Settings GetConfigKeyList() {
  Settings keys = NewDictionary();
  for (const SettingKey& row : SettingKeys())
    if (row.kind == KeyKind::Listed) keys->Set(std::string(row.key), "");
  return keys;
}

Settings GetDefaultConfig() {
  Settings defaults = GetConfigKeyList();
  for (const SettingKey& row : SettingKeys())
    if (row.kind != KeyKind::Read) defaults->Set(std::string(row.key), std::string(row.defaultValue));
  return defaults;
}

std::string GetDefaultSetting(const std::string& key) { return GetDefaultConfig()->Text(key); }

bool IsConfirmOverwrite(Dictionary& config) {
  const std::string value = ToLower(config.Text("confirmoverwrite"));
  return value != "0" && value != "no";
}

std::string GetWatermarkLayer(Dictionary& config) {
  std::string layer = ToLower(config.Text("watermarklayer"));
  if (layer.empty()) layer = ToLower(GetDefaultSetting("watermarklayer"));
  return layer == "bottom" ? layer : "top";
}

std::string IniGetUserSetting(Run& run, const std::string& file, const std::string& section,
                              const std::string& key, const std::string& fallback) {
  if (!FileExists(run, file)) return fallback;
  IniFile ini(run);
  LoadUserFile(run, ini, file, "IniGetUserSetting");
  const auto values = (*ini.data())[section].AsDictionary();
  return values && values->Exists(key) ? SafeString((*values)[key]) : fallback;
}

bool IniSetUserSetting(Run& run, const std::string& file, const std::string& section, const std::string& key,
                       const std::string& value) {
  IniFile ini(run);
  if (FileExists(run, file)) LoadUserFile(run, ini, file, "IniSetUserSetting");
  if (!ini.data()) ini.set_data(NewDictionary());
  std::shared_ptr<Dictionary> values = ini.data();
  if (!section.empty()) {
    Value& entry = (*ini.data())[section];
    if (!entry.AsDictionary()) entry = NewDictionary();
    values = entry.AsDictionary();
  }
  values->Set(key, value);
  return ini.Save(file);
}

std::string GetUserSetting(Run& run, const std::string& key, const std::string& fallback) {
  return IniGetUserSetting(run, GetUserSettingsFile(run), kUserSection, key, fallback);
}

bool SetUserSetting(Run& run, const std::string& key, const std::string& value) {
  return IniSetUserSetting(run, GetUserSettingsFile(run), kUserSection, key, value);
}

}  // namespace tessary
