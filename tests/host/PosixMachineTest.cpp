// What only the machine for Linux promises.
#include <atomic>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <thread>
#include <unistd.h>

#include "host/posix/PosixMachine.h"
#include "host/posix/UserDirs.h"
#include "tests/support/ScopedVariable.h"
#include "tests/support/TempFolder.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

class PosixMachineTest : public testing::Test {
 protected:
  std::string Path(const std::string& name) { return folder_.path() + "/" + name; }
  std::string Write(const std::string& name, const std::string& text, mode_t mode = 0644) {
    std::ofstream(Path(name), std::ios::binary) << text;
    chmod(Path(name).c_str(), mode);
    return Path(name);
  }
  std::string Text(const std::string& name) {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  mode_t ModeOf(const std::string& name) {
    struct stat status {};
    return stat(Path(name).c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
  }
  /// The exit code of `script` run by the shell.
  std::int32_t Run(const std::string& script, const std::string& errorFile = "") {
    const auto child =
        host_.processes.Start({"sh", {"/bin/sh", "-c", script}, errorFile}, folder_.path(), Streams::Hidden);
    return child.ok() && child.value->Wait(10'000) ? child.value->ExitCode() : -1;
  }

  TempFolder folder_;
  PosixMachine machine_{0, nullptr};
  Host& host_ = machine_.host();
};

TEST_F(PosixMachineTest, ReplaceKeepsLinksAndAccess) {
  Write("target", "old", 0640);
  fs::create_symlink("target", Path("link"));
  fs::create_symlink("link", Path("link2"));
  const bool tagged = setxattr(Path("target").c_str(), "user.tag", "kept", 4, 0) == 0;  // not on all systems
  EXPECT_EQ(host_.files.Replace(Path("link2"), "new").number, 0);
  char tag[8] = "kept";
  EXPECT_TRUE(!tagged || getxattr(Path("target").c_str(), "user.tag", tag, sizeof tag) == 4);
  EXPECT_STREQ(tag, "kept");
  EXPECT_TRUE(fs::is_symlink(Path("link")) && fs::is_symlink(Path("link2")));
  EXPECT_EQ(Text("target"), "new");
  EXPECT_EQ(ModeOf("target"), 0640u);

  fs::create_symlink("nothing yet", Path("dangling"));
  EXPECT_EQ(host_.files.Replace(Path("dangling"), "made").number, 0);
  EXPECT_EQ(Text("nothing yet"), "made");
  fs::create_symlink("circle", Path("circle"));
  EXPECT_TRUE(host_.files.Replace(Path("circle"), "x"));
}

TEST_F(PosixMachineTest, NewFilesAreForTheirOwnerButDocumentsForAll) {
  const mode_t before = umask(022);
  host_.files.Replace(Path("replaced"), "x");
  host_.files.Open(Path("created"), OpenMode::Create);
  host_.files.Open(Path("appended"), OpenMode::Append);
  host_.files.Copy(Path("replaced"), Path("document"));
  host_.files.MakeFolder(Path("folder"));
  umask(before);
  for (const char* name : {"replaced", "created", "appended"}) EXPECT_EQ(ModeOf(name), 0600u) << name;
  EXPECT_EQ(ModeOf("document"), 0644u);
  EXPECT_EQ(ModeOf("folder"), 0700u);
}

TEST_F(PosixMachineTest, OddFilesDoNotBlockAndWildcardsAreLetters) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(host_.files.Find(Path("pipe"))->kind, FileKind::Other);
  EXPECT_TRUE(host_.files.Replace(Path("pipe"), "x"));
  EXPECT_EQ(host_.files.Replace("/dev/null", "x").number, 0);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  Write("a*b", "x");
  Write("ab", "x");
  EXPECT_EQ(host_.files.Find(Path("a*b"))->name, "a*b");
  EXPECT_FALSE(host_.files.Find(Path("a*")));
  fs::create_symlink("ab", Path("link"));
  for (const FileInfo& info : host_.files.List(folder_.path()).value)
    EXPECT_EQ(info.kind, info.name[0] == 'a' ? FileKind::Plain : FileKind::Other) << info.name;
  EXPECT_EQ(host_.files.Find(Path("link"))->kind, FileKind::Plain);
  EXPECT_TRUE(host_.files.Copy("/dev/zero", Path("zero")));
  EXPECT_FALSE(host_.files.Find(std::string("/tmp\0x", 6)));
}

TEST_F(PosixMachineTest, ALockKeepsOthersOut) {
  auto held = host_.files.Lock(Path("lock"));
  std::atomic<bool> released = false;
  std::thread other([&] {
    EXPECT_TRUE(host_.files.Lock(Path("lock")).ok());
    EXPECT_TRUE(released);
  });
  host_.clock.SleepFor(20);
  released = true;
  held.value.reset();
  other.join();
}

TEST_F(PosixMachineTest, ChildrenAreRunAsTheyAre) {
  EXPECT_EQ(Run("kill -9 $$"), 128 + 9);
  EXPECT_EQ(Run("pwd > where; cat > input; echo lost"), 0);
  EXPECT_EQ(Text("where"), fs::canonical(folder_.path()).string() + "\n");
  Write("errors", "of an earlier run");
  EXPECT_EQ(Run("echo said; echo wrong >&2", Path("errors")), 0);
  EXPECT_EQ(Text("errors"), "wrong\n");
  EXPECT_EQ(Run("kill -PIPE $$"), 128 + 13) << "what this process ignores means something to its children";

  Command command =
      host_.processes.ProgramCommand("/bin/sh", {"-c", "echo \"$1\" > quoted", "sh", "a=\"; exit 1 *"});
  EXPECT_TRUE(host_.processes.Start(command, folder_.path(), Streams::Hidden).value->Wait(10'000));
  EXPECT_EQ(Text("quoted"), "a=\"; exit 1 *\n");

  for (const std::string& program :
       {Path("missing"), Write("data", "no program"), folder_.path(), std::string()})
    EXPECT_FALSE(host_.processes.Start({"", {program}, ""}, "", Streams::Hidden).ok()) << program;
}

TEST_F(PosixMachineTest, AskingForAVersionSurvivesAnyProgram) {
  const std::pair<const char*, const char*> cases[] = {
      {"[ $1 = --version ] && echo 10.00.0", "10.00.0"},
      {"echo 10.00.0; exit 1", ""},
      {"echo 10.00.0; kill -9 $$", ""},
      {"echo 10.00.0; sleep 30 & ", "10.00.0"},
      {"head -c 1000000 /dev/zero | tr '\\0' x", "xxxxxxxxxxxxxxxxxxxx"}};
  for (const auto& [script, version] : cases) {
    const auto answer =
        host_.ghostscripts.AskVersion(Write("gs", std::string("#!/bin/sh\n") + script + "\n", 0755));
    EXPECT_TRUE(answer.ok());
    EXPECT_EQ(answer.value.substr(0, 20), version) << script;
    EXPECT_LE(answer.value.size(), 4096u) << script;
  }
  EXPECT_EQ(host_.ghostscripts.AskVersion(Path("missing")).value, "");
}

TEST_F(PosixMachineTest, TheTemporaryPathIsNobodyElses) {
  const std::string own = folder_.path() + "/tessary-" + std::to_string(geteuid());
  const auto withMode = [&](mode_t mode) {
    chmod(folder_.path().c_str(), mode);
    const ScopedVariable variable("TMPDIR", folder_.path() + "/");
    return host_.system.TempPath();
  };
  EXPECT_EQ(withMode(0700), folder_.path());
  const ScopedVariable none("TMPDIR", "");
  const std::string fallback = host_.system.TempPath();
  EXPECT_EQ(withMode(0777), fallback) << "anybody could rename what is made there";
  EXPECT_EQ(withMode(01777), own);
  EXPECT_EQ(fs::status(own).permissions(), fs::perms::owner_all);
  fs::remove(own);
  fs::create_symlink("/tmp", own);
  EXPECT_EQ(withMode(01777), fallback) << "a link laid there by somebody else";
  const ScopedVariable variable("TEMP", folder_.path());
  EXPECT_EQ(host_.system.Environment("TEMP"), "");
}

TEST_F(PosixMachineTest, FoldersAreThoseOfTheDesktop) {
  const ScopedVariable home("HOME", "/home/ann/"), config("XDG_CONFIG_HOME", folder_.path());
  EXPECT_EQ(host_.shell.SpecialFolder(folders::kDesktop), "/home/ann/Desktop");
  Write("user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n");
  EXPECT_EQ(host_.shell.SpecialFolder(folders::kDesktop), "/home/ann/Schreibtisch");
  EXPECT_EQ(host_.shell.SpecialFolder(folders::kPersonal), "/home/ann/Documents");
  EXPECT_EQ(host_.system.Environment("APPDATA"), folder_.path());
  EXPECT_EQ(host_.system.Environment("USERPROFILE"), "/home/ann");

  const std::pair<const char*, const char*> cases[] = {{"", ""},
                                                       {"#KEY=\"/a\"", ""},
                                                       {"KEY2=\"/a\"\n", ""},
                                                       {"KEY=\"relative\"", ""},
                                                       {"KEY=/unquoted", ""},
                                                       {" KEY = \"/a b/\"", "/a b"},
                                                       {"KEY=\"/a\"\nKEY=\"/b\"\n", "/b"},
                                                       {"KEY=\"$HOME/\"", "/home/ann"},
                                                       {R"(KEY="$HOME/a\"b\\c\$d")", R"(/home/ann/a"b\c$d)"},
                                                       {"KEY=\"/unfinished", "/unfinished"}};
  for (const auto& [text, folder] : cases) EXPECT_EQ(FindUserDir(text, "KEY", "/home/ann"), folder) << text;
}

TEST_F(PosixMachineTest, MachineSettingsComeFromTheirFile) {
  const std::string key = R"(software\tessary\pdf printer\Settings)";
  const auto read = [&](const std::string& name) {
    PosixMachine fresh(0, nullptr);
    MachineSettings& settings = fresh.host().machineSettings;
    return settings.ReadValue(settings.OpenKey(registry::kLocalMachine, key, registry::kRead), name);
  };
  const ScopedVariable file("TESSARY_MACHINE_SETTINGS", Path("machine.ini")),
      path("PATH", ":bin:" + folder_.path());
  EXPECT_EQ(read("USERTEMP").status, registry::kNotFound);
  EXPECT_EQ(read("ghostscriptfolder").status, registry::kNotFound) << "no gs on PATH";
  Write("gs", "#!/bin/sh\n", 0755);
  EXPECT_EQ(read("ghostscriptfolder").data, folder_.path() + '\0');

  Write("machine.ini",
        "\xEF\xBB\xBF[Other]\r\nUSERTEMP=no\r\n[ settings ]\r\n UserTemp = /srv/\xFC "
        "\r\nghostscriptfolder=/opt/gs\r\n");
  const RegistryValue value = read("USERTEMP");
  EXPECT_EQ(value.type, registry::kString);
  EXPECT_EQ(value.data, std::string("/srv/ü") + '\0');
  EXPECT_EQ(read("ghostscriptfolder").data, std::string("/opt/gs") + '\0');
  EXPECT_EQ(host_.machineSettings.OpenKey(registry::kCurrentUser, key, registry::kRead), 0u);
}

TEST_F(PosixMachineTest, ABoxCannotSteerTheTerminal) {
  const std::pair<const char*, const char*> cases[] = {
      {"one\r\ntwo\x1B[2J\x07\r\t\x7F.", "one\ntwo?[2J?\n\t?."},
      {"\u009B31m ü", "?31m ü"},     // the control sequence introducer of one character
      {"\xFC \x81 \x9B", "ü ? ›"}};  // no UTF-8
  for (const auto& [text, shown] : cases) {
    testing::internal::CaptureStderr();
    host_.desktop.ShowBox(text, "Caption", box::kOk);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), std::string("Caption: ") + shown + "\n");
  }
}

TEST_F(PosixMachineTest, TheCommandLineReadsBackAsItWasGiven) {
  const char* arguments[] = {"gui", "ps=/tmp/a b.ps", "", R"(doc=say "hi", now)", "-x"};
  PosixMachine machine(5, arguments);
  EXPECT_EQ(machine.host().commandLine, R"(ps="/tmp/a b.ps" doc="say ""hi"", now" -x)");
  EXPECT_EQ(machine.host().programFile, fs::read_symlink("/proc/self/exe"));
  EXPECT_EQ(machine.host().workingFolder, fs::current_path());
}

}  // namespace
}  // namespace tessary
