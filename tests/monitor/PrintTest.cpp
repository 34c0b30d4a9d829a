// tessary-print on the simulated machine, with a scripted `gui`.
#include <gtest/gtest.h>
#include <sstream>

#include "monitor/PrintArguments.h"
#include "monitor/PrintCommand.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

const std::string kData = R"(C:\Documents and Settings\ann\Application Data\Tessary\PDF Printer\)";
const std::string kTemp = R"(C:\Temp\Tessary\PDF Printer\)";
const std::string kSession = "00000001-0002-0003-0405-060708090A0B";

TEST(PrintArguments, AreReadOrRefused) {
  const PrintArguments parsed = ParsePrintArguments(
      {"a.ps", "--set", "Output=C:\\x=y.pdf", "--title=t", "--printer", "P [S]", "-", "--", "--help"});
  EXPECT_EQ(parsed.problem, "");
  EXPECT_EQ(parsed.files, (std::vector<std::string>{"a.ps", "-", "--help"}));
  EXPECT_EQ(parsed.settings, (std::vector<std::pair<std::string, std::string>>{{"output", "C:\\x=y.pdf"}}));
  EXPECT_EQ(parsed.printer + "|" + parsed.title.value_or("none"), "P [S]|t");
  for (const std::vector<std::string>& wrong :
       std::vector<std::vector<std::string>>{{},
                                             {"--title", "t"},
                                             {"a.ps", "--set"},
                                             {"a.ps", "--set", "novalue"},
                                             {"a.ps", "--set", "=x"},
                                             {"a.ps", "--set", "a=b\nc=d"},
                                             {"a.ps", "--set", "[x]=y"},
                                             {"a.ps", "--verbose"}})
    EXPECT_NE(ParsePrintArguments(wrong).problem, "") << (wrong.empty() ? "" : wrong.back());
}

struct PrintTest : testing::Test {
  PrintTest() {
    machine.host().programFile = R"(C:\Program Files\Tessary\tessary-print.exe)";
    machine.files.Put(R"(C:\a b.ps)", "%!PS\nshowpage\n");
  }
  /// Expects `gui` for the `number`-th job, which takes the run-once file after 30 ms unless it is to be left.
  ScriptedChild& ExpectGui(const std::string& instance = "", bool takes = true) {
    ScriptedChild& gui = machine.processes.Expect(R"("C:\Program Files\Tessary\gui.exe" sessionid=*)");
    if (takes)
      gui.Does(
          [this, instance] {
            const std::string file = kData + "runonce" + instance + ".ini";
            taken = machine.files.Text(file);
            machine.files.Remove(file);
          },
          30);
    return gui.Exits(0, 500);
  }
  int Print(const std::vector<std::string>& arguments) {
    words.str("");
    return PrintCommand(run, arguments, words, words);
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  std::string taken;
  std::ostringstream words;
};

TEST_F(PrintTest, StartsGuiWithASpooledJob) {
  std::string spooled;
  ExpectGui().Does([&] { spooled = machine.files.Text(kTemp + "print-" + kSession + ".ps"); });
  EXPECT_EQ(Print({R"(C:\a b.ps)"}), 0) << words.str();
  EXPECT_EQ(machine.processes.started.back().line, R"("C:\Program Files\Tessary\gui.exe" sessionid=)" +
                                                       kSession + R"( ps="C:\Temp\Tessary\PDF Printer\print-)" +
                                                       kSession + R"(.ps" doc="a b.ps" printer="PDF Printer")");
  EXPECT_TRUE(spooled.starts_with("%!PS\r\n")) << spooled;
  EXPECT_TRUE(machine.files.Names(kTemp).empty()) << "the spooled job goes with its success";
  EXPECT_TRUE(machine.files.Exists(kData + "settings.ini")) << "a first job makes the settings";
}

TEST_F(PrintTest, SettingsOfTheJobGoOverTheUsers) {
  machine.files.Put(kData + "settings-Sales.ini",
                    "[PDF Printer]\r\nTitle=mine\r\noutput=old\r\nextra=kept\r\n");
  ExpectGui("-Sales");
  EXPECT_EQ(Print({"--printer", "P [Sales]", "--set", "output=new", "--set", "odd=1", R"(C:\a b.ps)"}), 0);
  EXPECT_EQ(taken,
            "[PDF Printer]\r\n  title=mine\r\n  output=new\r\n  extra=kept\r\n  odd=1\r\n  printjob=yes\r\n");
  EXPECT_NE(words.str().find("there is no setting named 'odd'"), std::string::npos);

  machine.files.Put(kData + "runonce-Sales.ini", "[PDF Printer]\r\ntitle=another program's\r\n");
  ExpectGui("-Sales");
  EXPECT_EQ(Print({"--printer", "P [Sales]", "--set", "output=new", R"(C:\a b.ps)"}), 0);
  EXPECT_EQ(taken, "[PDF Printer]\r\n  title=another program's\r\n  output=new\r\n  printjob=yes\r\n");

  machine.files.Put(kData + "runonce-Sales.ini",
                    "[PDF Printer]\r\noutput=of a job that was killed\r\nprintjob=yes\r\n");
  ExpectGui("-Sales");
  EXPECT_EQ(Print({"--printer", "P [Sales]", R"(C:\a b.ps)"}), 0);
  EXPECT_EQ(taken, "[PDF Printer]\r\n  title=mine\r\n  output=old\r\n  extra=kept\r\n  printjob=yes\r\n");
}

TEST_F(PrintTest, KeepsAFailedJobAndSaysWhere) {
  const std::string spool = kTemp + "print-" + kSession + ".ps", log = kTemp + kSession + "_printer.log";
  ExpectGui("", false).Writes(log, "log").Exits(1, 200);
  EXPECT_EQ(Print({R"(C:\a b.ps)"}), 1);
  EXPECT_EQ(words.str(), "tessary-print: C:\\a b.ps: no PDF was made. The job is kept in " + spool +
                             ", its log in " + log + "\n");
  EXPECT_TRUE(machine.files.Exists(spool));
  EXPECT_FALSE(machine.files.Exists(kData + "runonce.ini")) << "nobody took it, so the next job must not";
  ExpectGui("", false).FailsToStart();
  EXPECT_EQ(Print({R"(C:\a b.ps)"}), 1);
  EXPECT_NE(words.str().find("Error launching the command"), std::string::npos);
}

TEST_F(PrintTest, OneBadFileDoesNotKeepTheOthersBack) {
  machine.files.Put(R"(C:\x.png)", "\x89PNG\r\n");
  machine.files.Put(R"(C:\empty.ps)", "");
  ExpectGui();
  EXPECT_EQ(Print({R"(C:\none.ps)", R"(C:\Temp)", R"(C:\x.png)", R"(C:\empty.ps)", R"(C:\a b.ps)"}), 1);
  EXPECT_EQ(machine.processes.started.size(), 1u);
  std::istringstream lines(words.str());
  for (std::string line; std::getline(lines, line);)
    EXPECT_TRUE(line.starts_with("tessary-print: C:\\")) << line;
  EXPECT_TRUE(machine.files.Names(kTemp).empty());
  ExpectGui().Exits(3, 100);
  EXPECT_EQ(Print({R"(C:\a b.ps)"}), 1);
  EXPECT_TRUE(machine.files.Names(kTemp).empty()) << "a cancelled job is not kept";
}

}  // namespace
}  // namespace tessary
