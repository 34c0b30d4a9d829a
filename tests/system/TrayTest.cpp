// The tray icon, its form and the way to the foreground, on the simulated machine.
#include <gtest/gtest.h>

#include "system/CBalloonToolTipNotify.h"
#include "system/frmMain.h"
#include "system/modStealFocus.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

struct TrayTest : testing::Test {
  using Notification = SimulatedNotificationArea::Notification;
  const Notification& Last() { return area().notified.back(); }
  SimulatedNotificationArea& area() { return machine.notificationArea; }
  /// Lets time pass as the wait for a child does.
  void RunFor(int milliseconds) {
    for (int passed = 0; passed < milliseconds; passed += 50) {
      machine.clock.Advance(50);
      machine.desktop.PumpMessages();
    }
  }
  std::string Tip() { return Last().record.tip.substr(0, Last().record.tip.find('\0')); }

  SimulatedMachine machine;
  tessary::Run run{machine.host()};
};

TEST_F(TrayTest, TheRecordHoldsItsTextsInFixedWidth) {
  CBalloonToolTipNotify tt(run);
  tt.SetVisible(true);
  const NotifyIconData& fresh = Last().record;
  EXPECT_EQ(fresh.size, 488u);
  EXPECT_EQ(fresh.flags, 7u);
  EXPECT_EQ(fresh.callbackMessage, 1025u);
  EXPECT_EQ(fresh.timeout, 3u);
  EXPECT_EQ(fresh.tip, std::string(1, '\0') + std::string(127, ' '));

  tt.SetText("Grüße");
  EXPECT_EQ(tt.Text(), "Grüße" + std::string(1, '\0') + std::string(122, ' ')) << "counted in characters";
  tt.SetText(std::string(127, 'a'));
  EXPECT_EQ(tt.Text(), std::string(127, 'a') + '\0');
  tt.SetText(std::string(127, 'a') + "üb");
  EXPECT_EQ(tt.Text(), std::string(127, 'a') + "ü") << "cut, and the NUL is lost with the rest";
  tt.SetBalloonText(std::string(5000, 'b'));
  EXPECT_EQ(tt.BalloonText(), std::string(256, 'b'));
  tt.SetBalloonTitle(std::string(64, 'c'));
  EXPECT_EQ(tt.BalloonTitle(), std::string(64, 'c'));
}

TEST_F(TrayTest, ChangesAreShownWhileTheIconIsVisible) {
  CBalloonToolTipNotify tt(run);
  tt.SetText("unseen");
  tt.SetTrayIcon(5);
  EXPECT_TRUE(area().notified.empty());
  tt.SetVisible(true);
  tt.SetVisible(true);
  tt.SetTrayIconPic(std::make_shared<TrayPicture>(TrayPicture{6}));
  tt.SetVisible(false);
  tt.SetBalloonTitle("unseen");
  std::string calls;
  for (const Notification& call : area().notified)
    calls += std::to_string(call.what) + ":" + std::to_string(call.record.icon) + " ";
  EXPECT_EQ(calls, "0:5 0:5 1:6 2:6 ");
}

TEST_F(TrayTest, BalloonIsShownOnce) {
  CBalloonToolTipNotify tt(run);
  tt.SetBalloonText("text");
  tt.SetBalloonTitle("title");
  tt.SetBalloonIconType(notify::kIconWarning);
  tt.SetBalloonTimeOut(20);
  tt.ShowNotifyBalloonTip("", "", -1, -1);
  EXPECT_EQ(Last().what, notify::kAdd) << "the icon was not visible";
  EXPECT_EQ(Last().record.flags, 23u);
  EXPECT_EQ(Last().record.timeout, 20u);
  EXPECT_EQ(Last().record.infoFlags, notify::kIconWarning);
  EXPECT_TRUE(Last().record.info.starts_with(std::string("text\0", 5)));

  tt.ShowNotifyBalloonTip("other", "", notify::kIconError, 7);
  EXPECT_EQ(Last().what, notify::kModify);
  EXPECT_EQ(Last().record.timeout, 7u);
  EXPECT_EQ(Last().record.infoFlags, notify::kIconError);
  EXPECT_TRUE(Last().record.info.starts_with(std::string("other\0", 6)));
  EXPECT_TRUE(Last().record.infoTitle.starts_with(std::string("title\0", 6)));
  EXPECT_EQ(tt.BalloonTimeOut(), 20);
  tt.SetText("later");
  EXPECT_EQ(Last().record.flags, 7u);
}

TEST_F(TrayTest, EventsTellWhatTheUserDoes) {
  std::string heard;
  CBalloonToolTipNotify tt(run);
  const auto button = [&heard](const char* name) {
    return [&heard, name](std::int16_t number, std::int32_t x, std::int32_t y) {
      heard += name + std::to_string(number) + "@" + std::to_string(x) + "," + std::to_string(y) + " ";
    };
  };
  const auto plain = [&heard](const char* name) {
    return [&heard, name] { heard += std::string(name) + " "; };
  };
  const auto place = [&heard](const char* name) {
    return [&heard, name](std::int32_t x, std::int32_t) { heard += name + std::to_string(x) + " "; };
  };
  tt.events = {plain("click"), button("double"), button("down"), button("up"), place("move"),
               plain("show"),  plain("hide"),    plain("out"),   place("hit"), plain("taskbar")};
  tt.ContextMenu = std::make_shared<PopupMenu>(PopupMenu{plain("menu")});
  area().cursor = {3, 4};
  for (std::uint32_t code = 512; code <= 521; ++code) area().Post(code);
  for (std::uint32_t code = 1026; code <= 1030; ++code) area().Post(code);
  area().Post(notify::kLeftUp, 1024);  // another message
  area().Post(0, run.tray.taskbarCreatedMessage);
  machine.desktop.PumpMessages();
  EXPECT_EQ(heard,
            "move3 down0@3,4 up0@3,4 click double0@3,4 down1@3,4 up1@3,4 click menu double1@3,4 "
            "down2@3,4 up2@3,4 click double2@3,4 show hide out hit3 ");
}

