#include "monitor/posix/Filter.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include "host/posix/PosixFailure.h"
#include "host/posix/PosixFile.h"
#include "host/posix/UserFolders.h"
#include "monitor/Frames.h"
#include "system/Conversions.h"

namespace tessary {

namespace {

constexpr std::size_t kCopies = 3, kFile = 5;   // places among the arguments
constexpr std::size_t kBlockBytes = 64 * 1024;  // what a pipe holds

/// What the document is read from.
Result<UniqueFd> OpenSource(const std::vector<std::string>& arguments) {
  if (arguments.size() > kFile) return OpenDescriptor(arguments[kFile], O_RDONLY, 0);
  UniqueFd input(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0));
  if (!input) return FailureOf(errno);
  return input;
}

/// What came of it: a failure to read is the document's, one to write is the business of whoever reads.
struct Outcome {
  Failure read, written;
};

Outcome FrameAll(File& source, const FrameHeader& header) {
  FrameWriter writer([](std::string_view bytes) { return WriteAll(STDOUT_FILENO, bytes); });
  Outcome outcome;
  outcome.written = writer.Begin(header);
  std::vector<char> block(kBlockBytes);
  while (!outcome.written) {
    const Result<std::size_t> got = source.Read(block.data(), block.size());
    outcome.read = got.failure;
    if (!got.ok()) return outcome;
    if (got.value == 0) break;
    outcome.written = writer.Append({block.data(), got.value});
  }
  if (!outcome.written) outcome.written = writer.End();
  return outcome;
}

}  // namespace

int RunFilter(const std::vector<std::string>& arguments, JobReport& report) {
  if (arguments.size() < kFile) {
    report.Error("usage: tessaryframe JOB USER TITLE COPIES OPTIONS [FILE]");
    return 1;
  }
  std::signal(SIGPIPE, SIG_IGN);
  Result<UniqueFd> input = OpenSource(arguments);
  if (!input.ok()) {
    report.Error("The document cannot be opened: " + input.failure.text);
    return 1;
  }
  PosixFile source(std::move(input.value));
  const Outcome outcome = FrameAll(source, {EnvironmentValue("CONTENT_TYPE"), SafeLong(arguments[kCopies])});
  if (outcome.written) report.Debug("The backend takes no more: " + outcome.written.text);
  if (outcome.read) report.Error("The document cannot be read: " + outcome.read.text);
  return outcome.read ? 1 : 0;
}

}  // namespace tessary
