#include "monitor/posix/BackendOutput.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "config/modFolders.h"
#include "host/posix/PosixFile.h"
#include "monitor/posix/JobReport.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"

namespace tessary {

namespace {

constexpr std::size_t kMaxName = 200;  // bytes; a name takes 255 with number and extension
constexpr int kMostNumbers = 9999;

bool Exists(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0;
}

/// True if `path` still names the open file.
bool IsNamed(const std::string& path, int fd) {
  struct stat named {};
  struct stat opened {};
  return lstat(path.c_str(), &named) == 0 && fstat(fd, &opened) == 0 && named.st_dev == opened.st_dev &&
         named.st_ino == opened.st_ino;
}

}  // namespace

BackendOutput::BackendOutput(Run& run, const std::string& folder, const std::string& title) {
  if (!FolderExists(run, folder) || faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
    throw Error(errors::kCommon,
                "The folder " + folder + " of the machine setting RemoteFolder cannot be used.");
  const std::string base = DocumentFileName(title);
  for (int number = 1; number <= kMostNumbers; ++number) {
    const std::string suffix = number > 1 ? " (" + std::to_string(number) + ")" : "";
    if (Take(run, folder, base + suffix + ".pdf")) return;
  }
  throw Error(errors::kCommon, "The folder " + folder + " holds too many documents named '" + base + "'.");
}

/// A lock stands for the name until the document is there. It goes with the process, however that ends.
bool BackendOutput::Take(Run& run, const std::string& folder, const std::string& name) {
  const PathStyle& style = run.host.paths;
  path_ = JoinPath(style, folder, name);
  lockFile_ = JoinPath(style, GetTemporaryFolder(run), "remote-" + name + ".lock");
  do {
    Result<UniqueFd> lock = OpenDescriptor(lockFile_, O_WRONLY | O_CREAT | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    RaiseIf(lock.failure);
    if (flock(lock.value.Get(), LOCK_EX | LOCK_NB) != 0) return false;
    lock_ = std::move(lock.value);
  } while (!IsNamed(lockFile_, lock_.Get()));
  if (!Exists(path_)) return true;
  unlink(lockFile_.c_str());
  lock_.Reset();
  return false;
}

BackendOutput::~BackendOutput() {
  if (lock_) unlink(lockFile_.c_str());
}

std::string DocumentFileName(const std::string& title) {
  std::string name = SafeFileName(CutText(title, kMaxName));
  std::replace_if(
      name.begin(), name.end(), [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }, ' ');
  name = TrimBlanks(name);
  if (name.starts_with('.')) name.front() = '_';
  return name.empty() ? "Document" : name;
}

}  // namespace tessary
