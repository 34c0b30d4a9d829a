#include "host/posix/PosixFailure.h"

#include <cerrno>
#include <cstring>

namespace tessary {

namespace {

std::int32_t NumberOf(int code) {
  switch (code) {
    case ENOENT:
      return failures::kFileNotFound;
    case ENOTDIR:
      return failures::kPathNotFound;
    case EACCES:
    case EPERM:
    case EBUSY:
    case ETXTBSY:
    case EROFS:
    case EISDIR:
      return failures::kPathFileAccess;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return failures::kDiskFull;
    case EEXIST:
      return failures::kFileExists;
    case EMFILE:
    case ENFILE:
      return failures::kTooManyFiles;
    case ENAMETOOLONG:
      return failures::kBadFileName;
    default:
      return failures::kDeviceIo;
  }
}

}  // namespace

Failure FailureOf(int code) { return {NumberOf(code), std::strerror(code)}; }

Failure PathFailureOf(int code) {
  Failure failure = FailureOf(code);
  if (code == EINVAL || code == EILSEQ) failure.number = failures::kBadFileName;
  return failure;
}

Failure FolderFailureOf(int code) {
  Failure failure = PathFailureOf(code);
  if (code == ENOENT) failure.number = failures::kPathNotFound;
  return failure;
}

Failure CheckPath(const std::string& path) {
  if (path.empty() || path.find('\0') != std::string::npos) return PathFailureOf(EINVAL);
  return {};
}

}  // namespace tessary
