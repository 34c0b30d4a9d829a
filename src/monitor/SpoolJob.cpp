#include "monitor/SpoolJob.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "monitor/DocumentRange.h"
#include "monitor/PdfDocument.h"
#include "monitor/Spooler.h"
#include "system/Blocks.h"
#include "system/Error.h"

namespace tessary {

namespace {

std::unique_ptr<File> Open(Run& run, const std::string& path, OpenMode mode) {
  auto file = run.host.files.Open(path, mode);
  RaiseIf(file.failure);
  return std::move(file.value);
}

std::string Unspoolable(const Failure& failure) { return failure ? "cannot be spooled: " + failure.text : ""; }

/// Makes the bytes in `range` the content of `to`, which may be the same file.
Failure CopyBytes(File& from, const DocumentRange& range, File& to) {
  std::vector<char> block(kBlockSize);
  std::uint64_t done = 0;
  for (const std::uint64_t size = range.end - range.begin; done < size;) {
    if (Failure failure = from.Seek(range.begin + done)) return failure;
    const auto got = from.Read(block.data(), std::min<std::uint64_t>(block.size(), size - done));
    if (!got.ok()) return got.failure;
    if (got.value == 0) break;
    if (Failure failure = to.Seek(done)) return failure;
    if (Failure failure = to.Write({block.data(), got.value})) return failure;
    done += got.value;
  }
  if (Failure failure = to.Seek(done)) return failure;
  return to.Truncate();
}

/// Copies what can be read only once.
Failure CopyStream(File& from, File& to) {
  std::vector<char> block(kBlockSize);
  for (;;) {
    const auto got = from.Read(block.data(), block.size());
    if (!got.ok() || got.value == 0) return got.failure;
    if (Failure failure = to.Write({block.data(), got.value})) return failure;
  }
}

std::string SpoolPostScript(Run& run, File& input, const DocumentRange& range, SpooledJob& job,
                            const DocumentTicket& ticket) {
  const std::unique_ptr<File> output = Open(run, job.path(), OpenMode::Create);
  std::int32_t pages = 0;
  std::string problem = SpoolDocument(input, range, *output, ticket.copies, pages);
  job.SetPages(pages);
  return problem;
}

}  // namespace

SpooledJob::~SpooledJob() {
  if (kept_) return;
  run_.host.files.Remove(path_);
  run_.host.files.Remove(DocumentPath());
}

std::string SpoolJob(Run& run, const std::string& source, SpooledJob& job, const DocumentTicket& ticket) {
  const auto found = run.host.files.Find(source);
  const std::unique_ptr<File> input = Open(run, source, OpenMode::Read);
  if (!found || found->kind != FileKind::Other) return SpoolJob(run, *input, job, ticket);
  std::unique_ptr<File> received = Open(run, job.DocumentPath(), OpenMode::Create);
  if (Failure failure = CopyStream(*input, *received)) return Unspoolable(failure);
  return SpoolReceived(run, std::move(received), job, ticket);
}

std::string SpoolJob(Run& run, File& source, SpooledJob& job, const DocumentTicket& ticket) {
  const DocumentRange range = FindDocument(source);
  if (!range.problem.empty()) return range.problem;
  if (!range.isPdf) return SpoolPostScript(run, source, range, job, ticket);
  const std::unique_ptr<File> output = Open(run, job.DocumentPath(), OpenMode::Create);
  Failure failure = CopyBytes(source, range, *output);
  if (!failure) failure = output->Close();
  return failure ? Unspoolable(failure) : SpoolDrawing(run, job, ticket);
}

std::string SpoolReceived(Run& run, std::unique_ptr<File> received, SpooledJob& job,
                          const DocumentTicket& ticket) {
  const DocumentRange range = FindDocument(*received);
  if (!range.problem.empty()) return range.problem;
  if (!range.isPdf) {
    std::string problem = SpoolPostScript(run, *received, range, job, ticket);
    received.reset();
    run.host.files.Remove(job.DocumentPath());
    return problem;
  }
  Failure failure = range.begin > 0 ? CopyBytes(*received, range, *received) : Failure();
  if (!failure) failure = received->Close();
  return failure ? Unspoolable(failure) : SpoolDrawing(run, job, ticket);
}

}  // namespace tessary
