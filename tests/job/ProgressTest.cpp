// What the notification area tells of a job, from its start to the end of the run.
#include <gtest/gtest.h>

#include "job/modMain.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

const std::string kTemp = R"(C:\Temp\Tessary\PDF Printer)";

struct ProgressTest : testing::Test {
  using Notification = SimulatedNotificationArea::Notification;

  ProgressTest() {
    machine.registry.Set(R"(HKEY_LOCAL_MACHINE\SOFTWARE\GPL Ghostscript\8.54\GS_DLL)",
                         R"(C:\gs\bin\gsdll32.dll)");
    machine.files.Put(R"(C:\gs\bin\gswin32c.exe)", "program");
    machine.files.Put(R"(C:\a.ps)", "%!PS");
    machine.host().commandLine = R"(sessionid=x ps=C:\a.ps)";
  }
  /// Runs a job of two pages, which takes Ghostscript 1.5 seconds.
  std::int32_t Start(const std::string& settings, int exitCode = 0) {
    machine.files.Put(R"(C:\Documents and Settings\ann\Application Data\Tessary\PDF Printer\settings.ini)",
                      "[PDF Printer]\r\nsuppresserrors=yes\r\n" + settings);
    machine.processes.Expect("*x_params.gs*")
        .Writes(kTemp + R"(\x_params.out)", "%%[Page: 2]%%\r\n", 300)
        .Writes(kTemp + R"(\x_printer.pdf)", "document", 800)
        .Exits(exitCode, 1500);
    return Main(run);
  }
  /// What was shown, without repetitions: tips, "balloon" and "gone".
  std::string Shown() {
    std::string shown, last;
    for (const Notification& call : machine.notificationArea.notified) {
      std::string now = call.record.tip.substr(0, call.record.tip.find('\0'));
      if ((call.record.flags & notify::kFlagInfo) != 0) now = "balloon";
      if (call.what == notify::kDelete) now = "gone";
      if (now != last) shown += now + "; ";
      last = now;
    }
    return shown;
  }
  /// Milliseconds from the balloon to the end of the icon.
  std::int64_t BalloonTime() {
    std::int64_t start = 0;
    for (const Notification& call : machine.notificationArea.notified)
      if ((call.record.flags & notify::kFlagInfo) != 0) start = call.at;
    return machine.notificationArea.notified.back().at - start;
  }

  SimulatedMachine machine;
  tessary::Run run{machine.host()};
};

TEST_F(ProgressTest, AJobIsFollowedToItsBalloon) {
  EXPECT_EQ(Start("output=D:\\out.pdf\r\n"), exitcodes::kDone);
  EXPECT_EQ(Shown(), "Creating PDF Document...; 2 pages created...; balloon; gone; ");
  EXPECT_LE(BalloonTime(), 100) << "a balloon that nobody sees is not waited for";
  EXPECT_EQ(machine.notificationArea.openWindows, 0);
}

TEST_F(ProgressTest, ABalloonHasFiveSeconds) {
  machine.notificationArea.balloonMs.reset();
  Start("output=D:\\out.pdf\r\nshowprogress=no\r\n");
  EXPECT_EQ(Shown(), "balloon; gone; ");
  EXPECT_EQ(machine.notificationArea.notified.front().record.icon, 200) << "it comes with an icon of its own";
  EXPECT_GE(BalloonTime(), 5000);
  EXPECT_LE(BalloonTime(), 5100);
}

TEST_F(ProgressTest, AClosedBalloonEndsTheRun) {
  machine.notificationArea.balloonMs = 1200;
  Start("output=D:\\out.pdf\r\nshowprogressfinished=\r\n");
  EXPECT_GE(BalloonTime(), 1200);
  EXPECT_LE(BalloonTime(), 1300);
}

TEST_F(ProgressTest, WithoutABalloonTheIconGoesWithTheJob) {
  machine.notificationArea.balloonMs.reset();
  Start("output=D:\\out.pdf\r\nshowprogressfinished=NO\r\n");
  EXPECT_EQ(Shown(), "Creating PDF Document...; 2 pages created...; gone; ");
  EXPECT_LE(machine.clock.Ticks(), 1700);
}

TEST_F(ProgressTest, NothingIsShownWhereNothingIsWanted) {
  Start("output=D:\\out.pdf\r\nshowprogress=No\r\nshowprogressfinished=no\r\n");
  EXPECT_TRUE(machine.notificationArea.notified.empty());
}

TEST_F(ProgressTest, AMergeIsToldOf) {
  machine.files.Put(R"(D:\old.pdf)", "older");
  machine.processes.Expect("*x_me_param.gs*").Writes(kTemp + R"(\x_merge.pdf)", "merged").Exits(0, 1500);
  EXPECT_EQ(Start("output=D:\\out.pdf\r\nmergefile=D:\\old.pdf\r\nshowprogressfinished=no\r\n"),
            exitcodes::kDone);
  EXPECT_EQ(Shown(),
            "Creating PDF Document...; 2 pages created...; PDF merge operation in progress...; gone; ");
}

TEST_F(ProgressTest, AFailedJobHasNoBalloon) {
  machine.notificationArea.balloonMs.reset();
  EXPECT_EQ(Start("output=D:\\none\\out.pdf\r\nshowsettings=never\r\n"), exitcodes::kNotDelivered);
  EXPECT_EQ(Shown(), "Creating PDF Document...; 2 pages created...; gone; ");
}

TEST_F(ProgressTest, AnErrorTakesTheIconAway) {
  EXPECT_EQ(Start("output=D:\\out.pdf\r\n", 1), exitcodes::kError);
  EXPECT_EQ(Shown(), "Creating PDF Document...; 2 pages created...; gone; ");
}

}  // namespace
}  // namespace tessary
