#include <gtest/gtest.h>

#include "ghostscript/Dialect.h"
#include "ghostscript/modGhostScript.h"
#include "system/Error.h"
#include "tests/support/Golden.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

const std::string kFolderSetting =
    R"(HKEY_LOCAL_MACHINE\SOFTWARE\Tessary\PDF Printer\Settings\ghostscriptfolder)";
const std::string kParameters = R"(C:\Temp\x_params.gs)", kOutput = R"(C:\Temp\x_params.out)";

struct GhostscriptTest : testing::Test {
  /// Registers an installation, with its program on the disk unless told otherwise.
  void Install(const std::string& product, const std::string& version, bool onDisk = true,
               SimulatedRegistry::View view = SimulatedRegistry::View::Both) {
    const std::string folder = "C:\\gs\\" + product.substr(0, 3) + version;
    machine.registry.Set("HKEY_LOCAL_MACHINE\\SOFTWARE\\" + product + "\\" + version + "\\GS_DLL",
                         folder + R"(\bin\gsdll32.dll)", view);
    if (onDisk) machine.files.Put(folder + R"(\bin\gswin32c.exe)", "program");
  }
  std::string Located() {
    std::int32_t major = 0, minor = 0;
    const std::string path = LocateGhostscript(run, major, minor);
    return path + " " + std::to_string(major) + "." + std::to_string(minor);
  }
  std::string Raised() {
    try {
      RunGhostscript(run, settings, kParameters, kOutput);
    } catch (const Error& error) {
      return std::to_string(error.number()) + " " + error.description();
    }
    return "nothing raised";
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  Dictionary settings;
};

TEST_F(GhostscriptTest, ParameterFile) {
  settings.Set("target", "Printer");
  WritePdfParameterFile(run, kParameters, R"(C:\Temp\x_printer.pdf)", settings, false, kOutput,
                        {R"(C:\Temp\x_header.ps)",
                         "C:\\jobs\\\xC3\xBC"
                         R"( b.ps)"});
  ExpectGolden("params.gs", machine.files.Text(kParameters));
  settings.Set("watermarktext", "DRAFT");
  WritePdfParameterFile(run, kParameters, "o", settings, false, kOutput, {});
  EXPECT_NE(machine.files.Text(kParameters).find("-sFONTPATH#\"C:\\WINDOWS\\Fonts\"\r\n"), std::string::npos);
  settings.Set("target", "");
  WritePdfParameterFile(run, kParameters, "o", settings, false, kOutput, {});
  EXPECT_EQ(machine.files.Text(kParameters).find("PDFSETTINGS"), std::string::npos);
}

TEST(Dialect, NewerVersionsReadOtherQuotes) {
  const std::string fixed =
      "-q\r\n-sstdout#\"/t/50% "
      "a\"b.out\"\r\n-sFONTPATH#\"C:\\f\\\\\"\r\n-sDEVICE#pdfwrite\r\n-sOutputFile#\"/t/5% "
      "\"q\"%08d_%08d.png\"\r\n"
      "-dNumber#1\r\n-dPDFSETTINGS#/screen --permit-file-read=/etc\r\n-c\r\n.setpdfwrite\r\n-f\r\n\"/t/a\"b "
      "5%.ps\"\r\n";
  EXPECT_EQ(TranslateParameters(fixed, 8), fixed);
  EXPECT_EQ(
      TranslateParameters(fixed, 10),
      "-q\r\n\"-sstdout=/t/50% a\\\"b.out\"\r\n\"-sFONTPATH=C:\\f\\\\\\\r\n\"\r\n\"-sDEVICE=pdfwrite\"\r\n"
      "\"-sOutputFile=/t/5%% \\\"q\\\"%%08d_%08d.png\"\r\n-dNumber#1\r\n\"-dPDFSETTINGS#/screen "
      "--permit-file-read=/etc\"\r\n-f\r\n\"/t/a\\\"b 5%.ps\"\r\n");
}

TEST(Dialect, AdditionsStandInTheirPlaces) {
  const GhostscriptAdditions additions{"", "/t/0.eps", {"/t:u/1.pdf", "C:\\t;u\\\"2.pdf"}};
  EXPECT_EQ(TranslateParameters("-q\r\n-f\r\n\"-f\"\r\n", 10, additions),
            "\"--permit-file-read=/t*u/1.pdf\"\r\n\"--permit-file-read=C:\\t*u\\\\\"2.pdf\"\r\n-q\r\n-f\r\n"
            "\"/t/0.eps\"\r\n\"-f\"\r\n");
}

TEST_F(GhostscriptTest, RegistrySearchTakesTheHighest) {
  EXPECT_EQ(Located(), " 0.0");
  Install("AFPL Ghostscript", "8.51");
  Install("GPL Ghostscript", "8.54");
  Install("AFPL Ghostscript", "8.54");
  EXPECT_EQ(Located(), R"(C:\gs\GPL8.54\bin\gswin32c.exe 8.54)");
  Install("AFPL Ghostscript", "8.60");
  EXPECT_EQ(Located(), R"(C:\gs\AFP8.60\bin\gswin32c.exe 8.60)");
  Install("GPL Ghostscript", "8.61", false);
  Install("GPL Ghostscript", "9.02");
  EXPECT_EQ(Located(), R"(C:\gs\AFP8.60\bin\gswin32c.exe 8.60)") << "not on the disk, or not of version 8";
  Install("GPL Ghostscript", "8.71", true, SimulatedRegistry::View::View64);
  EXPECT_EQ(Located(), R"(C:\gs\GPL8.71\bin\gswin32c.exe 8.71)");
}

TEST_F(GhostscriptTest, FolderSettingAndItsVersion) {
  Install("GPL Ghostscript", "8.54");
  machine.registry.Set(kFolderSetting, R"(D:\other\\)");
  EXPECT_EQ(Located(), R"(C:\gs\GPL8.54\bin\gswin32c.exe 8.54)") << "no program in that folder";
  struct Case {
    const char* bytes;
    const char* version;
  };
  for (const Case& c : {Case{"..c:/gs/gs9.02/lib;c:/gs/gs1.1/", "9.2"},
                        {"C:/gs/gs8.54/lib", "0.0"},
                        {"c:/gs/gs8.54", "0.0"},
                        {"c:/gs/gs854/lib", "0.0"},
                        {"c:/gs/gs8.50.1/lib", "8.50"}}) {
    machine.files.Put(R"(D:\other\gswin32c.exe)", std::string("\0", 1) + c.bytes);
    EXPECT_EQ(Located(), std::string(R"(D:\other\gswin32c.exe )") + c.version) << c.bytes;
  }
  machine.files.Put(R"(D:\other\gswin32c.exe)", "c:/gs/gs8.x/");
  EXPECT_THROW(Located(), Error);
  machine.ghostscripts.answer = std::string("10.00.0");
  machine.ghostscripts.asked.clear();
  for (int i = 0; i < 2; ++i) EXPECT_EQ(Located(), R"(D:\other\gswin32c.exe 10.0)");
  EXPECT_EQ(machine.ghostscripts.asked.size(), 1u) << "asked once a run";
}

TEST_F(GhostscriptTest, RunsTheExactCommandOrRaises) {
  const std::string line = R"(cmd /c ""C:\gs\GPL8.54\bin\gswin32c.exe" @"C:\Temp\x_params.gs")";
  machine.files.Put(kParameters, "-q\r\n");
  EXPECT_EQ(Raised(), "1005 Unable to locate Ghostscript installation.");
  Install("GPL Ghostscript", "8.7");
  EXPECT_TRUE(Raised().starts_with("1012 You have an old version of Ghostscript installed."));
  Install("GPL Ghostscript", "8.54");
  machine.processes.Expect(line);
  EXPECT_EQ(Raised(), "nothing raised");
  EXPECT_EQ(machine.processes.started.back().folder, R"(C:\gs\GPL8.54\bin\)");

