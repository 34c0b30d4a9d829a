// What the settings of one job are: defaults, the user's file or a file for one single job, and the machine's
// file, in that order from weak to strong.
#pragma once

#include <memory>
#include <string>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

inline constexpr const char* kSettingsSection = "PDF Printer";
inline constexpr const char* kUserSection = "User";

using Settings = std::shared_ptr<Dictionary>;  ///< one flat dictionary, lower-case keys, string values

/// Full paths of the settings files of the run's instance. The first three lie in the user data folder, the
/// global file in the program folder.
std::string GetRunOnceFile(Run& run);
std::string GetSettingsFile(Run& run);
std::string GetUserSettingsFile(Run& run);
std::string GetGlobalFile(Run& run);

/// The layers merged, retired keys converted, missing keys filled in. `settingsFile` receives the user-layer
/// file that was read. The settings file is made with the defaults when missing; a run-once file is used and
/// removed unless `ignoreRunOnce`. Raises kSettingsUnreadable or kSettingsNotWritable.
Settings LoadConfig(Run& run, bool ignoreRunOnce, std::string& settingsFile);

/// Writes a file whose one section holds `settings`, in one step. Raises kSettingsNotWritable; true otherwise.
bool WriteConfig(Run& run, const std::string& file, const Settings& settings);

/// The text that WriteConfig writes.
std::string GetConfigContent(const Settings& settings);

/// New dictionaries: all listed keys with empty values; the same with the defaults written in.
Settings GetConfigKeyList();
Settings GetDefaultConfig();

/// The default of `key`, empty where it has none.
std::string GetDefaultSetting(const std::string& key);

/// Loads the job's settings and settles them, with the dialogs that they ask for. False when the user
/// cancelled; `output` is empty when the save dialog was cancelled and no other followed.
bool GetJobConfig(Run& run, Settings& config, std::string& settingsFile);

/// Makes the settings' own text into the values of this job, in place: macros are expanded, `output` is
/// cleaned, and author and title are chosen between the settings and the job. What is taken from the job is not
/// expanded. Raises what ExpandMacros raises.
void ExpandConfigValues(Run& run, Dictionary& config);

/// False if `confirmoverwrite` is "no" or "0".
bool IsConfirmOverwrite(Dictionary& config);

/// "bottom" or "top"; an empty setting counts as the default.
std::string GetWatermarkLayer(Dictionary& config);

/// One remembered value of an INI file, and `fallback` when the file, the section or the key is missing. Raises
/// kSettingsUnreadable.
std::string IniGetUserSetting(Run& run, const std::string& file, const std::string& section,
                              const std::string& key, const std::string& fallback);

/// Writes one remembered value; an empty section name means the root of the file. False if the file cannot be
/// saved; raises kSettingsUnreadable if it cannot be read.
bool IniSetUserSetting(Run& run, const std::string& file, const std::string& section, const std::string& key,
                       const std::string& value);

/// The same for the user settings file and its section "User".
std::string GetUserSetting(Run& run, const std::string& key, const std::string& fallback);
bool SetUserSetting(Run& run, const std::string& key, const std::string& value);

/// Puts the remembered file name, or folder, of the last output into `output`.
void RestoreLastFileName(Run& run, Dictionary& config);
void RestoreLastFolderName(Run& run, Dictionary& config);

}  // namespace tessary
