#include "monitor/posix/BackendDocument.h"

#include <algorithm>
#include <array>
#include <climits>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "config/modFolders.h"
#include "host/posix/PosixFailure.h"
#include "host/posix/PosixFile.h"
#include "monitor/posix/AgentClient.h"
#include "monitor/posix/BackendOutput.h"
#include "monitor/posix/GuiProcess.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/ExitCodes.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/modLog.h"
#include "system/modUtil.h"

namespace tessary {

namespace {

constexpr std::size_t kBlockBytes = 256 * 1024;
constexpr std::size_t kMostWords = 4096;  // a pipe takes so much at once
constexpr std::size_t kMostShown = 250;   // of what `gui` says, in one message

/// Reading from it never waits.
struct Pipe {
  UniqueFd from, to;
};

Pipe MakePipe() {
  std::array<int, 2> ends{-1, -1};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw Error(FailureOf(errno));
  Pipe made{UniqueFd(ends[0]), UniqueFd(ends[1])};
  if (fcntl(made.from.Get(), F_SETFL, O_NONBLOCK) != 0) throw Error(FailureOf(errno));
  return made;
}

/// What is in the pipe now.
std::string ReadWords(const UniqueFd& pipe) {
  std::string words(kMostWords, '\0');
  const ssize_t size = Restarted([&] { return read(pipe.Get(), words.data(), words.size()); });
  words.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  return words;
}

/// Writes all that comes to a file that is not there yet, and gives that file.
std::unique_ptr<File> Receive(const ByteSource& source, const std::string& path) {
  Result<UniqueFd> fd = OpenDescriptor(path, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, S_IRUSR | S_IWUSR);
  RaiseIf(fd.failure);
  auto file = std::make_unique<PosixFile>(std::move(fd.value));
  std::vector<char> block(kBlockBytes);
  for (;;) {
    const Result<std::size_t> got = source(block.data(), block.size());
    RaiseIf(got.failure);
    if (got.value == 0) return file;
    RaiseIf(file->Write({block.data(), got.value}));
  }
}

/// Removes what a spooling process that was ended has left behind.
class SpoolCleanup {
 public:
  SpoolCleanup(Run& run, const std::string& session) : run_(run), spool_("print-" + session) {}
  ~SpoolCleanup() { RemoveSessionFiles(run_, run_.folders.temporary, spool_); }
  SpoolCleanup(const SpoolCleanup&) = delete;
  SpoolCleanup& operator=(const SpoolCleanup&) = delete;

