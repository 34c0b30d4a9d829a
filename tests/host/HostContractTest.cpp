// What every machine has to keep, held against the simulated and the real one.
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <sys/resource.h>
#include <utility>

#include "host/posix/PosixMachine.h"
#include "tests/support/SimulatedMachine.h"
#include "tests/support/TempFolder.h"

namespace tessary {
namespace {

/// A machine, and what a test cannot ask of it through its host.
class TestedMachine {
 public:
  virtual ~TestedMachine() = default;
  virtual Host& host() = 0;
  /// An empty folder, without a separator at its end.
  virtual std::string Folder() = 0;
  /// A command that ends with `exitCode` after `milliseconds`.
  virtual Command Child(int exitCode, int milliseconds) = 0;
  /// Runs `action` while a file can have no more than kRoom bytes.
  virtual void WithFullDisk(const std::function<void()>& action) = 0;

  static constexpr int kRoom = 4096;
  std::string Path(const std::string& name) { return Folder() + host().paths.separator + name; }
};

class TestedSimulation : public TestedMachine {
 public:
  TestedSimulation() {
    machine_.files.PutFolder(Folder());
    machine_.desktop.attended = false;
  }
  Host& host() override { return machine_.host(); }
  std::string Folder() override { return R"(C:\Work)"; }
  Command Child(int exitCode, int milliseconds) override {
    Command command = host().processes.ProgramCommand(R"(C:\child.exe)", {});
    machine_.processes.Expect(command.line).Exits(exitCode, milliseconds);
    return command;
  }
  void WithFullDisk(const std::function<void()>& action) override {
    const auto before = std::exchange(machine_.files.freeBytes, kRoom);
    action();
    machine_.files.freeBytes = before;
  }

