#include "host/posix/PosixSystem.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <pwd.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>
#include <utility>

#include "host/posix/PosixFailure.h"
#include "host/posix/UniqueFd.h"
#include "host/posix/UserFolders.h"

namespace tessary {

namespace {

constexpr mode_t kOthersWrite = S_IWGRP | S_IWOTH;

/// True if nobody else can put another folder in the place of one that this user makes in the folder.
bool ProtectsItsEntries(const struct stat& folder) {
  if ((folder.st_mode & S_ISVTX) != 0) return true;
  return (folder.st_mode & kOthersWrite) == 0 && (folder.st_uid == geteuid() || folder.st_uid == 0);
}

/// Makes sure that `path` is a folder of this user's alone. False if it is anything else, such as a trap laid
/// by somebody who was here first.
bool EnsureOwnFolder(const std::string& path) {
  if (mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) return false;
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) || status.st_uid != geteuid()) return false;
  return (status.st_mode & 07777) == 0700 || chmod(path.c_str(), 0700) == 0;
}

/// `base` for temporary files, if it is this user's alone or does not exist yet; otherwise a folder of the
/// user's own below it. Empty if `base` is no full path or there is no safe folder.
std::string PrivateFolder(std::string base) {
  if (!base.starts_with('/')) return {};
  base = WithoutSlashes(std::move(base));
  struct stat status {};
  if (stat(base.c_str(), &status) != 0) return errno == ENOENT ? base : "";
  if (!S_ISDIR(status.st_mode)) return {};
  if (status.st_uid == geteuid() && (status.st_mode & kOthersWrite) == 0) return base;
  const std::string own = Below(base, "tessary-" + std::to_string(geteuid()));
  return ProtectsItsEntries(status) && EnsureOwnFolder(own) ? own : "";
}

}  // namespace

std::string PosixSystem::ComputerName() {
  char name[HOST_NAME_MAX + 1] = {};
  return gethostname(name, sizeof name) == 0 ? name : "";
}

std::string PosixSystem::UserName() {
  const passwd* user = getpwuid(geteuid());
  return user && user->pw_name ? user->pw_name : EnvironmentValue("USER");
}

std::optional<VersionRecord> PosixSystem::Version(int recordSize) {
  if (recordSize != 156 && recordSize != 148) return std::nullopt;
  VersionRecord record;
  utsname names{};
  if (uname(&names) == 0) std::sscanf(names.release, "%9u.%9u", &record.majorVersion, &record.minorVersion);
  return record;
}

std::string PosixSystem::Environment(const std::string& name) {
  if (name == "APPDATA") return ConfigFolder();
  if (name == "USERPROFILE") return HomeFolder();
  const std::string value = EnvironmentValue(name.c_str());
  return name == "TEMP" || name == "TMP" ? PrivateFolder(value) : value;
}

std::string PosixSystem::TempPath() {
  for (const std::string& base : {EnvironmentValue("TMPDIR"), std::string("/tmp")})
    if (std::string own = PrivateFolder(base); !own.empty()) return own;
  // Somebody else has taken the name there, which must not keep this user from working.
  const std::string home = HomeFolder(), cache = Below(home, ".cache"), own = Below(cache, "tessary");
  if (home.empty() || (mkdir(cache.c_str(), 0700) != 0 && errno != EEXIST)) return {};
  return EnsureOwnFolder(own) ? own : "";
}

Result<Guid> PosixSystem::NewGuid() {
  Guid guid;
  if (Restarted([&] { return getrandom(&guid, sizeof guid, 0); }) != sizeof guid) return FailureOf(errno);
  guid.data3 = static_cast<std::uint16_t>((guid.data3 & 0x0FFF) | 0x4000);
  guid.data4[0] = static_cast<std::uint8_t>((guid.data4[0] & 0x3F) | 0x80);
  return guid;
}

std::string PosixSystem::ErrorText(std::int32_t code) { return std::strerror(code); }

}  // namespace tessary
