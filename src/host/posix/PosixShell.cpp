#include "host/posix/PosixShell.h"

#include <unistd.h>

#include "host/posix/ChildProcess.h"
#include "host/posix/InstalledFonts.h"
#include "host/posix/PosixFile.h"
#include "host/posix/UserDirs.h"
#include "host/posix/UserFolders.h"

namespace tessary {

namespace {

constexpr std::int32_t kOpened = 33;
constexpr std::int32_t kNotFound = 2;
constexpr std::int32_t kNoProgram = 31;

std::optional<std::string> UserFolder(const char* key, const char* usualName) {
  const std::string home = HomeFolder();
  if (home.empty()) return std::nullopt;
  const std::string noted = FindUserDir(ReadWholeFile(Below(ConfigFolder(), "user-dirs.dirs")), key, home);
  return noted.empty() ? Below(home, usualName) : noted;
}

}  // namespace

std::optional<std::string> PosixShell::SpecialFolder(std::int32_t id) {
  switch (id) {
    case folders::kDesktop:
      return UserFolder("XDG_DESKTOP_DIR", "Desktop");
    case folders::kPersonal:
      return UserFolder("XDG_DOCUMENTS_DIR", "Documents");
    case folders::kFonts:
      return "/usr/share/fonts";
    default:
      return std::nullopt;
  }
}

std::vector<FontEntry> PosixShell::InstalledFonts() { return ListTrueTypeFonts(); }

std::int32_t PosixShell::Open(const std::string& target) {
  if (EnvironmentValue("DISPLAY").empty() && EnvironmentValue("WAYLAND_DISPLAY").empty()) return kNoProgram;
  const std::string folder = FindOnPath("xdg-open");
  if (folder.empty()) return kNoProgram;
  if (target.starts_with('/') && access(target.c_str(), F_OK) != 0) return kNotFound;
  ChildSetup setup;
  // A relative path that begins with "-" would be taken for an option.
  setup.arguments = {Below(folder, "xdg-open"), target.starts_with('-') ? "./" + target : target};
  setup.ownSession = true;
  return ChildProcess::Start(setup).ok() ? kOpened : kNoProgram;
}

}  // namespace tessary