TEST_F(TrayTest, WindowIsTiedToItsObject) {
  {
    CBalloonToolTipNotify one(run);
    EXPECT_EQ(area().openWindows, 1);
  }
  EXPECT_EQ(area().openWindows, 0);
  EXPECT_EQ(Last().what, notify::kDelete);
  area().windowFails = true;
  CBalloonToolTipNotify blind(run);
  blind.ShowNotifyBalloonTip("a", "b", 0, 0);
  EXPECT_EQ(Last().record.window, 0);
  EXPECT_EQ(area().messageNames, std::vector<std::string>{"TaskbarCreated"}) << "registered once a run";
}

TEST_F(TrayTest, IconTurnsAndCountsPages) {
  run.job.ProgressFile = R"(C:\Temp\x_params.out)";
  MainForm(run).SetTip("Creating");
  MainForm(run).ShowTrayIcon();
  EXPECT_EQ(Last().record.icon, 100);
  RunFor(300);
  EXPECT_EQ(Last().record.icon, 103);
  RunFor(900);
  EXPECT_EQ(Tip(), "Creating") << "there is no file yet";
  machine.files.Put(run.job.ProgressFile, "%%[Page: 7]%%\r\n");
  RunFor(1100);
  EXPECT_EQ(Tip(), "Creating") << "once a turn";
  RunFor(100);
  EXPECT_EQ(Last().record.icon, 100);
  EXPECT_EQ(Tip(), "7 pages created...");
  // The log that wants to tell of the unreadable page cannot be written.
  run.log = {R"(Z:\no.log)", true};
  machine.files.Put(run.job.ProgressFile, "%%[Page: x]%%\r\n");
  RunFor(2400);
  EXPECT_TRUE(run.ghostscript.unreadableMarkerLogged);
  EXPECT_EQ(Tip(), "7 pages created...");

  const std::size_t turned = area().notified.size();
  MainForm(run).HideTrayIcon();
  RunFor(300);
  EXPECT_EQ(area().notified.size(), turned + 1);
  EXPECT_FALSE(area().iconIsThere);
  UnloadMainForm(run);
}

TEST_F(TrayTest, BalloonNamesTheDocument) {
  run.job.PageCount = 12;
  run.labels.texts.Set("L166", "%1 liegt bereit");
  for (const std::uint32_t end : {notify::kBalloonHide, notify::kBalloonTimeOut, notify::kBalloonClick}) {
    area().balloonMs.reset();
    MainForm(run).ShowBalloonTip(R"(D:\out.pdf)");
    EXPECT_TRUE(area().iconIsThere) << "also without an icon before";
    EXPECT_EQ(Last().record.icon, 200);
    EXPECT_EQ(Last().record.infoFlags, 1u);
    EXPECT_EQ(Last().record.timeout, 0u);
    EXPECT_TRUE(Last().record.infoTitle.starts_with("PDF Document Created (12 pages)"));
    EXPECT_TRUE(Last().record.info.starts_with(R"(D:\out.pdf liegt bereit)"));
    area().Post(notify::kMouseMove);
    RunFor(50);
    EXPECT_FALSE(run.tray.BalloonClosed);
    area().Post(end);
    RunFor(50);
    EXPECT_TRUE(run.tray.BalloonClosed);
  }
  UnloadMainForm(run);
}

TEST(StealFocus, SharesTheInputOfTheForeground) {
  struct Case {
    std::int64_t foreground;
    bool refuses, minimised, result;
    const char* calls;
  };
  for (const Case& c : {Case{250, false, false, true, ""},
                        {110, false, false, true, "attach 1 2; foreground 250; detach 1 2; show 250 5; "},
                        {110, true, true, false, "attach 1 2; foreground 250; detach 1 2; show 250 9; "},
                        {201, false, true, true, "foreground 250; show 250 9; "}}) {
    SimulatedMachine machine;
    tessary::Run run{machine.host()};
    machine.windows.foreground = c.foreground;
    machine.windows.refuses = c.refuses;
    machine.windows.minimised = c.minimised;
    EXPECT_EQ(ForceForeground(run, 250), c.result);
    EXPECT_EQ(machine.windows.calls, c.calls);
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  EXPECT_EQ(SetTopMost(run, 250, true, windows::kNoMove | windows::kNoSize), 1);
  EXPECT_EQ(SetTopMost(run, 250, false, windows::kHideWindow), 0);
  EXPECT_EQ(machine.windows.calls, "position 250 -1 0 3; position 250 -2 0 128; ");
}

}  // namespace
}  // namespace tessary
