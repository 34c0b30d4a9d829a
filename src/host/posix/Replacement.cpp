#include "host/posix/Replacement.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <linux/limits.h>
#include <linux/magic.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

#include "host/posix/PosixFailure.h"
#include "host/posix/PosixFile.h"

namespace tessary {

namespace {

constexpr int kMostLinks = 40;  // as many as the kernel follows
constexpr mode_t kOwnerOnly = 0600;

/// Where the new file goes: an open folder and the name in it. Working below the open folder keeps the
/// temporary file beside its target whatever happens to the path, and however long the path is.
struct Target {
  UniqueFd folder;
  std::string name;
  struct stat status {};
  bool exists = false;
};

/// The folder part of `path`, as a path that can be opened.
std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

/// False for a link that a stranger may have laid in a folder like /tmp, the rule by which the kernel itself
/// does not follow it.
bool IsTrusted(const std::string& path, const struct stat& link) {
  struct stat folder {};
  if (stat(FolderOf(path).c_str(), &folder) != 0) return false;
  constexpr mode_t kForEverybody = S_ISVTX | S_IWOTH;
  return (folder.st_mode & kForEverybody) != kForEverybody || link.st_uid == geteuid() ||
         link.st_uid == folder.st_uid;
}

/// Follows the links at the end of `path`, also one that leads to nothing yet.
Result<std::string> ResolveLinks(std::string path) {
  for (int links = 0; links < kMostLinks; ++links) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return path;
    if (!IsTrusted(path, status)) return FailureOf(EACCES);
    char buffer[PATH_MAX];
    const ssize_t length = readlink(path.c_str(), buffer, sizeof buffer);
    if (length < 0) return PathFailureOf(errno);
    const std::string link(buffer, static_cast<std::size_t>(length));
    path = link.starts_with('/') ? link : path.substr(0, path.rfind('/') + 1) + link;
  }
  return FailureOf(ELOOP);
}

Result<Target> FindTarget(const std::string& path) {
  const Result<std::string> resolved = ResolveLinks(path);
  if (!resolved.ok()) return resolved.failure;
  Target target;
  target.name = resolved.value.substr(resolved.value.rfind('/') + 1);
  if (target.name.empty()) return FailureOf(EISDIR);
  target.folder = UniqueFd(open(FolderOf(resolved.value).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!target.folder) return FolderFailureOf(errno);
  const int fd = target.folder.Get();
  target.exists = fstatat(fd, target.name.c_str(), &target.status, AT_SYMLINK_NOFOLLOW) == 0;
  if (!target.exists && errno != ENOENT) return PathFailureOf(errno);
  // Renaming over a read-only file would work where writing to it does not.
  if (target.exists && faccessat(fd, target.name.c_str(), W_OK, AT_EACCESS) != 0) return PathFailureOf(errno);
  return target;
}

/// True on file systems where a file can be made first and named when it is whole. Others, those of networks
/// among them, may refuse the name after the file.
bool NamesLater(int folder) {
  struct statfs status {};
  if (fstatfs(folder, &status) != 0) return false;
  constexpr std::array<unsigned, 6> kKnown = {EXT4_SUPER_MAGIC, XFS_SUPER_MAGIC, BTRFS_SUPER_MAGIC,
                                              F2FS_SUPER_MAGIC, TMPFS_MAGIC,     OVERLAYFS_SUPER_MAGIC};
  return std::find(kKnown.begin(), kKnown.end(), static_cast<unsigned>(status.f_type)) != kKnown.end();
}

/// A new file in the folder. It has no name before it is whole, so that a killed program leaves nothing behind,
/// or, where that cannot be done, one that nobody uses. Removed when the object goes unless it was moved to its
/// target.
class TemporaryFile {
 public:
  explicit TemporaryFile(int folder) : folder_(folder) {}
  ~TemporaryFile() {
    if (!name_.empty()) unlinkat(folder_, name_.c_str(), 0);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  [[nodiscard]] int Fd() const { return fd_.Get(); }

  Failure Create(mode_t mode) {
    const int flags = O_WRONLY | O_CLOEXEC;
    if (NamesLater(folder_))
      fd_ = UniqueFd(Restarted([&] { return openat(folder_, ".", flags | O_TMPFILE, mode); }));
    if (fd_) return {};
    return TakeFreeName([&](const char* name) {
      fd_ = UniqueFd(Restarted([&] { return openat(folder_, name, flags | O_CREAT | O_EXCL, mode); }));
      return static_cast<bool>(fd_);
    });
  }

  /// Gives the new file the tags, owner, group and access rights of the old one, as far as that is allowed.
  /// Where the group or the access list cannot be kept, the group has the rights of all others.
  Failure TakeRightsOf(const Target& old) {
    const struct stat& status = old.status;
    CopyTags(old.name);
    const bool groupKept = fchown(Fd(), status.st_uid, status.st_gid) == 0 ||
                           fchown(Fd(), static_cast<uid_t>(-1), status.st_gid) == 0;
    mode_t mode = status.st_mode & 0777;
    if (!CopyAccessList(old.name) || !groupKept) mode = (mode & 0707) | ((mode & 07) << 3);
    if (fchmod(Fd(), mode) != 0) return FailureOf(errno);
    return {};
  }

  Failure MoveTo(const Target& target) {
    const std::string self = "/proc/self/fd/" + std::to_string(Fd());
    const auto link = [&](const char* name) {
      return linkat(AT_FDCWD, self.c_str(), folder_, name, AT_SYMLINK_FOLLOW) == 0;
    };
    if (name_.empty()) {
      if (Failure failure = TakeFreeName(link)) return failure;
    }
    if (!fd_.Reset()) return FailureOf(errno);
    if (renameat(folder_, name_.c_str(), folder_, target.name.c_str()) != 0) return PathFailureOf(errno);
    name_.clear();
    return {};
  }

 private:
  /// Calls `take` with names until it succeeds or fails for another reason than that the name is in use.
  template <class Take>
  Failure TakeFreeName(Take take) {
    while (true) {
      unsigned number = 0;
      if (Restarted([&] { return getrandom(&number, sizeof number, 0); }) < 0) return FailureOf(errno);
      char name[32];
      std::snprintf(name, sizeof name, ".tessary-%08x", number);
      if (take(name)) {
        name_ = name;
        return {};
      }
      if (errno != EEXIST) return FolderFailureOf(errno);
    }
  }

  [[nodiscard]] std::string PathOf(const std::string& name) const {
    return "/proc/self/fd/" + std::to_string(folder_) + '/' + name;
  }

  /// Copies the extended attributes that people and desktops give to documents.
  void CopyTags(const std::string& name) const {
    const std::string old = PathOf(name);
    std::vector<char> names(XATTR_LIST_MAX), value(XATTR_SIZE_MAX);
    const ssize_t length = listxattr(old.c_str(), names.data(), names.size());
    for (ssize_t at = 0; at < length;) {
      const std::string tag = names.data() + at;
      at += static_cast<ssize_t>(tag.size()) + 1;
      if (!tag.starts_with("user.")) continue;
      const ssize_t size = getxattr(old.c_str(), tag.c_str(), value.data(), value.size());
      if (size >= 0) fsetxattr(Fd(), tag.c_str(), value.data(), static_cast<std::size_t>(size), 0);
    }
  }

  /// Gives the new file the access list of the old one, or none if that has none, as the folder may have given
  /// it one. False if that failed.
  [[nodiscard]] bool CopyAccessList(const std::string& name) const {
    constexpr const char* kAccessList = "system.posix_acl_access";
    const std::string old = PathOf(name);
    std::vector<char> list(XATTR_SIZE_MAX);
    const ssize_t size = getxattr(old.c_str(), kAccessList, list.data(), list.size());
    if (size < 0) return fremovexattr(Fd(), kAccessList) == 0 || errno == ENODATA || errno == EOPNOTSUPP;
    return fsetxattr(Fd(), kAccessList, list.data(), static_cast<std::size_t>(size), 0) == 0;
  }

  int folder_;
  std::string name_;
  UniqueFd fd_;
};

/// Writes to a device or a pipe. O_CREAT lets the kernel refuse a pipe that a stranger has laid in a folder
/// like /tmp.
Failure WriteInPlace(const std::string& path, const Fill& fill) {
  Result<UniqueFd> fd = OpenDescriptor(path, O_WRONLY | O_CREAT, kOwnerOnly);
  if (!fd.ok()) return fd.failure;
  if (Failure failure = fill(fd.value.Get())) return failure;
  return fd.value.Reset() ? Failure{} : FailureOf(errno);
}

}  // namespace

Failure ReplaceFile(const std::string& path, mode_t newMode, const Fill& fill) {
  if (Failure failure = CheckPath(path)) return failure;
  struct stat status {};
  const bool exists = stat(path.c_str(), &status) == 0;
  if (!exists && errno != ENOENT) return PathFailureOf(errno);
  if (exists && !S_ISREG(status.st_mode)) return WriteInPlace(path, fill);

  const Result<Target> target = FindTarget(path);
  if (!target.ok()) return target.failure;
  TemporaryFile temporary(target.value.folder.Get());
  if (Failure failure = temporary.Create(target.value.exists ? kOwnerOnly : newMode)) return failure;
  if (Failure failure = fill(temporary.Fd())) return failure;
  if (target.value.exists) {
    if (Failure failure = temporary.TakeRightsOf(target.value)) return failure;
  }
  return temporary.MoveTo(target.value);
}

Failure CopyAll(int input, int output) {
  struct stat status {};
  if (fstat(input, &status) != 0) return FailureOf(errno);
  if (!S_ISREG(status.st_mode)) return FailureOf(EINVAL);

  // The kernel copies by itself as far as it can; what it refuses, and why, shows in the plain loop behind it.
  constexpr std::size_t kMost = 1u << 30;
  while (copy_file_range(input, nullptr, output, nullptr, kMost, 0) > 0) {
  }
  std::vector<char> buffer(256 * 1024);
  while (true) {
    const ssize_t count = Restarted([&] { return read(input, buffer.data(), buffer.size()); });
    if (count < 0) return FailureOf(errno);
    if (count == 0) return {};
    if (Failure failure = WriteAll(output, {buffer.data(), static_cast<std::size_t>(count)})) return failure;
  }
}

}  // namespace tessary
