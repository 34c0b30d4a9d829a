#include "monitor/PrintJob.h"

#include <memory>
#include <vector>

#include "config/modFolders.h"
#include "monitor/GuiJob.h"
#include "monitor/Spooler.h"
#include "system/Error.h"
#include "system/ExitCodes.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/modUtil.h"

namespace tessary {

namespace {

constexpr std::size_t kBlockBytes = 256 * 1024;

/// A file that goes with the object.
class PassingFile {
 public:
  PassingFile(Run& run, std::string path) : run_(run), path_(std::move(path)) {}
  ~PassingFile() {
    if (!kept_) run_.host.files.Remove(path_);
  }
  PassingFile(const PassingFile&) = delete;
  PassingFile& operator=(const PassingFile&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }
  void Keep() { kept_ = true; }

 private:
  Run& run_;
  std::string path_;
  bool kept_ = false;
};

std::unique_ptr<File> Open(Run& run, const std::string& path, OpenMode mode) {
  auto file = run.host.files.Open(path, mode);
  RaiseIf(file.failure);
  return std::move(file.value);
}

/// Copies what cannot be read twice, such as a pipe.
void CopyStream(File& from, File& to) {
  std::vector<char> block(kBlockBytes);
  for (;;) {
    const auto got = from.Read(block.data(), block.size());
    RaiseIf(got.failure);
    if (got.value == 0) return;
    RaiseIf(to.Write({block.data(), got.value}));
  }
}

/// Why the document could not be spooled; empty when it was.
std::string Spool(Run& run, const std::string& source, const std::string& spool) {
  const auto found = run.host.files.Find(source);
  std::unique_ptr<File> input = Open(run, source, OpenMode::Read);
  const PassingFile copy(run, spool + ".in");
  if (found && found->kind == FileKind::Other) {
    std::unique_ptr<File> whole = Open(run, copy.path(), OpenMode::Create);
    CopyStream(*input, *whole);
    RaiseIf(whole->Seek(0));
    input = std::move(whole);
  }
  const std::unique_ptr<File> output = Open(run, spool, OpenMode::Create);
  return SpoolDocument(*input, *output);
}

}  // namespace

std::string PrintFile(Run& run, const PrintArguments& arguments, const std::string& file) {
  const bool fromInput = file == "-";
  const PathStyle& style = run.host.paths;
  const std::string session = NewGuid(run), folder = GetTemporaryFolder(run);
  // Not below the session's name: `gui` removes everything that begins with it, and a failed job has to stay.
  PassingFile spool(run, JoinPath(style, folder, "print-" + session + ".ps"));
  const std::string source = fromInput ? run.host.standardInput : file;
  if (const std::string problem = Spool(run, source, spool.path()); !problem.empty()) return problem;

  const std::string title = arguments.title.value_or(fromInput ? "Standard input" : FileNameOf(style, file));
  std::int32_t exitCode = exitcodes::kError;
  try {
    exitCode = RunGui(run, {session, spool.path(), title, arguments.printer, arguments.settings});
  } catch (const Error& error) {
    spool.Keep();
    return error.description() + " The job is kept in " + spool.path();
  }
  if (exitCode == exitcodes::kDone) return {};
  if (exitCode == exitcodes::kNothingDone) return ExplainExitCode(exitCode);
  spool.Keep();
  const std::string log = JoinPath(style, folder, session + "_printer.log");
  return ExplainExitCode(exitCode) + " The job is kept in " + spool.path() +
         (FileExists(run, log) ? ", its log in " + log : std::string());
}

}  // namespace tessary
