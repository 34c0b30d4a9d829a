#include "monitor/posix/Filter.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include "host/posix/PosixFailure.h"
#include "host/posix/PosixFile.h"
#include "host/posix/UserFolders.h"
#include "monitor/Frames.h"
#include "monitor/posix/Arrangement.h"
#include "system/Conversions.h"

namespace tessary {

namespace {

constexpr std::size_t kCopies = 3, kOptions = 4, kFile = 5;  // places among the arguments
constexpr std::size_t kBlockBytes = 64 * 1024;               // what a pipe holds

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

Outcome FrameAll(const ByteSource& source, const FrameHeader& header) {
  FrameWriter writer([](std::string_view bytes) { return WriteAll(STDOUT_FILENO, bytes); });
  Outcome outcome;
  outcome.written = writer.Begin(header);
  std::vector<char> block(kBlockBytes);
  while (!outcome.written) {
    const Result<std::size_t> got = source(block.data(), block.size());
    outcome.read = got.failure;
    if (!got.ok()) return outcome;
    if (got.value == 0) break;
    outcome.written = writer.Append({block.data(), got.value});
  }
  if (!outcome.written) outcome.written = writer.End();
  return outcome;
}

/// Frames the document as it comes.
Outcome FrameSource(const std::vector<std::string>& arguments, const FrameHeader& header) {
  Result<UniqueFd> input = OpenSource(arguments);
  if (!input.ok()) return {input.failure, {}};
  PosixFile source(std::move(input.value));
  return FrameAll([&](char* buffer, std::size_t size) { return source.Read(buffer, size); }, header);
}

/// Frames what the print server's filter `arranger` makes of it.
Outcome FrameArranged(const std::string& arranger, const std::vector<std::string>& arguments,
                      const FrameHeader& header) {
  ArrangedDocument source;
  if (Failure failure = source.Start(arranger, arguments)) return {failure, {}};
  return FrameAll([&](char* buffer, std::size_t size) { return source.Read(buffer, size); }, header);
}

}  // namespace

int RunFilter(const std::vector<std::string>& arguments, JobReport& report) {
  if (arguments.size() < kFile) {
    report.Error("usage: tessaryframe JOB USER TITLE COPIES OPTIONS [FILE]");
    return 1;
  }
  std::signal(SIGPIPE, SIG_IGN);
  const FrameHeader header{EnvironmentValue("CONTENT_TYPE"), SafeLong(arguments[kCopies])};
  const std::string arranger = ArrangingFilter(arguments[kOptions], header.contentType);
  const Outcome outcome =
      arranger.empty() ? FrameSource(arguments, header) : FrameArranged(arranger, arguments, header);
  if (outcome.written) report.Debug("The backend takes no more: " + outcome.written.text);
  if (outcome.read) report.Error("The document cannot be read: " + outcome.read.text);
  return outcome.read ? 1 : 0;
}

}  // namespace tessary
