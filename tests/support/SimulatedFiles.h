// The drives of the simulated machine. Names keep their case and are compared without it; "/" parts folders
// like "\"; "." and ".." are resolved; a path without a drive counts from C:\.
#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/Files.h"
#include "tests/support/Journal.h"
#include "tests/support/SimulatedClock.h"

namespace tessary {

class SimulatedFiles : public Files {
 public:
  SimulatedFiles(SimulatedClock& clock, Journal& journal);

  /// Puts a file there, its folders included, whatever its locks and the free space say.
  void Put(const std::string& path, std::string_view bytes);
  /// Adds to the end of a file in the same way.
  void Extend(const std::string& path, std::string_view bytes);
  void PutFolder(const std::string& path);
  /// Adds a drive, "E:\", or a network share, "\\server\share".
  void AddRoot(const std::string& root);

  /// The bytes of a file; the test fails if it is missing.
  [[nodiscard]] std::string Text(const std::string& path) const;
  /// True for a file and for a folder; no wildcards.
  [[nodiscard]] bool Exists(const std::string& path) const;
  /// The names in a folder, sorted without regard to case.
  [[nodiscard]] std::vector<std::string> Names(const std::string& folder) const;

  /// Another program holds the file, which need not exist, for so long: opening it fails with
  /// kPermissionDenied, replacing, removing and copying onto it with kPathFileAccess.
  void Hold(const std::string& path, std::int64_t milliseconds = kForEver);
  void Release(const std::string& path);
  /// A read-only file cannot be written or removed; in a read-only folder nothing can be made or removed.
  void SetReadOnly(const std::string& path, bool readOnly = true);
  void SetModified(const std::string& path, std::int64_t unixTime);
  [[nodiscard]] int OpenHandles() const { return openHandles_; }

  static constexpr std::int64_t kForEver = std::numeric_limits<std::int64_t>::max();
  std::int64_t freeBytes = 1'000'000'000'000;  ///< of all drives together
  int handles = 255;                           ///< files that can be open at once

  std::optional<FileInfo> Find(const std::string& path) override;
  Result<std::vector<FileInfo>> List(const std::string& folder) override;
  Result<std::unique_ptr<File>> Open(const std::string& path, OpenMode mode) override;
  Failure Replace(const std::string& path, std::string_view bytes) override;
  Failure Copy(const std::string& source, const std::string& destination) override;
  Failure Remove(const std::string& path) override;
  Failure RemoveFolder(const std::string& path) override;
  Failure MakeFolder(const std::string& path) override;
  Result<std::unique_ptr<FileLock>> Lock(const std::string& path) override;
  std::vector<std::string> Drives() override;

 private:
  struct Node {
    std::string name;
    FileKind kind = FileKind::Plain;
    std::string bytes;
    std::int64_t modified = 0;
    bool readOnly = false;
    int openHandles = 0;
  };
  class OpenFile;
  class HeldLock;

  [[nodiscard]] std::string FullPath(const std::string& path) const;
  [[nodiscard]] std::shared_ptr<Node> Get(const std::string& fullPath) const;
  [[nodiscard]] std::vector<std::shared_ptr<Node>> Children(const std::string& fullPath) const;
  [[nodiscard]] bool IsFolder(const std::string& fullPath) const;
  [[nodiscard]] bool IsHeld(const std::string& fullPath);
  [[nodiscard]] Failure WhyUnwritable(const std::string& fullPath) const;
  [[nodiscard]] Failure WhyUnreplaceable(const std::string& fullPath);
  std::shared_ptr<Node> Make(const std::string& fullPath, FileKind kind);
  Failure ReplaceBytes(const std::string& fullPath, std::string_view bytes);

  SimulatedClock& clock_;
  Journal& journal_;
  std::map<std::string, std::shared_ptr<Node>> nodes_;  ///< by full path in lower case
  std::map<std::string, std::int64_t> heldUntil_;       ///< by the same, in ticks
  std::set<std::string> locks_;
  int openHandles_ = 0;
};

}  // namespace tessary
