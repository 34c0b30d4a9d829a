// The agent of a desktop session and its callers on this machine, with a shell script in the place of `gui`.
#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>

#include "host/posix/PosixFile.h"
#include "host/posix/PosixMachine.h"
#include "monitor/posix/AgentClient.h"
#include "monitor/posix/AgentCommand.h"
#include "monitor/posix/AgentSocket.h"
#include "monitor/posix/GuiProcess.h"
#include "tests/support/ScopedVariable.h"
#include "tests/support/TempFolder.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

/// Takes its settings, leaves a temporary file, and has a Ghostscript and the user's reader run beside it. It
/// ends with the number in the file "go" as soon as there is one.
constexpr const char* kGui = R"(#!/bin/sh
cd "$HOME"
session=${1#sessionid=}
echo "$session $4" >> started
echo $DISPLAY > display
sleep 60 & echo $! > $session.gs
setsid sh -c "echo \$\$ > $session.reader; exec sleep 60" &
while [ ! -s $session.reader ]; do sleep 0.01; done
touch "$TMPDIR/Tessary/PDF Printer/${session}_params.gs"
rm config/Tessary/*/runonce*.ini
while [ ! -e go ]; do sleep 0.01; done
kill $(cat $session.gs $session.reader)
exit $(cat go)
)";

bool Comes(const std::function<bool()>& condition) {
  for (int i = 0; i < 2000 && !condition(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(5));
  return condition();
}

struct AgentTest : testing::Test {
  AgentTest() {
    host.programFile = Path("tessary-agent");
    Write("gui", kGui);
    chmod(Path("gui").c_str(), 0700);
    Write("job.ps", "%!PS");
    fs::create_directories(Path("tmp/Tessary/PDF Printer"));
  }
  ~AgentTest() override {
    agent.End();
    for (const auto& entry : fs::directory_iterator(folder.path()))
      if (entry.path().extension() == ".reader") KillNoted(entry.path().filename());
  }
  [[nodiscard]] std::string Path(const std::string& name) const { return folder.path() + "/" + name; }
  void Write(const std::string& name, const std::string& text) const { std::ofstream(Path(name)) << text; }
  [[nodiscard]] std::string Text(const std::string& name) const { return ReadWholeFile(Path(name)); }
  [[nodiscard]] GuiJob Job(const std::string& session) const {
    return {session, Path("job.ps"), "A title", "P [Sales]", {{"title", "t"}}};
  }
  void KillNoted(const std::string& note) const {
    if (const int id = std::atoi(Text(note).c_str()); id > 0) kill(id, SIGKILL);
  }
  /// True if the process that a script has noted runs.
  [[nodiscard]] bool Runs(const std::string& note) const {
    return std::ifstream("/proc/" + std::to_string(std::atoi(Text(note).c_str())) + "/stat").good();
  }
  [[nodiscard]] std::size_t TemporaryFiles() const {
    return std::distance(fs::directory_iterator(Path("tmp/Tessary/PDF Printer")), {});
  }
  void ExpectCleanedUp(const std::string& session) const {
    EXPECT_TRUE(Comes([&] { return !Runs(session + ".gs"); }));
    EXPECT_TRUE(Runs(session + ".reader")) << "it is the user's";
    EXPECT_EQ(TemporaryFiles(), 0u);
  }
  int Agent() {
    std::ostringstream words;
    const int code = AgentCommand(run, {}, words, words);
    said = words.str();
    return code;
  }
  void StartAgent() {
    agent = ChildProcess::Fork([&] {
              Write("agent", std::to_string(getpid()));
              return Agent();
            }).value;
    ASSERT_TRUE(Comes([] { return CallAgent().ok(); }));
  }
  [[nodiscard]] int AgentId() const { return std::atoi(Text("agent").c_str()); }
  std::optional<GuiOutcome> Print(const GuiJob& job, int cancel = -1,
                                  const std::function<void(AgentState)>& act = {}) {
    return PrintThroughAgent(run, job, cancel, [&](AgentState state, const std::string& words) {
      states += static_cast<char>('0' + static_cast<int>(state));
      said = words;
      if (act) act(state);
    });
  }

  TempFolder folder;
  ScopedVariable home_{"HOME", folder.path()}, config_{"XDG_CONFIG_HOME", Path("config")},
      runtime_{"XDG_RUNTIME_DIR", folder.path()}, temporary_{"TMPDIR", Path("tmp")},
      wayland_{"WAYLAND_DISPLAY", ""}, display_{"DISPLAY", "elsewhere:0"};
  PosixMachine machine{0, nullptr};
  Host& host = machine.host();
  tessary::Run run{host};
  ChildProcess agent;
  std::string states, said;
};

/// Answers to what a caller asks.
std::string Answer(const UniqueFd& line) {
  pollfd entry{line.Get(), POLLIN, 0};
  if (!PollUntil(MonotonicMilliseconds() + 20'000, &entry, 1)) return "nothing";
  const AgentPacket packet = ReceivePacket(line.Get());
  return packet.fields.empty() ? "gone" : packet.fields.front();
}

TEST_F(AgentTest, AJobThatIsEndedTakesItsOwnWithIt) {
  Result<GuiProcess> gui = GuiProcess::Start(run, Job("one"), -1);
  ASSERT_TRUE(Comes([&] { return TemporaryFiles() == 1; }));
  gui.value.Kill(run);
  ExpectCleanedUp("one");

  gui = GuiProcess::Start(run, Job("two"), -1);
  ASSERT_TRUE(Comes([&] { return TemporaryFiles() == 1; }));
  EXPECT_NE(Text("started").find("two printer=P [Sales]"), std::string::npos);
  Write("go", "3");
  EXPECT_EQ(gui.value.Outcome().exitCode, 3);

  fs::remove(Path("gui"));
  gui = GuiProcess::Start(run, Job("three"), -1);
  EXPECT_NE(gui.value.Outcome().problem.find("Error launching the command"), std::string::npos);
}

TEST_F(AgentTest, AJobIsPrintedInTheSession) {
  StartAgent();
  setenv("DISPLAY", "", 1);
  const auto outcome = Print(Job("one"), -1, [&](AgentState state) {
    if (state == AgentState::Started) Write("go", "2");
  });
  ASSERT_TRUE(outcome) << said;
  EXPECT_EQ(outcome->exitCode, 2);
  EXPECT_EQ(states, "01");
  EXPECT_EQ(Text("display"), "elsewhere:0\n");
}

TEST_F(AgentTest, NothingIsLostAndNothingIsDoneTwice) {
  struct {
    const char* what;
    int signal;
    bool cancelled;
  } const cases[] = {{"the agent is killed", SIGKILL, false},
                     {"the session ends", SIGTERM, false},
                     {"the job is cancelled", 0, true},
                     {"the job is cancelled while the agent hangs", SIGSTOP, true}};
  for (const auto& [what, signal, cancelled] : cases) {
    SCOPED_TRACE(what);
    StartAgent();
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const UniqueFd cancel(ends[0]), canceller(ends[1]);
    const auto outcome =
        Print(Job("job"), cancel.Get(), [&, end = signal, cancels = cancelled](AgentState state) {
          if (state != AgentState::Started) return;
          ASSERT_TRUE(Comes([&] { return TemporaryFiles() == 1; }));
          if (end != 0) kill(AgentId(), end);
          ASSERT_EQ(write(canceller.Get(), "x", cancels ? 1 : 0), cancels ? 1 : 0);
        });
    EXPECT_EQ(outcome.has_value(), cancelled) << said;
    if (outcome) {
      EXPECT_EQ(outcome->exitCode, 3);
    }
    ExpectCleanedUp("job");
    KillNoted("job.reader");
    agent.End();
  }
}

TEST_F(AgentTest, JobsWaitForEachOther) {
  StartAgent();
  std::vector<UniqueFd> lines;
  for (const char* session : {"one", "two", "three"}) {
    lines.push_back(CallAgent().value);
    ASSERT_TRUE(SendPacket(lines.back().Get(), JobFields(Job(session))));
    EXPECT_EQ(Answer(lines.back()), "queued");
  }
  EXPECT_EQ(Answer(lines[0]), "started");
  ASSERT_TRUE(Comes([&] { return TemporaryFiles() == 1; }));
  lines[1].Reset();  // takes its job back
  lines[0].Reset();
  EXPECT_EQ(Answer(lines[2]), "started");
  ExpectCleanedUp("one");
  Write("go", "0");
  EXPECT_EQ(Answer(lines[2]), "ended");
  EXPECT_EQ(Answer(lines[2]), "gone");
  EXPECT_EQ(Text("started"), "one printer=P [Sales]\nthree printer=P [Sales]\n");
}

TEST_F(AgentTest, OddRequestsAreRefused) {
  StartAgent();
  fs::create_symlink(Path("job.ps"), Path("link.ps"));
  const std::string job = Path("job.ps");
  const std::vector<std::string> cases[] = {{"print 2", "s", job, "t", "p"},
                                            {"print 1", "s", job, "t"},
                                            {"print 1", "s", job, "t", "p", "key without value"},
                                            {"print 1", "", job, "t", "p"},
                                            {"print 1", "../s", job, "t", "p"},
                                            {"print 1", "s", "job.ps", "t", "p"},
                                            {"print 1", "s", Path("link.ps"), "t", "p"},
                                            {"print 1", "s", "/dev/zero", "t", "p"},
                                            {"print 1", "s", Path("none.ps"), "t", "p"}};
  for (const auto& fields : cases) {
    const UniqueFd line = CallAgent().value;
    ASSERT_TRUE(SendPacket(line.Get(), fields));
    EXPECT_EQ(Answer(line), "refused") << testing::PrintToString(fields);
    EXPECT_EQ(Answer(line), "gone");
  }
  EXPECT_FALSE(SendPacket(CallAgent().value.Get(), {std::string(kMostPacketBytes, 'x')}));
  const std::string tooLong(kMostPacketBytes + 1, 'x');
  const UniqueFd line = CallAgent().value;
  ASSERT_EQ(write(line.Get(), tooLong.data(), tooLong.size()), static_cast<ssize_t>(tooLong.size()));
  EXPECT_EQ(Answer(line), "gone");
  EXPECT_EQ(Agent(), 0) << "the first one serves after all that";
}

TEST_F(AgentTest, CallersThatAreTooManyAreRefused) {
  StartAgent();
  std::vector<UniqueFd> lines;
  for (int i = 0; i < 60; ++i) lines.push_back(CallAgent().value);
  const UniqueFd asks = CallAgent().value;
  ASSERT_TRUE(SendPacket(asks.Get(), {kAliveRequest}));
  EXPECT_EQ(Answer(asks), "alive");
  EXPECT_EQ(Answer(asks), "gone") << "and leaves room for four";
  for (int i = 0; i < 4; ++i) lines.push_back(CallAgent().value);
  EXPECT_EQ(Answer(CallAgent().value), "refused");
  EXPECT_EQ(Answer(lines.front()), "gone") << "those who say nothing are sent away after a while";
}

TEST_F(AgentTest, ADisplayThatIsGoneEndsIt) {
  for (const char* display : {"", ":4711", "unix:4711.0"}) {
    setenv("DISPLAY", display, 1);
    EXPECT_EQ(Agent(), 1);
    EXPECT_NE(said.find("no display"), std::string::npos);
  }
  setenv("WAYLAND_DISPLAY", "wayland-7", 1);
  EXPECT_EQ(Agent(), 1);
  const UniqueFd compositor(socket(AF_UNIX, SOCK_STREAM, 0));
  sockaddr_un address{AF_UNIX, {}};
  Path("wayland-7").copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(bind(compositor.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(compositor.Get(), 1), 0);
  StartAgent();
  fs::remove(Path("wayland-7"));
  EXPECT_FALSE(Print(Job("one")));
  EXPECT_TRUE(agent.Wait(20'000));
  EXPECT_FALSE(fs::exists(Path("started")));
}

TEST_F(AgentTest, ASocketThatSomebodyElseCouldHaveMadeIsNotUsed) {
  StartAgent();
  const std::string own = Path("tessary");
  const auto refused = [&](const char* why) {
    EXPECT_FALSE(Print(Job("one")));
    EXPECT_NE(said.find(why), std::string::npos) << said;
    EXPECT_EQ(states, "2");
    states.clear();
  };
  chmod(own.c_str(), 0750);
  refused("is open to others");
  chmod(own.c_str(), 0700);
  fs::rename(own, Path("elsewhere"));
  fs::create_symlink(Path("elsewhere"), own);
  refused("Not a directory");
  fs::remove(own);
  refused("No such file");
  if (geteuid() == 0) {
    fs::rename(Path("elsewhere"), own);
    ASSERT_EQ(chown(own.c_str(), 65534, 65534), 0);
    refused("belongs to somebody else");
  }
  setenv("XDG_RUNTIME_DIR", "", 1);
  refused("XDG_RUNTIME_DIR");
}

TEST_F(AgentTest, ASilentAgentIsGivenUp) {
  const Result<UniqueFd> place = OpenAgentFolder(true);
  const UniqueFd silent = std::move(ListenInFolder(place.value.Get(), 1).value);
  EXPECT_FALSE(Print(Job("one")));
  EXPECT_EQ(said, "the agent does not answer");
}

}  // namespace
}  // namespace tessary