 private:
  Run& run_;
  std::string spool_;
};

/// The first lines of `words`, as one.
std::string Beginning(const std::string& words) {
  std::string beginning;
  for (const std::string& line : Split(ReplaceAll(words, "\r", "\n"), '\n')) {
    if (beginning.size() + line.size() > kMostShown) break;
    if (!line.empty()) beginning += ' ' + line;
  }
  return beginning;
}

/// Settings of a job that nobody is asked about.
std::vector<std::pair<std::string, std::string>> SilentSettings(const std::string& output) {
  return {{"output", output}, {"showsettings", "never"}, {"showsaveas", "never"},
          {"showpdf", "no"},  {"openfolder", "no"},      {"showprogressfinished", "no"}};
}

}  // namespace

bool BackendDocument::Print(const ByteSource& source, const std::string& title, int copies) {
  const std::string session = NewGuid(run_);
  run_.log = {};
  run_.job.SessionId = session;
  const SpoolCleanup cleanup(run_, session);
  std::string problem;
  try {
    SpooledJob spooled(run_, JoinPath(run_.host.paths, GetTemporaryFolder(run_), "print-" + session + ".ps"));
    problem = Spool(Receive(source, spooled.DocumentPath()), spooled, {title, ticket_.user, copies});
    if (problem.empty()) problem = HandOver({session, spooled.path(), title, ticket_.printer, {}});
    if (problem.empty()) report_.Pages(spooled.Pages());
  } catch (const Error& error) {
    if (error.number() == failures::kCancelled) {
      RemoveSessionFiles(run_, GetTemporaryFolder(run_), session);
      throw;
    }
    problem = error.description();
  }
  if (problem.empty()) return true;
  const std::string message = "The document '" + title + "' was not printed: " + problem;
  report_.Error(message);
  LogQuietly(run_, "Print job " + ticket_.job + ". " + message);
  return false;
}

/// Spooling runs foreign documents through readers and Ghostscript, so it is done by a copy of this process,
/// which can be ended in the middle of all that.
std::string BackendDocument::Spool(std::unique_ptr<File> received, SpooledJob& spooled,
                                   const DocumentTicket& document) {
  const Pipe words = MakePipe();
  Result<ChildProcess> child = ChildProcess::Fork([&] {
    std::string problem;
    try {
      problem = SpoolReceived(run_, std::move(received), spooled, document);
      if (!problem.empty()) problem = "it " + problem;
    } catch (const Error& error) {
      problem = error.description();
    }
    const std::string answer = problem.empty() ? std::to_string(spooled.Pages()) : CutText(problem, kMostWords);
    WriteAll(words.to.Get(), answer);
    return problem.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
  });
  RaiseIf(child.failure);
  if (Failure failure = cancel_.AwaitReadable(child.value.Fd())) {
    child.value.End();
    throw Error(failure);
  }
  child.value.Wait(INT_MAX);
  const std::string answer = ReadWords(words.from);
  if (child.value.ExitCode() != EXIT_SUCCESS) return answer.empty() ? "it cannot be read" : answer;
  spooled.SetPages(SafeLong(answer));
  return {};
}

/// Why `gui` made no PDF of the job; empty when it did.
std::string BackendDocument::HandOver(GuiJob job) {
  std::unique_ptr<BackendOutput> output;
  if (!ticket_.remoteFolder.empty()) {
    output = std::make_unique<BackendOutput>(run_, ticket_.remoteFolder, job.title);
    job.settings = SilentSettings(output->path());
  }
  const GuiOutcome outcome = RunGui(job);
  if (cancel_.IsDemanded()) throw Error(failures::kCancelled, "was cancelled");
  return Explain(outcome, job.session);
}

GuiOutcome BackendDocument::RunGui(const GuiJob& job) {
  askedUser_ = false;
  guiWords_.clear();
  if (ticket_.remoteFolder.empty()) {
    const auto notice = [this](AgentState state, const std::string& words) {
      askedUser_ = state == AgentState::Started;
      report_.Debug(words);
      if (state == AgentState::Queued) report_.Info("The document waits in the desktop session of its user.");
      if (state == AgentState::Started) report_.Info("The document is in the desktop session of its user.");
      if (state == AgentState::Started) report_.WaitsForUser(true);
    };
    const auto outcome = PrintThroughAgent(run_, job, cancel_.Fd(), notice);
    report_.WaitsForUser(false);
    if (outcome) return *outcome;
    if (cancel_.IsDemanded()) throw Error(failures::kCancelled, "was cancelled");
  }
  report_.Info("The PDF is being made.");
  return RunGuiHere(job);
}

/// Without a display. What it says goes into the server's log.
GuiOutcome BackendDocument::RunGuiHere(const GuiJob& job) {
  Pipe words = MakePipe();
  Result<GuiProcess> gui = GuiProcess::Start(run_, job, words.to.Get());
  RaiseIf(gui.failure);
  words.to.Reset();
  const auto listen = [&] {
    const std::string said = ReadWords(words.from);
    report_.Debug(said);
    guiWords_ += said.substr(0, kMostWords - std::min(kMostWords, guiWords_.size()));
    return !said.empty();
  };
  pollfd entries[] = {{gui.value.Fd(), POLLIN, 0}, {cancel_.Fd(), POLLIN, 0}, {words.from.Get(), POLLIN, 0}};
  while (entries[0].revents == 0) {
    if (Restarted([&] { return poll(entries, 3, -1); }) < 0) throw Error(FailureOf(errno));
    if (entries[1].revents != 0) {
      gui.value.Kill(run_);
      throw Error(failures::kCancelled, "was cancelled");
    }
    if (entries[2].revents != 0 && !listen()) entries[2].fd = -1;  // nobody can say anything any more
  }
  while (listen()) continue;
  return gui.value.Outcome();
}

std::string BackendDocument::Explain(const GuiOutcome& outcome, const std::string& session) {
  if (!outcome.problem.empty()) return outcome.problem;
  if (outcome.exitCode == exitcodes::kDone) return {};
  if (outcome.exitCode == exitcodes::kNothingDone && askedUser_) return "its user has cancelled it";
  std::string words = ExplainExitCode(outcome.exitCode);
  const std::string log = JoinPath(run_.host.paths, GetTemporaryFolder(run_), session + "_printer.log");
  if (FileExists(run_, log)) words += " The log is " + log + '.';
  return words + Beginning(guiWords_);
}

}  // namespace tessary
