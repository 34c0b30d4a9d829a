#include "monitor/PrintJob.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "config/modFolders.h"
#include "monitor/RunOnce.h"
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

/// `gui` lies beside this program and has the same ending.
std::string GuiProgram(Run& run) {
  const PathStyle& style = run.host.paths;
  const std::string own = FileNameOf(style, run.host.programFile);
  return JoinPath(style, GetProgramFolder(run), "gui" + own.substr(BaseNameOf(style, own).size()));
}

/// A title is a line of its own in messages and in the log.
std::string OneLine(std::string title) {
  std::replace_if(
      title.begin(), title.end(), [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }, ' ');
  return title;
}

/// Runs `gui` for the spooled job and gives its exit code.
std::int32_t RunGui(Run& run, const PrintArguments& arguments, const std::string& title,
                    const std::string& session, const std::string& spool) {
  const Command command = run.host.processes.ProgramCommand(
      GuiProgram(run),
      {"sessionid=" + session, "ps=" + spool, "doc=" + OneLine(title), "printer=" + arguments.printer});
  std::unique_ptr<Process> gui;
  {
    RunOnce settings(run, arguments.settings);
    auto started = run.host.processes.Start(command, "", Streams::Inherited);
    if (!started.ok())
      throw Error(errors::kCommon,
                  "Error launching the command [" + command.line + "]. " + started.failure.text);
    gui = std::move(started.value);
    settings.AwaitTaken(*gui);
  }
  while (!gui->Wait(60 * 60 * 1000)) continue;
  return gui->ExitCode();
}

/// What an exit code other than success means to the one who prints.
std::string Explain(std::int32_t exitCode) {
  switch (exitCode) {
    case exitcodes::kError:
      return "no PDF was made.";
    case exitcodes::kNotDelivered:
      return "the PDF could not be delivered.";
    case exitcodes::kNothingDone:
      return "nothing was printed: cancelled, or the settings name no output.";
    default:
      return "gui ended with exit code " + std::to_string(exitCode) + ".";
  }
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
    exitCode = RunGui(run, arguments, title, session, spool.path());
  } catch (const Error& error) {
    spool.Keep();
    return error.description() + " The job is kept in " + spool.path();
  }
  if (exitCode == exitcodes::kDone) return {};
  if (exitCode == exitcodes::kNothingDone) return Explain(exitCode);
  spool.Keep();
  const std::string log = JoinPath(style, folder, session + "_printer.log");
  return Explain(exitCode) + " The job is kept in " + spool.path() +
         (FileExists(run, log) ? ", its log in " + log : std::string());
}

}  // namespace tessary
