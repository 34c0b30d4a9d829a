#include "host/posix/PosixShell.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <unistd.h>

#include "host/posix/ChildProcess.h"
#include "host/posix/InstalledFonts.h"
#include "host/posix/PosixFile.h"
#include "host/posix/UserDirs.h"
#include "host/posix/UserFolders.h"

namespace tessary {

namespace {

constexpr const char* kFontsFolder = "/usr/share/fonts";
constexpr std::int32_t kOpened = 33;
constexpr std::int32_t kNotFound = 2;
constexpr std::int32_t kNoProgram = 31;

/// xdg-open tells within this time that it could not open something. On some desktops it lives as long as the
/// program that it started, so its end is not waited for longer.
constexpr int kMostMilliseconds = 2000;

std::optional<std::string> UserFolder(const char* key, const char* usualName) {
  const std::string home = HomeFolder();
  if (home.empty()) return std::nullopt;
  const std::string noted = FindUserDir(ReadWholeFile(Below(ConfigFolder(), "user-dirs.dirs")), key, home);
  return noted.empty() ? Below(home, usualName) : noted;
}

/// True for "https://…" and the like. No path looks like that, as long as it has single separators.
bool IsAddress(const std::string& target) {
  const std::size_t end = target.find("://");
  return end != std::string::npos && end > 0 && target.find('/') == end + 1;
}

/// The code for the exit code of xdg-open.
std::int32_t OpenResult(std::int32_t exitCode) {
  switch (exitCode) {
    case 0:
      return kOpened;
    case 2:
      return kNotFound;
    case 5:
      return EACCES;
    default:
      return kNoProgram;  // 3 no way to open it, 4 no program for its type, or one that failed at once
  }
}

}  // namespace

std::optional<std::string> PosixShell::SpecialFolder(std::int32_t id) {
  switch (id) {
    case folders::kDesktop:
      return UserFolder("XDG_DESKTOP_DIR", "Desktop");
    case folders::kPersonal:
      return UserFolder("XDG_DOCUMENTS_DIR", "Documents");
    case folders::kFonts:
      return kFontsFolder;
    default:
      return std::nullopt;
  }
}

std::vector<FontEntry> PosixShell::InstalledFonts() { return ListTrueTypeFonts(); }

std::string PosixShell::FontFile(const std::string& name) {
  if (fontFile_.empty() || name != fontName_) {
    fontName_ = name;
    fontFile_ = FindFontFile(name);
    // Where there is no font at all Ghostscript puts one of its own in the place of a missing file.
    if (fontFile_.empty()) fontFile_ = Below(kFontsFolder, name);
  }
  return fontFile_;
}

std::int32_t PosixShell::Open(const std::string& target) {
  std::error_code error;
  // A relative path could be taken for an option, or for an address.
  const std::string what = IsAddress(target) ? target : std::filesystem::absolute(target, error).string();
  if (error || (!IsAddress(target) && access(what.c_str(), F_OK) != 0)) return kNotFound;
  if (EnvironmentValue("DISPLAY").empty() && EnvironmentValue("WAYLAND_DISPLAY").empty()) return kNoProgram;
  const std::string folder = FindOnPath("xdg-open");
  if (folder.empty()) return kNoProgram;
  ChildSetup setup;
  setup.arguments = {Below(folder, "xdg-open"), what};
  setup.ownSession = true;
  Result<ChildProcess> child = ChildProcess::Start(setup);
  if (!child.ok()) return kNoProgram;
  return child.value.Wait(kMostMilliseconds) ? OpenResult(child.value.ExitCode()) : kOpened;
}

}  // namespace tessary
