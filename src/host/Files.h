// Files and folders of a machine. Paths are in the host's own form (PathStyle) and UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/Failure.h"

namespace tessary {

enum class FileKind { Plain, Folder, Other };  ///< Other: a device, a pipe, a socket

struct FileInfo {
  std::string name;  ///< without its folder
  FileKind kind = FileKind::Plain;
  std::uint64_t size = 0;     ///< bytes; 0 for what is not Plain
  std::int64_t modified = 0;  ///< seconds since 1970-01-01 UTC
};

enum class OpenMode {
  Read,    ///< must exist; other programs may go on reading and writing it
  Create,  ///< for reading and writing, emptied first; made with access for its owner alone when missing
  Append,  ///< every write goes to the end, wherever that is by then; made like Create when missing
};

/// An open file, closed when the object goes.
class File {
 public:
  virtual ~File() = default;
  /// Reads up to `size` bytes from the current position and moves on; 0 only at the end of the file.
  virtual Result<std::size_t> Read(char* buffer, std::size_t size) = 0;
  /// Writes all of `bytes` and moves on. After a failure some of them may have been written.
  virtual Failure Write(std::string_view bytes) = 0;
  /// Moves the current position, counted in bytes from the start.
  virtual Failure Seek(std::uint64_t position) = 0;
  /// Cuts the file off at the current position.
  virtual Failure Truncate() = 0;
  virtual Result<std::uint64_t> Size() = 0;
  /// Closes early, to learn of a write that failed late. A second call does nothing.
  virtual Failure Close() = 0;
};

/// A lock between processes, given back when the object goes or its process ends, however it ends.
class FileLock {
 public:
  virtual ~FileLock() = default;
};

/// A path whose folder is missing fails with kPathNotFound wherever a file or folder would be made, a missing
/// file with kFileNotFound, a path with a NUL or of impossible length with kBadFileName.
class Files {
 public:
  virtual ~Files() = default;

  /// What stands at `path`, links followed. Where the machine's names cannot hold `*` and `?` these are
  /// wildcards in the last part of the path and the first match is given; elsewhere they are letters like any
  /// other. Nothing if there is none, or if it may not be looked at. A folder may be named with a separator at
  /// its end.
  virtual std::optional<FileInfo> Find(const std::string& path) = 0;

  /// Everything in `folder` but "." and "..", in no fixed order, links not followed (a link is Other).
  virtual Result<std::vector<FileInfo>> List(const std::string& folder) = 0;

  /// Opens a file. A folder fails with kPathFileAccess in every mode.
  virtual Result<std::unique_ptr<File>> Open(const std::string& path, OpenMode mode) = 0;

  /// Makes `bytes` the whole content of the file, in one step: a reader sees the old file or the new one, and
  /// after a failure the old one is as it was and nothing is left beside it. A link's target is replaced, not
  /// the link; an existing file keeps its access rights, a new one is for its owner alone. What is no plain
  /// file (a device, a pipe) is written in place.
  virtual Failure Replace(const std::string& path, std::string_view bytes) = 0;

  /// Copies a plain file to `destination` in the same one step and with the same promises, but a new file gets
  /// the access rights that the user's new documents have. No folder is made.
  virtual Failure Copy(const std::string& source, const std::string& destination) = 0;

  /// Removes a file, or a link. A folder fails.
  virtual Failure Remove(const std::string& path) = 0;

  /// Removes a folder that is empty. One that is not fails with kPathFileAccess.
  virtual Failure RemoveFolder(const std::string& path) = 0;

  /// Makes one folder, for its owner alone. Its parent must exist. One that exists fails with kPathFileAccess.
  virtual Failure MakeFolder(const std::string& path) = 0;

  /// Waits until this process alone holds the lock named by `path`, making the file when missing and leaving it
  /// behind. Fails as Open with OpenMode::Append does.
  virtual Result<std::unique_ptr<FileLock>> Lock(const std::string& path) = 0;

  /// The roots of the machine, such as "C:\"; just "/" where there are no drives.
  virtual std::vector<std::string> Drives() = 0;
};

}  // namespace tessary
