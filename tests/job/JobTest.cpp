// Whole runs on the simulated machine.
#include <gtest/gtest.h>

#include "job/modMain.h"
#include "tests/support/Faults.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

const std::string kTemp = R"(C:\Temp\Tessary\PDF Printer)";
const std::string kSettings =
    R"(C:\Documents and Settings\ann\Application Data\Tessary\PDF Printer\settings.ini)";
const std::string kLog = kTemp + R"(\x_printer.log)";
const std::string kTarget = R"(D:\out.pdf)";

/// A machine with Ghostscript, a job and settings that send it to D:\out.pdf.
struct JobMachine : SimulatedMachine {
  JobMachine() {
    registry.Set(R"(HKEY_LOCAL_MACHINE\SOFTWARE\GPL Ghostscript\8.54\GS_DLL)", R"(C:\gs\bin\gsdll32.dll)");
    files.Put(R"(C:\gs\bin\gswin32c.exe)", "program");
    files.Put(R"(C:\jobs\a b.ps)", "%!PS");
    files.Put(kSettings, "[PDF Printer]\r\noutput=" + kTarget + "\r\n");
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
                     kSettings + "\nLoad settings from " + kSettings + "\nParameters\nGhostscript\n");
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
  machine.files.Put(kSettings, "[PDF Printer]\r\noutput=x\r\nsuppresserrors=YES\r\n");
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

TEST_F(JobTest, SettingsModeMayBeDisabled) {
  machine.host().commandLine = "";
  EXPECT_EQ(Start(), exitcodes::kNothingDone);
  EXPECT_TRUE(machine.desktop.boxes.empty());
  machine.files.Put(R"(C:\Program Files\Tessary\global.ini)", "[PDF Printer]\r\ndisableoptiondialog= Yes \r\n");
  tessary::Run own(machine.host());
  EXPECT_EQ(Main(own), exitcodes::kNothingDone);
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

  machine.files.Put(kSettings,
                    "[PDF Printer]\r\noutput=D:\\none\\x.pdf\r\nsuppresserrors=yes\r\ndebug=yes\r\n");
  machine.ExpectGhostscript();
  tessary::Run own(machine.host());
  const std::int64_t start = machine.clock.Ticks();
  EXPECT_EQ(Main(own), exitcodes::kNotDelivered);
  EXPECT_LE(machine.clock.Ticks() - start, 1000) << "a missing folder is not waited for";
  EXPECT_NE(Log().find("Error copying PDF to destination (" + kTemp +
                       R"(\x_printer.pdf -> D:\none\x.pdf). Error 76: )"),
            std::string::npos);
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
