#include "monitor/RunOnce.h"

#include "config/IniFile.h"
#include "config/modConfig.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/FileHelpers.h"

namespace tessary {

namespace {

/// How long another job may wait for the lock after its turn has come. This job itself waits for nothing.
constexpr int kLookMilliseconds = 10;

/// Stands in the files that are written here. No job reads it.
constexpr const char* kJobMark = "printjob";

/// The settings in `file`, their keys in lower case.
Settings SettingsIn(Run& run, const std::string& file) {
  IniFile ini(run);
  if (!ini.Load(file))
    throw Error(errors::kSettingsUnreadable, "Unable to load settings from '" + file + "'. Error " +
                                                 std::to_string(ini.LastError()) + ": " +
                                                 ini.LastErrorMessage());
  Settings settings = NewDictionary();
  if (const Settings section = (*ini.data())[kSettingsSection].AsDictionary())
    for (const auto& [key, value] : *section) settings->Set(ToLower(key), value);
  return settings;
}

/// The settings that the job begins with. A run-once file from here that nobody took is that of a job which was
/// killed, and of no other.
Settings BaseSettings(Run& run, const std::string& runOnceFile) {
  if (FileExists(run, runOnceFile)) {
    Settings once = SettingsIn(run, runOnceFile);
    if (!once->Exists(kJobMark)) return once;
    run.host.files.Remove(runOnceFile);
  }
  const std::string file = GetSettingsFile(run);
  if (!FileExists(run, file)) WriteConfig(run, file, GetDefaultConfig());
  return SettingsIn(run, file);
}

}  // namespace

RunOnce::RunOnce(Run& run, const std::vector<std::pair<std::string, std::string>>& settings)
    : run_(run), file_(GetRunOnceFile(run)) {
  auto lock = run.host.files.Lock(file_ + ".lock");
  RaiseIf(lock.failure);
  lock_ = std::move(lock.value);
  const Settings once = BaseSettings(run, file_);
  for (const auto& [key, value] : settings) once->Set(key, value);
  once->Set(kJobMark, "yes");
  written_ = EncodeText(run.host.codePage, GetConfigContent(once));
  WriteConfig(run, file_, once);
}

RunOnce::~RunOnce() {
  try {
    // A file of other content is another program's, for the job after this one.
    if (FileExists(run_, file_) && ReadFile(run_, file_) == written_) run_.host.files.Remove(file_);
  } catch (const Error&) {
    // Taken in the meantime.
  }
}

void RunOnce::AwaitTaken(Process& gui) {
  while (FileExists(run_, file_) && !gui.Wait(kLookMilliseconds)) continue;
}

}  // namespace tessary
