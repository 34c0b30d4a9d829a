// What the simulated machine has of Windows beyond the contract of all machines.
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

TEST(SimulatedMachine, NamesAreWindowsNames) {
  SimulatedMachine machine;
  SimulatedFiles& files = machine.files;
  files.Put(R"(D:\Jobs\Report.PDF)", "x");
  files.Put(R"(D:\Jobs\readme)", "x");
  for (const char* path : {R"(d:\jobs\report.pdf)", "D:/JOBS/REPORT.PDF", R"(D:\Jobs\.\x\..\\Report.PDF)"})
    EXPECT_EQ(files.Find(path)->name, "Report.PDF") << path;
  const std::pair<const char*, const char*> cases[] = {
      {"*.*", "readme"},         {"*", "readme"}, {"*.pdf", "Report.PDF"},
      {"r?p*.p*", "Report.PDF"}, {"*.p", ""},     {"?", ""}};
  for (const auto& [pattern, name] : cases) {
    const auto found = files.Find(std::string(R"(D:\Jobs\)") + pattern);
    EXPECT_EQ(found ? found->name : "", name) << pattern;
  }
  EXPECT_EQ(files.Open(R"(D:\a?.pdf)", OpenMode::Create).failure.number, failures::kBadFileName);
  EXPECT_EQ(files.Replace(R"(E:\a.pdf)", "x").number, failures::kPathNotFound);
  EXPECT_EQ(files.MakeFolder(R"(\\server\share\new)").number, failures::kPathNotFound);
  files.AddRoot(R"(\\server\share)");
  EXPECT_EQ(files.MakeFolder(R"(\\SERVER\share\new)").number, 0);
  EXPECT_EQ(files.Drives(), (std::vector<std::string>{"C:\\", "D:\\"}));
}

TEST(SimulatedMachine, FilesAreHeldForATime) {
  SimulatedMachine machine;
  const std::string path = R"(D:\out.pdf)";
  machine.files.Put(path, "old");
  machine.files.Put(R"(D:\new.pdf)", "new");
  machine.files.Hold(path, 5000);
  machine.clock.After(4000, [&] { machine.files.SetReadOnly(path); });
  const auto copy = [&] { return machine.files.Copy(R"(D:\new.pdf)", path).number; };
  EXPECT_EQ(machine.files.Open(path, OpenMode::Read).failure.number, failures::kPermissionDenied);
  machine.clock.SleepFor(4999);
  EXPECT_EQ(copy(), failures::kPathFileAccess);
  machine.clock.SleepFor(1);
  EXPECT_EQ(copy(), failures::kPathFileAccess) << "read-only";
  machine.files.SetReadOnly(path, false);
  {
    const auto reader = machine.files.Open(path, OpenMode::Read);
    EXPECT_EQ(machine.files.Remove(path).number, failures::kPathFileAccess) << "open";
  }
  EXPECT_EQ(copy(), 0);
  EXPECT_EQ(machine.files.Text(path), "new");
  EXPECT_EQ(machine.clock.LocalTime().second, 5);
}

TEST(SimulatedMachine, ChildrenFollowTheirScript) {
  SimulatedMachine machine;
  Processes& processes = machine.host().processes;
  machine.files.Put(R"(C:\gs\gswin32c.exe)", "");
  const Command command = machine.ghostscripts.RunCommand(R"(C:\gs\gswin32c.exe)", R"(C:\Temp\x.gs)");
  EXPECT_EQ(command.line, R"(cmd /c ""C:\gs\gswin32c.exe" @"C:\Temp\x.gs")");
  machine.processes.Expect(command.line)
      .Writes(R"(C:\x.out)", "1", 100)
      .Appends(R"(C:\x.out)", "2", 200)
      .Exits(7, 300);
  machine.processes.Expect("cmd *").FailsToStart();

  const auto child = processes.Start(command, R"(C:\gs\)", Streams::Hidden);
  EXPECT_FALSE(child.value->Wait(150));
  EXPECT_EQ(machine.files.Text(R"(C:\x.out)"), "1");
  EXPECT_TRUE(child.value->Wait(60'000));
  EXPECT_EQ(machine.clock.Ticks(), 300);
  EXPECT_EQ(machine.files.Text(R"(C:\x.out)"), "12");
  EXPECT_EQ(child.value->ExitCode(), 7);
  EXPECT_FALSE(processes.Start(command, "", Streams::Hidden).ok());
  EXPECT_NONFATAL_FAILURE(processes.Start(command, "", Streams::Hidden), "Unexpected command");
  EXPECT_NONFATAL_FAILURE(SimulatedMachine().processes.Expect("never"), "Never started");
}

}  // namespace
}  // namespace tessary
