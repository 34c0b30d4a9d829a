// An open file of this machine, and the few calls that the others of this folder share.
#pragma once

#include <string>
#include <string_view>

#include "host/Files.h"
#include "host/posix/UniqueFd.h"

namespace tessary {

/// Opens what is no folder. A pipe that nobody has at its other end does not make it wait: it reads as empty
/// and fails for writing. `flags` and `mode` are those of open(2).
Result<UniqueFd> OpenDescriptor(const std::string& path, int flags, unsigned mode);

/// Writes all of `bytes`.
Failure WriteAll(int fd, std::string_view bytes);

/// The content of a file; empty when it cannot be read.
std::string ReadWholeFile(const std::string& path);

class PosixFile final : public File {
 public:
  explicit PosixFile(UniqueFd fd) : fd_(std::move(fd)) {}

  Result<std::size_t> Read(char* buffer, std::size_t size) override;
  Failure Write(std::string_view bytes) override;
  Failure Seek(std::uint64_t position) override;
  Failure Truncate() override;
  Result<std::uint64_t> Size() override;
  Failure Close() override;

 private:
  UniqueFd fd_;
};

}  // namespace tessary