  machine.processes.Expect(line).Writes(kOutput, "Error: /undefined in \xFC").Exits(1);
  EXPECT_EQ(Raised(), "1007 An error occured while running Ghostscript\r\n\r\nError: /undefined in \xC3\xBC");
  const std::string log = machine.files.Text(R"(C:\Temp\Tessary\PDF Printer\_printer.log)");
  EXPECT_NE(
      log.find("ann: Ghostscript returned exit code 1\r\nGhostscript output:\r\nError: /undefined in \xFC\r\n"),
      std::string::npos);
  machine.processes.Expect(line).Writes(kOutput, std::string(1'000'000, '.') + "last words").Exits(1);
  const std::string bounded = Raised();
  EXPECT_TRUE(bounded.ends_with(".last words"));
  EXPECT_LT(bounded.size(), 20'000u) << "whatever a document prints";
  machine.files.Remove(kOutput);
  machine.processes.Expect(line).Exits(139);
  EXPECT_EQ(Raised(), "1007 An error occured while running Ghostscript\r\n\r\n");

  settings.Set("ghostscripttimeout", "2");
  machine.processes.Expect(line).NeverEnds();
  EXPECT_EQ(Raised(), "1008 Ghostscript timed out");
  machine.processes.Expect(line).FailsToStart();
  EXPECT_EQ(Raised(), "1000 Error launching the command [" + line + "]");
}

TEST_F(GhostscriptTest, NewerVersionsGetTheTranslatedFile) {
  machine.registry.Set(kFolderSetting, R"(D:\gs10)");
  machine.files.Put(R"(D:\gs10\gswin32c.exe)", "c:/gs/gs10.00.0/lib");
  machine.files.Put(kParameters, "-sstdout#\"x\"\r\n");
  machine.processes.Expect(R"(cmd /c ""D:\gs10\gswin32c.exe" @"C:\Temp\x_params.gs.run")").Repeats();
  run.ghostscript.nextRun.readableFiles = {"x"};
  EXPECT_EQ(Raised(), "nothing raised");
  EXPECT_EQ(machine.files.Text(kParameters + ".run"), "\"--permit-file-read=x\"\r\n\"-sstdout=x\"\r\n");
  EXPECT_EQ(Raised(), "nothing raised") << "without the additions, which were for one run";
  EXPECT_EQ(machine.files.Text(kParameters), "-sstdout#\"x\"\r\n");
  EXPECT_EQ(machine.files.Text(kParameters + ".run"), "\"-sstdout=x\"\r\n");
}

TEST_F(GhostscriptTest, TimeoutIsBelievedWhenItReadsBothWays) {
  for (const auto& [text, seconds] : {std::pair{"60", 60},
                                      {" 60 ", 60},
                                      {"0", 0},
                                      {"-5", -5},
                                      {"", 300},
                                      {"060", 300},
                                      {"5.5", 300},
                                      {"abc", 300},
                                      {"99999999999", 300}}) {
    settings.Set("ghostscripttimeout", text);
    EXPECT_EQ(GetGhostscriptTimeout(settings), seconds) << text;
  }
}

TEST_F(GhostscriptTest, LastPageMarker) {
  const std::string far(2000, '.');
  struct Case {
    std::string text;
    std::int32_t page;
  };
  for (const Case& c : {Case{"", 0},
                        {"no marker", 0},
                        {"%%[Page: 1]%%\r\n%%[Page: 12]%%\r\n", 12},
                        {"%%[Page: 3]%%\r\n%%[Page: 4", 3},
                        {"%%[Page:12]%%", 2},
                        {"%%[ Page: 3 ]%%", 0},
                        {"%%[Page: 1]%%" + far, 0},
                        {far + "%%[Page: 400]%%", 400},
                        {"%%[Page: 7]%%%%[Page: 0]%%", 7},
                        {"%%[Page: x]%%", 0},
                        {"%%[Page:]%%", 0},
                        {"%%[Page: 99999999999]%%", 0},
                        {"%%[Page: -2]%%", 0},
                        {"%%[Page: 2.5]%%%%[LastPage]%%", 2}}) {
    machine.files.Put(kOutput, c.text);
    EXPECT_EQ(GetLastOutputPage(run, kOutput), c.page) << c.text.substr(0, 40);
  }
  machine.files.Hold(kOutput);
  EXPECT_EQ(GetLastOutputPage(run, kOutput), 0);
  EXPECT_EQ(GetLastOutputPage(run, R"(C:\none)"), 0);
  const std::string log = machine.files.Text(R"(C:\Temp\Tessary\PDF Printer\_printer.log)");
  EXPECT_EQ(log.find("page markers without"), log.rfind("page markers without")) << "said once a run";
}

TEST_F(GhostscriptTest, Fonts) {
  machine.shell.fonts = {{"Verdana (TrueType)", "verdana.ttf"},
                         {"Symbol (OpenType)", "s.otf"},
                         {"Modern", "m.fon"},
                         {"Arial (TRUETYPE)", "arial.ttf"},
                         {"Empty (TrueType)", ""}};
  std::string listed;
  for (const auto& [file, name] : GetInstalledFonts(run)) listed += file + "=" + *name.AsText() + ";";
  EXPECT_EQ(listed, "arial.ttf=Arial;verdana.ttf=Verdana;");
}

}  // namespace
}  // namespace tessary
