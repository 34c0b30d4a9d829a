// Files and folders of this machine.
#pragma once

#include "host/Files.h"

namespace tessary {

class PosixFiles final : public Files {
 public:
  std::optional<FileInfo> Find(const std::string& path) override;
  Result<std::vector<FileInfo>> List(const std::string& folder) override;
  Result<std::unique_ptr<File>> Open(const std::string& path, OpenMode mode) override;
  Failure Replace(const std::string& path, std::string_view bytes) override;
  Failure Copy(const std::string& source, const std::string& destination) override;
  Failure Remove(const std::string& path) override;
  Failure RemoveFolder(const std::string& path) override;
  Failure MakeFolder(const std::string& path) override;
  Result<std::unique_ptr<FileLock>> Lock(const std::string& path) override;
  std::vector<std::string> Drives() override { return {"/"}; }
};

}  // namespace tessary