 private:
  SimulatedMachine machine_;
};

class TestedPosix : public TestedMachine {
 public:
  Host& host() override { return machine_.host(); }
  std::string Folder() override { return folder_.path(); }
  Command Child(int exitCode, int milliseconds) override {
    const std::string script =
        "sleep " + std::to_string(milliseconds / 1000.0) + "; exit " + std::to_string(exitCode);
    return {"sh", {"/bin/sh", "-c", script}, ""};
  }
  void WithFullDisk(const std::function<void()>& action) override {
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{kRoom, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    action();
    setrlimit(RLIMIT_FSIZE, &before);
  }

 private:
  TempFolder folder_;
  PosixMachine machine_{0, nullptr};
};

std::unique_ptr<TestedMachine> Make(const std::string& name) {
  if (name == "Posix") return std::make_unique<TestedPosix>();
  return std::make_unique<TestedSimulation>();
}

class HostContract : public testing::TestWithParam<std::string> {
 protected:
  std::string Path(const std::string& name) { return machine_->Path(name); }
  void Put(const std::string& name, const std::string& bytes) {
    EXPECT_EQ(files_.Replace(Path(name), bytes).number, 0);
  }
  std::string Text(const std::string& name) {
    const auto file = files_.Open(Path(name), OpenMode::Read);
    if (!file.ok()) return "failure " + std::to_string(file.failure.number);
    std::string text(100'000, '\0');
    text.resize(file.value->Read(text.data(), text.size()).value);
    return text;
  }
  std::set<std::string> Names() {
    std::set<std::string> names;
    for (const FileInfo& info : files_.List(machine_->Folder()).value) names.insert(info.name);
    return names;
  }

  std::unique_ptr<TestedMachine> machine_ = Make(GetParam());
  Host& host_ = machine_->host();
  Files& files_ = host_.files;
};

INSTANTIATE_TEST_SUITE_P(Machines, HostContract, testing::Values("Simulated", "Posix"),
                         [](const auto& instance) { return instance.param; });

TEST_P(HostContract, ReadsInPiecesFromAnyPlace) {
  Put("a", "0123456789");
  const auto file = files_.Open(Path("a"), OpenMode::Read);
  ASSERT_TRUE(file.ok());
  EXPECT_EQ(file.value->Size().value, 10u);
  char buffer[8] = {};
  EXPECT_EQ(file.value->Read(buffer, 8).value, 8u);
  EXPECT_EQ(file.value->Read(buffer, 8).value, 2u);
  EXPECT_EQ(file.value->Read(buffer, 8).value, 0u);
  EXPECT_EQ(file.value->Seek(7).number, 0);
  EXPECT_EQ(file.value->Read(buffer, 1).value, 1u);
  EXPECT_EQ(buffer[0], '7');
  EXPECT_TRUE(file.value->Write("x")) << "opened for reading";
  EXPECT_EQ(Text("a"), "0123456789");
}

TEST_P(HostContract, CreateEmptiesAndWritesAtAnyPlace) {
  Put("a", "something longer");
  const auto file = files_.Open(Path("a"), OpenMode::Create);
  ASSERT_TRUE(file.ok());
  EXPECT_EQ(Text("a"), "");
  EXPECT_EQ(file.value->Write("abcdef").number, 0);
  EXPECT_EQ(file.value->Seek(1).number, 0);
  EXPECT_EQ(file.value->Write("XY").number, 0);
  EXPECT_EQ(Text("a"), "aXYdef") << "a write shows at once";
  char next = 0;
  EXPECT_EQ(file.value->Read(&next, 1).value, 1u);
  EXPECT_EQ(next, 'd');
  EXPECT_EQ(file.value->Truncate().number, 0);
  EXPECT_EQ(file.value->Close().number, 0);
  EXPECT_EQ(file.value->Close().number, 0);
  EXPECT_EQ(Text("a"), "aXYd");
}

TEST_P(HostContract, AppendGoesToTheEndWhereverThatIs) {
  const auto one = files_.Open(Path("log"), OpenMode::Append);
  const auto two = files_.Open(Path("log"), OpenMode::Append);
  ASSERT_TRUE(one.ok() && two.ok());
  EXPECT_EQ(one.value->Write("a").number, 0);
  EXPECT_EQ(two.value->Write("b").number, 0);
  EXPECT_EQ(one.value->Seek(0).number, 0);
  EXPECT_EQ(one.value->Write("c").number, 0);
  EXPECT_EQ(Text("log"), "abc");
}

TEST_P(HostContract, ReplaceAndCopyGiveTheWholeContent) {
  for (const std::string& bytes :
       {std::string("first"), std::string("longer\0than", 11), std::string("x"), std::string()}) {
    Put("a", bytes);
    EXPECT_EQ(Text("a"), bytes);
    EXPECT_EQ(files_.Copy(Path("a"), Path("b")).number, 0);
    EXPECT_EQ(Text("b"), bytes);
  }
  Put("a", "kept");
  files_.Copy(Path("a"), Path("a"));
  EXPECT_EQ(Text("a"), "kept") << "copied onto itself";
  EXPECT_EQ(Names(), (std::set<std::string>{"a", "b"}));
}

TEST_P(HostContract, AFullDiskLeavesTheOldFileWhole) {
  const std::string large(3 * TestedMachine::kRoom, 'x');
  Put("large", large);
  Put("old", "old");
  Failure replaced, copied, made, written;
  machine_->WithFullDisk([&] {
    replaced = files_.Replace(Path("old"), large);
    copied = files_.Copy(Path("large"), Path("old"));
    made = files_.Replace(Path("new"), large);
    written = files_.Open(Path("part"), OpenMode::Append).value->Write(large);
  });
  for (const Failure& failure : {replaced, copied, made, written}) {
    EXPECT_EQ(failure.number, failures::kDiskFull);
    EXPECT_FALSE(failure.text.empty());
  }
  EXPECT_EQ(Text("old"), "old");
  EXPECT_EQ(Names(), (std::set<std::string>{"large", "old", "part"}));
}

TEST_P(HostContract, FailuresHaveTheirNumbers) {
  Put("file", "x");
  ASSERT_EQ(files_.MakeFolder(Path("folder")).number, 0);
  const std::string file = Path("file"), folder = Path("folder"), missing = Path("missing");
  const char separator = host_.paths.separator;
  const std::string lost = missing + separator + "a", below = file + separator + "a";
  const auto open = [&](const std::string& path, OpenMode mode) { return files_.Open(path, mode).failure; };
  const struct {
    const char* what;
    Failure failure;
    std::int32_t number;
  } cases[] = {
      {"read a missing file", open(missing, OpenMode::Read), failures::kFileNotFound},
      {"copy a missing file", files_.Copy(missing, file), failures::kFileNotFound},
      {"remove a missing file", files_.Remove(missing), failures::kFileNotFound},
      {"read a folder", open(folder, OpenMode::Read), failures::kPathFileAccess},
      {"create a folder", open(folder, OpenMode::Create), failures::kPathFileAccess},
      {"append to a folder", open(folder, OpenMode::Append), failures::kPathFileAccess},
      {"lock a folder", files_.Lock(folder).failure, failures::kPathFileAccess},
      {"replace a folder", files_.Replace(folder, "x"), failures::kPathFileAccess},
      {"copy a folder", files_.Copy(folder, file), failures::kPathFileAccess},
      {"copy onto a folder", files_.Copy(file, folder), failures::kPathFileAccess},
      {"make a folder again", files_.MakeFolder(folder), failures::kPathFileAccess},
      {"make a folder over a file", files_.MakeFolder(file), failures::kPathFileAccess},
      {"create in a missing folder", open(lost, OpenMode::Create), failures::kPathNotFound},
      {"append in a missing folder", open(lost, OpenMode::Append), failures::kPathNotFound},
      {"replace in a missing folder", files_.Replace(lost, "x"), failures::kPathNotFound},
      {"copy into a missing folder", files_.Copy(file, lost), failures::kPathNotFound},
      {"make a folder in a missing one", files_.MakeFolder(lost), failures::kPathNotFound},
      {"create below a file", open(below, OpenMode::Create), failures::kPathNotFound},
      {"make a folder below a file", files_.MakeFolder(below), failures::kPathNotFound},
      {"list a missing folder", files_.List(missing).failure, failures::kPathNotFound},
      {"list a file", files_.List(file).failure, failures::kPathNotFound},
      {"remove a missing folder", files_.RemoveFolder(missing), failures::kPathNotFound},
      {"remove a file as a folder", files_.RemoveFolder(file), failures::kPathNotFound},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(each.failure.number, each.number) << each.what << ": " << each.failure.text;
    EXPECT_FALSE(each.failure.text.empty()) << each.what;
  }
  EXPECT_TRUE(files_.Remove(folder));
  EXPECT_FALSE(files_.Open("", OpenMode::Create).ok());
  EXPECT_EQ(Text("file"), "x");
  EXPECT_EQ(Names(), (std::set<std::string>{"file", "folder"}));
  ASSERT_FALSE(files_.Replace(folder + separator + "a", "x"));
  EXPECT_EQ(files_.RemoveFolder(folder).number, failures::kPathFileAccess) << "it holds something";
  ASSERT_FALSE(files_.Remove(folder + separator + "a"));
  EXPECT_FALSE(files_.RemoveFolder(folder));
  EXPECT_EQ(Names(), (std::set<std::string>{"file"}));
}

TEST_P(HostContract, FindsAndLists) {
  Put("A file", "12345");
  ASSERT_EQ(files_.MakeFolder(Path("sub")).number, 0);
  const char separator = host_.paths.separator;
  const auto file = files_.Find(Path("A file")), folder = files_.Find(Path("sub") + separator);
  ASSERT_TRUE(file && folder && files_.Find(Path("sub")));
  EXPECT_EQ(file->name, "A file");
  EXPECT_EQ(file->kind, FileKind::Plain);
  EXPECT_EQ(file->size, 5u);
  EXPECT_NEAR(static_cast<double>(file->modified), static_cast<double>(host_.clock.UnixTime()), 60);
  EXPECT_EQ(folder->name, "sub");
  EXPECT_EQ(folder->kind, FileKind::Folder);
  EXPECT_EQ(files_.Find(files_.Drives().front())->kind, FileKind::Folder);
  EXPECT_FALSE(files_.Find(Path("missing")));
  EXPECT_FALSE(files_.Find(Path("A file") + separator));
  EXPECT_FALSE(files_.Find(""));

  EXPECT_EQ(Names(), (std::set<std::string>{"A file", "sub"}));
  EXPECT_TRUE(files_.List(Path("sub")).ok());
  EXPECT_EQ(files_.Remove(Path("A file")).number, 0);
  EXPECT_EQ(Names(), (std::set<std::string>{"sub"}));
}

TEST_P(HostContract, ALockIsGivenBack) {
  for (int round = 0; round < 2; ++round) EXPECT_TRUE(files_.Lock(Path("lock")).ok());
  EXPECT_EQ(Text("lock"), "");
}

TEST_P(HostContract, TheClockMoves) {
  const std::int64_t before = host_.clock.Ticks();
  host_.clock.SleepFor(20);
  EXPECT_GE(host_.clock.Ticks() - before, 20);
  const DateTime now = host_.clock.LocalTime();
  EXPECT_TRUE(now.year > 2020 && now.month >= 1 && now.month <= 12 && now.day >= 1 && now.day <= 31);
  EXPECT_TRUE(now.hour < 24 && now.minute < 60 && now.second <= 60);
}

TEST_P(HostContract, AChildIsWaitedForNoLongerThanItRuns) {
  const auto child = host_.processes.Start(machine_->Child(3, 60), machine_->Folder(), Streams::Hidden);
  ASSERT_TRUE(child.ok()) << child.failure.text;
  EXPECT_GT(child.value->Id(), 0);
  const std::int64_t before = host_.clock.Ticks();
  EXPECT_FALSE(child.value->Wait(0));
  EXPECT_FALSE(child.value->Wait(5));
  EXPECT_TRUE(child.value->Wait(10'000));
  EXPECT_LT(host_.clock.Ticks() - before, 5'000);
  EXPECT_TRUE(child.value->Wait(0));
  EXPECT_EQ(child.value->ExitCode(), 3);
  const auto unstarted = host_.processes.Start(machine_->Child(0, 1), Path("missing folder"), Streams::Hidden);
  EXPECT_FALSE(unstarted.ok() || unstarted.failure.text.empty());
}

TEST_P(HostContract, TheSystemNamesItself) {
  EXPECT_FALSE(host_.system.ComputerName().empty());
  EXPECT_FALSE(host_.system.UserName().empty());
  EXPECT_FALSE(host_.system.ErrorText(2).empty());
  EXPECT_EQ(host_.system.Environment("TESSARY_TEST_NOT_SET"), "");
  EXPECT_TRUE(host_.system.Version(156) && host_.system.Version(148));
  EXPECT_FALSE(host_.system.Version(0));
  const auto one = host_.system.NewGuid(), two = host_.system.NewGuid();
  ASSERT_TRUE(one.ok() && two.ok());
  EXPECT_NE(one.value.data1, two.value.data1);
  EXPECT_TRUE(host_.shell.SpecialFolder(folders::kFonts));
  EXPECT_FALSE(host_.shell.SpecialFolder(9999));
  EXPECT_EQ(host_.components.Create("Scripting.Dictionary").number, 0);
  EXPECT_EQ(host_.components.Create("No.Such.Thing").number, failures::kComponentMissing);
  EXPECT_EQ(host_.machineSettings.OpenKey(registry::kLocalMachine, R"(SOFTWARE\No\Such)", registry::kRead), 0u);
}

TEST_P(HostContract, TheTimerTicksWhileTheQueueRuns) {
  int ticks = 0;
  NotificationArea& area = host_.notificationArea;
  area.StartTimer(10, [&] {
    if (++ticks == 3) area.StopTimer();
  });
  host_.clock.SleepFor(50);
  EXPECT_EQ(ticks, 0) << "nobody has let the queue run";
  host_.desktop.PumpMessages();
  EXPECT_EQ(ticks, 1) << "late ticks are not made up for";
  for (int i = 0; i < 5; ++i) {
    host_.clock.SleepFor(20);
    host_.desktop.PumpMessages();
  }
  EXPECT_EQ(ticks, 3);
}

TEST_P(HostContract, ABalloonThatNobodySeesIsGoneAtOnce) {
  NotificationArea& area = host_.notificationArea;
  std::vector<std::int64_t> heard;
  NotifyIconData record;
  record.window = area.OpenWindow([&](std::uint32_t message, std::int64_t, std::int64_t low) {
    EXPECT_EQ(message, notify::kCallbackMessage);
    heard.push_back(low);
  });
  EXPECT_NE(record.window, 0);
  EXPECT_NE(area.IconNamed("working11"), 0);
  EXPECT_NE(area.IconNamed("working11"), area.IconNamed("finished"));
  record.icon = area.IconNamed("finished");
  record.flags = notify::kFlagInfo;
  area.Notify(notify::kAdd, record);
  EXPECT_TRUE(heard.empty());
  host_.desktop.PumpMessages();
  EXPECT_EQ(heard, std::vector<std::int64_t>{notify::kBalloonHide});
  area.Notify(notify::kModify, record);
  area.Notify(notify::kDelete, record);
  area.CloseWindow(record.window);
  host_.desktop.PumpMessages();
  EXPECT_EQ(heard.size(), 1u);
}

TEST_P(HostContract, ABoxThatNobodySeesAnswersHarmlessly) {
  testing::internal::CaptureStderr();
  const std::pair<std::int32_t, std::int32_t> cases[] = {
      {box::kOk | box::kCritical, box::kAnswerOk},
      {box::kRetryCancel | box::kExclamation, box::kAnswerCancel},
      {box::kYesNo | box::kQuestion | box::kForeground, box::kAnswerNo}};
  for (const auto& [flags, button] : cases) {
    const BoxAnswer answer = host_.desktop.ShowBox("text", "caption", flags);
    EXPECT_EQ(answer.button, button);
    EXPECT_FALSE(answer.shown);
  }
  host_.desktop.PumpMessages();
  testing::internal::GetCapturedStderr();
}

}  // namespace
}  // namespace tessary
