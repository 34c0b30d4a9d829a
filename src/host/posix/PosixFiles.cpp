#include "host/posix/PosixFiles.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/posix/PosixFailure.h"
#include "host/posix/PosixFile.h"
#include "host/posix/Replacement.h"

namespace tessary {

namespace {

constexpr mode_t kOwnerOnly = 0600;

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

class PosixLock final : public FileLock {
 public:
  explicit PosixLock(UniqueFd fd) : fd_(std::move(fd)) {}

 private:
  UniqueFd fd_;
};

std::string LastPart(const std::string& path) {
  const std::size_t end = path.find_last_not_of('/');
  if (end == std::string::npos) return {};
  const std::size_t slash = path.find_last_of('/', end);
  const std::size_t begin = slash == std::string::npos ? 0 : slash + 1;
  return path.substr(begin, end + 1 - begin);
}

FileInfo Describe(std::string name, const struct stat& status) {
  FileInfo info;
  info.name = std::move(name);
  info.modified = status.st_mtim.tv_sec;
  if (S_ISREG(status.st_mode)) {
    info.size = static_cast<std::uint64_t>(status.st_size);
  } else {
    info.kind = S_ISDIR(status.st_mode) ? FileKind::Folder : FileKind::Other;
  }
  return info;
}

/// True if `path` still names the open file and not one that has taken its place.
bool StillNamed(const std::string& path, int fd) {
  struct stat named {};
  struct stat opened {};
  return stat(path.c_str(), &named) == 0 && fstat(fd, &opened) == 0 && named.st_dev == opened.st_dev &&
         named.st_ino == opened.st_ino;
}

}  // namespace

std::optional<FileInfo> PosixFiles::Find(const std::string& path) {
  struct stat status {};
  if (CheckPath(path) || stat(path.c_str(), &status) != 0) return std::nullopt;
  return Describe(LastPart(path), status);
}

Result<std::vector<FileInfo>> PosixFiles::List(const std::string& folder) {
  if (Failure failure = CheckPath(folder)) return failure;
  const OpenFolder open(opendir(folder.c_str()));
  if (!open) return FolderFailureOf(errno);

  std::vector<FileInfo> infos;
  while (true) {
    errno = 0;
    const dirent* entry = readdir(open.get());
    if (!entry) break;
    std::string name = entry->d_name;
    if (name == "." || name == "..") continue;
    struct stat status {};
    const bool seen = fstatat(dirfd(open.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0;
    if (!seen && errno == ENOENT) continue;
    infos.push_back(Describe(std::move(name), status));
  }
  if (errno != 0) return FailureOf(errno);
  return infos;
}

Result<std::unique_ptr<File>> PosixFiles::Open(const std::string& path, OpenMode mode) {
  int flags = O_RDONLY;
  if (mode == OpenMode::Create) flags = O_RDWR | O_CREAT | O_TRUNC;
  if (mode == OpenMode::Append) flags = O_WRONLY | O_CREAT | O_APPEND;
  Result<UniqueFd> fd = OpenDescriptor(path, flags, kOwnerOnly);
  if (!fd.ok()) return fd.failure;
  return std::unique_ptr<File>(std::make_unique<PosixFile>(std::move(fd.value)));
}

Failure PosixFiles::Replace(const std::string& path, std::string_view bytes) {
  return ReplaceFile(path, kOwnerOnly, [&](int fd) { return WriteAll(fd, bytes); });
}

Failure PosixFiles::Copy(const std::string& source, const std::string& destination) {
  const Result<UniqueFd> input = OpenDescriptor(source, O_RDONLY, 0);
  if (!input.ok()) return input.failure;
  constexpr mode_t kUsersDocuments = 0666;  // less the umask
  return ReplaceFile(destination, kUsersDocuments, [&](int fd) { return CopyAll(input.value.Get(), fd); });
}

Failure PosixFiles::Remove(const std::string& path) {
  if (Failure failure = CheckPath(path)) return failure;
  if (unlink(path.c_str()) != 0) return PathFailureOf(errno);
  return {};
}

Failure PosixFiles::RemoveFolder(const std::string& path) {
  if (Failure failure = CheckPath(path)) return failure;
  if (rmdir(path.c_str()) == 0) return {};
  const bool hasEntries = errno == ENOTEMPTY || errno == EEXIST;
  Failure failure = FolderFailureOf(errno);
  if (hasEntries) failure.number = failures::kPathFileAccess;
  return failure;
}

Failure PosixFiles::MakeFolder(const std::string& path) {
  if (Failure failure = CheckPath(path)) return failure;
  if (mkdir(path.c_str(), 0700) == 0) return {};
  Failure failure = FolderFailureOf(errno);
  if (failure.number == failures::kFileExists) failure.number = failures::kPathFileAccess;
  return failure;
}

Result<std::unique_ptr<FileLock>> PosixFiles::Lock(const std::string& path) {
  while (true) {
    Result<UniqueFd> fd = OpenDescriptor(path, O_WRONLY | O_CREAT | O_APPEND, kOwnerOnly);
    if (!fd.ok()) return fd.failure;
    if (Restarted([&] { return flock(fd.value.Get(), LOCK_EX); }) != 0) return FailureOf(errno);
    // A lock on a file that somebody removed meanwhile would keep nobody out.
    if (StillNamed(path, fd.value.Get())) {
      return std::unique_ptr<FileLock>(std::make_unique<PosixLock>(std::move(fd.value)));
    }
  }
}

}  // namespace tessary
