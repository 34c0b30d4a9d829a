// Whole runs on the simulated machine.
#include <gtest/gtest.h>

#include "job/modMain.h"
#include "system/Conversions.h"
#include "tests/support/Faults.h"
#include "tests/support/SimulatedMachine.h"
#include "ui/Form.h"

namespace tessary {
namespace {

const std::string kTemp = R"(C:\Temp\Tessary\PDF Printer)";
const std::string kSettings =
    R"(C:\Documents and Settings\ann\Application Data\Tessary\PDF Printer\settings.ini)";
const std::string kLog = kTemp + R"(\x_printer.log)";
const std::string kTarget = R"(D:\out.pdf)";

/// A machine with Ghostscript, a job and settings that send it to D:\out.pdf without a question.
struct JobMachine : SimulatedMachine {
  JobMachine() {
    registry.Set(R"(HKEY_LOCAL_MACHINE\SOFTWARE\GPL Ghostscript\8.54\GS_DLL)", R"(C:\gs\bin\gsdll32.dll)");
    files.Put(R"(C:\gs\bin\gswin32c.exe)", "program");
    files.Put(R"(C:\jobs\a b.ps)", "%!PS");
    files.Put(kSettings, "[PDF Printer]\r\noutput=" + kTarget + "\r\nshowpdf=no\r\n");
    files.Put(R"(C:\Program Files\Tessary\global.ini)", "[PDF Printer]\r\nshowsettings=never\r\n");
    host().commandLine = R"(sessionid=x ps="C:\jobs\a b.ps" doc="A job" printer="PDF Printer")";
  }
  ScriptedChild& ExpectGhostscript() {
    return processes.Expect(R"(cmd /c ""C:\gs\bin\gswin32c.exe" @"C:\Temp\Tessary\PDF Printer\x_params.gs")")
        .Writes(kTemp + R"(\x_params.out)", "%%[Page: 2]%%\r\n", 300)
        .Writes(kTemp + R"(\x_printer.pdf)", "new document", 800)
        .Exits(0, 900);
  }
};

struct JobTest : testing::Test {
  std::int32_t Start() { return Main(run); }
  /// The messages of the log, one a line, without their stamps.
  std::string Log() {
    std::string messages;
    const std::string log = machine.files.Text(kLog), mark = ", PC, ann: ";
    for (std::size_t at = 0; (at = log.find(mark, at)) != std::string::npos;) {
      at += mark.size();
      messages += log.substr(at, log.find("\r\n", at) - at) + "\n";
    }
    return messages;
  }
  JobMachine machine;
  tessary::Run run{machine.host()};
};

TEST_F(JobTest, BecomesADocument) {
  machine.files.Put(kTemp + R"(\x_printer.log)", "an earlier run");
  machine.files.Put(kTarget, "old document");
  std::string log;
  machine.ExpectGhostscript().Does([&] { log = Log(); }, 850);
  EXPECT_EQ(Start(), exitcodes::kDone);
  EXPECT_EQ(machine.files.Text(kTarget), "new document");
  EXPECT_EQ(run.job.PageCount, 2);
  EXPECT_EQ(run.job.FileCount, 1);
  EXPECT_TRUE(machine.files.Names(kTemp).empty()) << "a clean run leaves nothing";
  EXPECT_TRUE(machine.desktop.boxes.empty());
  EXPECT_EQ(log, R"(Command Line: sessionid=x ps="C:\jobs\a b.ps" doc="A job" printer="PDF Printer")"
                 "\nShow GUI\nLook for settings in " +
                     kSettings.substr(0, kSettings.rfind('\\')) + "\\runonce.ini\nLook for settings in " +
                     kSettings + "\nLoad settings from " + kSettings +
                     "\nPatch\nBegin PatchPostScriptFile\nOpen: C:\\jobs\\a b.ps"
                     "\nOpen: " +
                     kTemp +
                     "\\x_patched.ps\nClose files\nEnd PatchPostScriptFile\nHeader\nParameters\nGhostscript\n");
}

TEST_F(JobTest, WithoutOutputDoesNothing) {
  machine.files.Put(kSettings, "[PDF Printer]\r\noutput=\r\ndebug=yes\r\n");
  EXPECT_EQ(Start(), exitcodes::kNothingDone);
  EXPECT_TRUE(Log().ends_with("No output specified\n"));
}

TEST_F(JobTest, FailuresReachTheHandler) {
  machine.files.Put(kTarget, "old document");
  machine.files.Put(R"(C:\Program Files\Tessary\gui.exe.Manifest)", "");
  machine.ExpectGhostscript().Writes(kTemp + R"(\x_params.out)", "Error: /undefined in foo", 700).Exits(1, 900);
  EXPECT_EQ(Start(), exitcodes::kError);
  ASSERT_EQ(machine.desktop.boxes.size(), 1u);
  EXPECT_EQ(machine.desktop.boxes[0].flags, box::kCritical);
  EXPECT_EQ(machine.desktop.boxes[0].caption, "Tessary PDF Printer");
  EXPECT_EQ(machine.desktop.boxes[0].text,
            "An error occured.\r\n\r\nError 1007: An error occured while running Ghostscript\r\n\r\n"
            "Error: /undefined in foo\r\n\r\nMake PDF");
  EXPECT_EQ(machine.files.Text(kTarget), "old document");
  EXPECT_EQ(machine.files.Names(kTemp), std::vector<std::string>{"x_printer.log"});
  EXPECT_TRUE(Log().ends_with("Error handler. Error 1007: An error occured while running Ghostscript\n"));
  EXPECT_EQ(machine.components.openModules, 0);
  EXPECT_EQ(machine.components.loadedModules, std::vector<std::string>{"shell32.dll"});
}

TEST_F(JobTest, ErrorBoxIsSuppressedOnceTheSettingsSayIt) {
  machine.files.Put(kSettings, "[PDF Printer]\r\noutput=x\r\nshowpdf=no\r\nsuppresserrors=YES\r\n");
  machine.ExpectGhostscript().Exits(1);
  EXPECT_EQ(Start(), exitcodes::kError);
  EXPECT_TRUE(machine.desktop.boxes.empty());
  EXPECT_NE(Log().find("Error handler. Error 1007"), std::string::npos);
}

TEST_F(JobTest, BadStartsAreTold) {
  struct Case {
    const char *line, *box;
  };
  machine.files.Put(R"(C:\jobs\empty.ps)", "");
  machine.files.Put(R"(C:\jobs\held.ps)", "%!");
  machine.files.Hold(R"(C:\jobs\held.ps)");
  for (const Case& c :
       {Case{R"(ps=C:\no.ps msg=hello)",
             "Error 1006: Unable to find postscript file 'C:\\no.ps'.\r\n\r\nRead PS file from parameters"},
        {"ps=", "Error 1006: Unable to find postscript file ''.\r\n\r\nRead PS file from parameters"},
        {R"(ps=C:\jobs)",
         "Error 1006: Unable to find postscript file 'C:\\jobs'.\r\n\r\nRead PS file from parameters"},
        {R"(ps=C:\jobs\empty.ps)",
         "Error 1006: The postscript file 'C:\\jobs\\empty.ps' is empty.\r\n\r\nRead PS file from parameters"},
        {R"(ps=C:\jobs\held.ps)",
         "Error 70: Unable to read postscript file 'C:\\jobs\\held.ps'. Permission denied\r\n\r\nRead PS file "
         "from parameters"},
        {"a=1 a=2",
         "Error 457: This key is already associated with an element of this collection\r\n\r\nParse command "
         "line"}}) {
    machine.host().commandLine = c.line;
    tessary::Run own(machine.host());
    EXPECT_EQ(Main(own), exitcodes::kError) << c.line;
    EXPECT_EQ(machine.desktop.boxes.back().text, std::string("An error occured.\r\n\r\n") + c.box) << c.line;
  }
}

TEST_F(JobTest, Messages) {
  for (const auto& [line, flags] : {std::pair{"msg=hello icon=ERROR", 16},
                                    {"msg=hello icon=exclamation", 48},
                                    {"msg=hello icon=?", 64},
                                    {R"(msg=hello ps="C:\jobs\a b.ps")", 64}}) {
    machine.host().commandLine = line;
    tessary::Run own(machine.host());
    EXPECT_EQ(Main(own), exitcodes::kDone);
    EXPECT_EQ(machine.desktop.boxes.back().text, "hello");
    EXPECT_EQ(machine.desktop.boxes.back().flags, flags + box::kForeground) << line;
  }
}

TEST_F(JobTest, SettingsMode) {
  machine.host().commandLine = "sessionid=x";
  machine.desktop.user = [](Form& form) {
    form.Type(form["txtPDFFileName"], "typed");
    form.Press(form["cmdOK"]);
  };
  EXPECT_EQ(Start(), exitcodes::kDone);
  EXPECT_NE(machine.files.Text(kSettings).find(" output=typed\r\n"), std::string::npos);
  machine.desktop.user = [](Form& form) { form.CloseBox(); };
  EXPECT_EQ(Start(), exitcodes::kNothingDone);
  EXPECT_TRUE(machine.desktop.boxes.empty());

  machine.desktop.user = [this](Form& form) {
    machine.files.SetReadOnly(kSettings);
    form.Press(form["cmdOK"]);
  };
  EXPECT_EQ(Start(), exitcodes::kError);
  EXPECT_NE(machine.desktop.boxes.at(0).text.find("Error 1004: "), std::string::npos);
}

TEST_F(JobTest, SettingsModeMayBeDisabled) {
  machine.host().commandLine = "";
  machine.files.Put(R"(C:\Program Files\Tessary\global.ini)", "[PDF Printer]\r\ndisableoptiondialog= Yes \r\n");
  EXPECT_EQ(Start(), exitcodes::kNothingDone);
  ASSERT_EQ(machine.desktop.boxes.size(), 1u);
  EXPECT_EQ(machine.desktop.boxes[0].text, "Options dialog is disabled.");
  EXPECT_EQ(machine.desktop.boxes[0].flags, 65600);
}

TEST_F(JobTest, MissingComponentOpensItsPage) {
  machine.components.components.clear();
  EXPECT_EQ(Start(), exitcodes::kNothingDone);
  ASSERT_EQ(machine.desktop.boxes.size(), 1u);
  EXPECT_EQ(machine.desktop.boxes[0].flags, box::kForeground);
  EXPECT_EQ(machine.shell.opened,
            std::vector<std::string>{
                "https://www.tessary.example/dispatch/?action=ScriptingDownload&productid=pdf&major=5"
                "&minor=1&platform=2&buildnumber=2600&context=Scripting.Dictionary"});
  machine.components.components["Scripting.Dictionary"] = {5, "Access is denied."};
  tessary::Run own(machine.host());
  EXPECT_EQ(Main(own), exitcodes::kError);
}

TEST_F(JobTest, LockedDestinationIsWaitedFor) {
  machine.ExpectGhostscript();
  machine.files.Hold(kTarget, 900 + 4000);
  EXPECT_EQ(Start(), exitcodes::kDone);
  EXPECT_EQ(machine.files.Text(kTarget), "new document");
  EXPECT_TRUE(machine.desktop.boxes.empty());
  EXPECT_LE(machine.clock.Ticks(), 5100);
}

TEST_F(JobTest, UndeliveredIsAskedAboutAndAnswered) {
  machine.ExpectGhostscript();
  machine.files.Hold(kTarget);
  machine.desktop.answers = {box::kAnswerRetry, box::kAnswerCancel};
  EXPECT_EQ(Start(), exitcodes::kNotDelivered);
  ASSERT_EQ(machine.desktop.boxes.size(), 2u);
  EXPECT_EQ(machine.desktop.boxes[0].flags, 53);
  EXPECT_EQ(machine.desktop.boxes[0].text,
            "Error copying PDF document to destination file.\r\n\r\nPlease close the file 'D:\\out.pdf' if it "
            "is open and "
            "try again.");
  EXPECT_EQ(run.job.FileCount, 0);
  EXPECT_EQ(machine.files.Names(kTemp), std::vector<std::string>{"x_printer.log"}) << "the log alone says why";

  machine.files.Put(
      kSettings,
      "[PDF Printer]\r\noutput=D:\\none\\x.pdf\r\nshowpdf=no\r\nsuppresserrors=yes\r\ndebug=yes\r\n");
  machine.ExpectGhostscript();
  tessary::Run own(machine.host());
  const std::int64_t start = machine.clock.Ticks();
  EXPECT_EQ(Main(own), exitcodes::kNotDelivered);
  EXPECT_LE(machine.clock.Ticks() - start, 1000) << "a missing folder is not waited for";
  EXPECT_NE(Log().find("Error copying PDF to destination (" + kTemp +
                       R"(\x_printer.pdf -> D:\none\x.pdf). Error 76: )"),
            std::string::npos);
}

/// Settings with everything that can follow a job.
const std::string kFollowUps = "[PDF Printer]\r\noutput=" + kTarget +
                               "\r\nstatusfile=D:\\status.txt\r\nrunonsuccess=Ok \"%1\" %2 %3\r\n"
                               "runonerror=bad %1 %2 %3\r\nrunonerrordir=D:\\\r\n"
                               "afterprintprogram=after %1\r\nopenfolder= Yes\r\nshowpdf=YES\r\ndebug=yes\r\n";

/// The status file as characters.
std::string StatusOf(SimulatedMachine& machine) {
  std::string text;
  for (const char c : machine.files.Text(R"(D:\status.txt)"))
    if (c != 0) text += c;
  return text;
}

TEST_F(JobTest, ADocumentIsShownReportedAndFollowedUp) {
  machine.files.Put(kSettings, kFollowUps + "runonsuccessdir=C:\\jobs\r\n");
  machine.ExpectGhostscript();
  machine.processes.Expect(R"(cmd /c Ok "D:\out.pdf" 2 1)").NeverEnds();
  machine.processes.Expect(R"(cmd /c after D:\out.pdf)").NeverEnds();
  EXPECT_EQ(Start(), exitcodes::kDone);
  EXPECT_TRUE(
      Log().ends_with("Ghostscript\nShow\nWrite status file\nCreate status file D:\\status.txt\n"
                      "Run on success Ok \"%1\" %2 %3\nRun afterprintprogram after %1\n"
                      "Open destination folder D:\\\nFinished\n"))
      << Log();
  EXPECT_EQ(machine.shell.opened, (std::vector<std::string>{kTarget, "D:\\"}));
  EXPECT_EQ(machine.processes.started[1].folder, R"(C:\jobs)");
  EXPECT_EQ(machine.processes.started[2].folder, machine.host().workingFolder);
  EXPECT_TRUE(
      StatusOf(machine).starts_with("[Status]\r\n  Errors=0\r\n  PageCount=2\r\n  FileCount=1\r\n\r\n"
                                    "[Files]\r\n  File1=D:\\out.pdf\r\n\r\n[PDF Printer]\r\n"));
}

TEST_F(JobTest, AFailedJobIsReportedAndFollowedUpBeforeTheBox) {
  machine.files.Put(kSettings, kFollowUps);
  machine.ExpectGhostscript().Exits(1);
  std::size_t startedBeforeBox = 0;
  machine.desktop.onBox = [&] { startedBeforeBox = machine.processes.started.size(); };
  machine.processes.Expect(R"(cmd /c bad D:\out.pdf 0 0)");
  machine.processes.Expect(R"(cmd /c after D:\out.pdf)");
  EXPECT_EQ(Start(), exitcodes::kError);
  EXPECT_EQ(machine.processes.started[1].folder, R"(D:\)");
  EXPECT_EQ(startedBeforeBox, 3u);
  EXPECT_TRUE(
      StatusOf(machine).starts_with("[Status]\r\n  Errors=1\r\n  PageCount=0\r\n  FileCount=0\r\n\r\n"
                                    "[Files]\r\n\r\n\r\n[PDF Printer]\r\n"));
  EXPECT_NE(Log().find("Create status file D:\\status.txt\nRun on errorbad %1 %2 %3\n"
                       "Run afterprintprogram after %1\nError handler. Error 1007: "),
            std::string::npos)
      << Log();
}

TEST_F(JobTest, AFailedDeliveryIsReportedAndFollowedUp) {
  machine.files.Put(kSettings, kFollowUps);
  machine.files.Hold(kTarget);
  machine.ExpectGhostscript();
  // The command is its own working folder at first, so the handler starts it.
  machine.processes.Expect(R"(cmd /c bad D:\out.pdf 2 0)");
  machine.processes.Expect(R"(cmd /c bad D:\out.pdf 2 0)");
  machine.processes.Expect(R"(cmd /c after D:\out.pdf)");
  EXPECT_EQ(Start(), exitcodes::kError);
  ASSERT_EQ(machine.processes.started.size(), 4u);
  EXPECT_EQ(machine.processes.started[1].folder, "bad %1 %2 %3");
  EXPECT_EQ(machine.processes.started[2].folder, R"(D:\)");
  EXPECT_TRUE(machine.shell.opened.empty()) << "neither the document nor its folder";
  EXPECT_NE(Log().find("Run on error bad %1 %2 %3\n"), std::string::npos);

  machine.files.Put(kSettings, ReplaceAll(kFollowUps, "runonerror=", "none="));
  machine.ExpectGhostscript();
  machine.processes.Expect(R"(cmd /c after D:\out.pdf)");
  tessary::Run own(machine.host());
  EXPECT_EQ(Main(own), exitcodes::kNotDelivered);
  EXPECT_NE(StatusOf(machine).find("FileCount=0\r\n\r\n[Files]\r\n  File1=D:\\out.pdf\r\n\r\n["),
            std::string::npos);
  EXPECT_EQ(machine.shell.opened, std::vector<std::string>{"D:\\"});
}

TEST_F(JobTest, WhatFailsInTheHandlerStopsNothing) {
  machine.files.Put(kSettings, kFollowUps);
  machine.files.PutFolder(R"(D:\status.txt)");
  machine.ExpectGhostscript();
  machine.processes.Expect("cmd /c bad *").FailsToStart();
  machine.processes.Expect("cmd /c after *");
  EXPECT_EQ(Start(), exitcodes::kError);
  ASSERT_EQ(machine.desktop.boxes.size(), 1u);
  const std::string error =
      "Error 75: Error writing status file 'D:\\status.txt'. Error 75: Path/File access error";
  EXPECT_EQ(machine.desktop.boxes[0].text, "An error occured.\r\n\r\n" + error + "\r\n\r\nMake PDF");
  EXPECT_TRUE(
      Log().ends_with("Create status file D:\\status.txt\nError handler. " + error +
                      "\nRun on errorbad %1 %2 %3\nError handler. Error 1000: Error launching the command "
                      "[cmd /c bad D:\\out.pdf 2 1]\nRun afterprintprogram after %1\nError handler. " +
                      error + "\n"))
      << Log();
}

TEST_F(JobTest, CleanUpSparesWhatItMust) {
  const auto names = [this](const char* settings, bool keepLogs) {
    for (const char* name : {"x_a.ps", "X_b.LOG", "x1_d.ps", "y_c.ps", "y_old.log"})
      machine.files.Put(kTemp + "\\" + name, "");
    machine.files.SetModified(kTemp + R"(\y_old.log)", machine.clock.UnixTime() - 2 * 24 * 3600 - 1);
    tessary::Run own(machine.host());
    own.job.SessionId = "x";
    own.job.DebugSetting = *settings != 0;
    CleanupSessionFiles(own, keepLogs);
    std::string left;
    for (const std::string& name : machine.files.Names(kTemp)) left += name + " ";
    return left;
  };
  EXPECT_EQ(names("", false), "x1_d.ps y_c.ps ");
  EXPECT_EQ(names("", true), "x1_d.ps X_b.LOG y_c.ps ");
  EXPECT_EQ(names("debug", false), "x1_d.ps x_a.ps X_b.LOG y_c.ps ");
  machine.files.Put(R"(C:\Program Files\Tessary\debug.txt)", "");
  EXPECT_EQ(names("", false), "x1_d.ps x_a.ps X_b.LOG y_c.ps y_old.log ");
}

TEST(JobFaults, AFullDiskAtAnyWriteLosesNothing) {
  int failed = 0;
  for (int n = 1, last = 1; n <= last; ++n) {
    JobMachine machine;
    machine.files.Put(kTarget, "old document");
    const std::string settings = machine.files.Text(kSettings);
    machine.ExpectGhostscript().Repeats();
    FaultyFiles files(machine.files, n);
    Host host = WithFiles(machine.host(), files);
    tessary::Run run(host);
    const std::int32_t outcome = Main(run);
    last = files.calls();
    const std::string document = machine.files.Text(kTarget);
    EXPECT_EQ(document, outcome == exitcodes::kDone ? "new document" : "old document") << "write " << n;
    EXPECT_EQ(machine.files.Text(kSettings), settings) << "write " << n;
    EXPECT_EQ(machine.desktop.boxes.empty(), outcome == exitcodes::kDone) << "write " << n;
    failed += outcome != exitcodes::kDone;
  }
  EXPECT_GE(failed, 2) << "at least the parameter file and the delivery can fail";
}

}  // namespace
}  // namespace tessary
