#include "config/modFolders.h"

#include <algorithm>
#include <initializer_list>
#include <optional>

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

/// Tries candidates one after the other and keeps the first that is or can be made a folder.
class FolderWalk {
 public:
  explicit FolderWalk(Run& run) : run_(run) {}

  void Try(const std::string& candidate) {
    try {
      if (EnsureFolder(run_, candidate, true)) found_ = candidate;
    } catch (const Error& error) {
      lastError_ = error;
    }
  }
  [[nodiscard]] bool Searching() const { return found_.empty(); }

  /// The folder, or the error of the last candidate; empty where nothing was tried in vain.
  [[nodiscard]] std::string Result() const {
    if (found_.empty() && lastError_) throw Error(*lastError_);
    return found_;
  }

 private:
  Run& run_;
  std::string found_;
  std::optional<Error> lastError_;
};

/// Walks the folders that `shared` names, with the program's own part, then the machine setting, then the
/// folder below the program.
std::string FirstFolder(Run& run, std::initializer_list<std::string> shared, const std::string& setting,
                        const std::string& lastResort) {
  const PathStyle& style = run.host.paths;
  FolderWalk walk(run);
  for (const std::string& base : shared)
    if (walk.Searching() && !base.empty()) walk.Try(OwnPart(run, style.Native(base)));
  if (walk.Searching())
    if (const std::string machine = GetMachineSetting(run, setting); !machine.empty())
      walk.Try(WithoutOneSeparator(style, style.Native(machine)));
  if (walk.Searching()) walk.Try(JoinPath(style, GetProgramFolder(run), lastResort));
  return walk.Result();
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
