#include "host/posix/PosixFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/posix/PosixFailure.h"

namespace tessary {

Result<UniqueFd> OpenDescriptor(const std::string& path, int flags, unsigned mode) {
  if (Failure failure = CheckPath(path)) return failure;
  const int always = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  UniqueFd fd(Restarted([&] { return open(path.c_str(), flags | always, mode); }));
  struct stat status {};
  if (!fd) return (flags & O_CREAT) != 0 ? FolderFailureOf(errno) : PathFailureOf(errno);
  if (fstat(fd.Get(), &status) != 0) return FailureOf(errno);
  if (S_ISDIR(status.st_mode)) return FailureOf(EISDIR);
  if (!S_ISREG(status.st_mode) && fcntl(fd.Get(), F_SETFL, flags & O_APPEND) != 0) return FailureOf(errno);
  return fd;
}

Failure WriteAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = Restarted([&] { return write(fd, bytes.data(), bytes.size()); });
    if (written < 0) return FailureOf(errno);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

std::string ReadWholeFile(const std::string& path) {
  Result<UniqueFd> fd = OpenDescriptor(path, O_RDONLY, 0);
  if (!fd.ok()) return {};
  PosixFile file(std::move(fd.value));
  std::string bytes;
  char buffer[4096];
  while (true) {
    const Result<std::size_t> count = file.Read(buffer, sizeof buffer);
    if (!count.ok() || count.value == 0) return count.ok() ? bytes : std::string();
    bytes.append(buffer, count.value);
  }
}

Result<std::size_t> PosixFile::Read(char* buffer, std::size_t size) {
  const ssize_t count = Restarted([&] { return read(fd_.Get(), buffer, size); });
  if (count < 0) return FailureOf(errno);
  return static_cast<std::size_t>(count);
}

Failure PosixFile::Write(std::string_view bytes) { return WriteAll(fd_.Get(), bytes); }

Failure PosixFile::Seek(std::uint64_t position) {
  if (lseek(fd_.Get(), static_cast<off_t>(position), SEEK_SET) < 0) return FailureOf(errno);
  return {};
}

Failure PosixFile::Truncate() {
  const off_t position = lseek(fd_.Get(), 0, SEEK_CUR);
  if (position < 0 || Restarted([&] { return ftruncate(fd_.Get(), position); }) != 0) return FailureOf(errno);
  return {};
}

Result<std::uint64_t> PosixFile::Size() {
  struct stat status {};
  if (fstat(fd_.Get(), &status) != 0) return FailureOf(errno);
  return static_cast<std::uint64_t>(status.st_size);
}

Failure PosixFile::Close() {
  if (!fd_.Reset()) return FailureOf(errno);
  return {};
}

}  // namespace tessary
