#include "config/modFolders.h"

#include <algorithm>
#include <vector>

#include "system/Error.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/RegistryHelpers.h"
#include "system/modCustom.h"

namespace tessary {

namespace {

std::string WithoutOneSeparator(const PathStyle& style, std::string path) {
  if (!path.empty() && style.IsSeparator(path.back())) path.pop_back();
  return path;
}

/// The company and product folders below a folder that is shared with other programs.
std::string OwnPart(Run& run, const std::string& base) {
  const PathStyle& style = run.host.paths;
  const std::string company = SafeFileName(GetCompanyName()), product = SafeFileName(GetProductFolderName());
  return WithoutOneSeparator(style, base) + style.separator + company + style.separator + product;
}

/// The first of `shared`, each with the program's own part, the machine setting and the folder below the
/// program that is or can be made a folder.
std::string FirstFolder(Run& run, const std::vector<std::string>& shared, const std::string& setting,
                        const std::string& lastResort) {
  std::vector<std::string> candidates;
  for (const std::string& base : shared)
    if (!base.empty()) candidates.push_back(OwnPart(run, run.host.paths.Native(base)));
  if (const std::string machine = GetMachineSetting(run, setting); !machine.empty())
    candidates.push_back(WithoutOneSeparator(run.host.paths, run.host.paths.Native(machine)));
  candidates.push_back(JoinPath(run.host.paths, GetProgramFolder(run), lastResort));

  std::optional<Error> lastError;
  for (const std::string& candidate : candidates) {
    try {
      if (EnsureFolder(run, candidate, true)) return candidate;
    } catch (const Error& error) {
      lastError = error;
    }
  }
  if (lastError) throw Error(*lastError);
  return {};
}

}  // namespace

std::string GetTemporaryFolder(Run& run) {
  if (run.folders.temporary.empty()) {
    System& system = run.host.system;
    run.folders.temporary =
        FirstFolder(run, {GetSystemTempPath(run), system.Environment("TEMP"), system.Environment("TMP")},
                    "USERTEMP", "temp");
  }
  return run.folders.temporary;
}

std::string GetUserDataFolder(Run& run) {
  if (run.folders.userData.empty()) {
    System& system = run.host.system;
    run.folders.userData = FirstFolder(run, {system.Environment("APPDATA"), system.Environment("USERPROFILE")},
                                       "USERDATA", "data");
  }
  return run.folders.userData;
}

std::string GetProgramFolder(Run& run) {
  return StripTrailingBackslashes(run.host.paths, ParentFolder(run.host.paths, run.host.programFile));
}

bool EnsureFolder(Run& run, const std::string& path, bool create) {
  if (create && !FolderExists(run, path)) MkDirRecurse(run, path);
  return FolderExists(run, path);
}

std::string GetMachineSetting(Run& run, const std::string& name) {
  const std::string path = "HKEY_LOCAL_MACHINE\\SOFTWARE\\" + RegistrySafeName(GetCompanyName()) + "\\" +
                           RegistrySafeName(GetProductFolderName()) + "\\Settings\\" + name;
  return RegistryText(RegRead(run, path, true));
}

std::string RegistrySafeName(std::string name) {
  std::replace(name.begin(), name.end(), '\\', '_');
  return name;
}

}  // namespace tessary
