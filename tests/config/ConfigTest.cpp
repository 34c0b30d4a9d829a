#include <gtest/gtest.h>

#include "config/IniFile.h"
#include "config/modConfig.h"
#include "config/modFolders.h"
#include "system/Error.h"
#include "tests/support/Faults.h"
#include "tests/support/Golden.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

const std::string kData = R"(C:\Documents and Settings\ann\Application Data\Tessary\PDF Printer)";
const std::string kSettings = kData + R"(\settings.ini)", kRunOnce = kData + R"(\runonce.ini)";
const std::string kGlobal = R"(C:\Program Files\Tessary\global.ini)";

TEST(Dictionary, KeepsOrderAndAddsWhatIsRead) {
  Dictionary one;
  one.Set("b", "1");
  one.Set("a", "2");
  one.Set("b", "3");
  EXPECT_EQ(one.Text("Missing"), "");
  EXPECT_TRUE(one.Exists("Missing"));
  EXPECT_FALSE(one.Exists("missing"));
  one.Remove("a");
  EXPECT_THROW(one.Add("b", ""), Error);
  one.Add("a", NewDictionary());
  Dictionary copy = one;
  copy.Set("b", "other");
  std::string keys;
  for (const auto& [key, value] : copy) keys += key + ",";
  EXPECT_EQ(keys, "b,Missing,a,");
  EXPECT_EQ(one.Text("b"), "3");
  EXPECT_EQ(one.Text("a"), "") << "a dictionary is no text";
}

TEST(IniFile, ForgivesBadLines) {
  SimulatedMachine machine;
  tessary::Run run(machine.host());
  IniFile ini(run);
  machine.files.Put(R"(D:\x.ini)",
                    "root=1\r\nab\r\na=\r\na= \n=\r\n[]\r\n  [ Print ]  \r\n  a  =  b c  \raa=\n;c=d\r\n=x1\r\n"
                    "k=b=c\r\nno value\r\nk\xFC=\xE4\r\n[Two]\r\nold=1\r\n[Two]\r\nnew=2");
  ASSERT_TRUE(ini.Load(R"(D:\x.ini)"));
  EXPECT_EQ(IniFile::IniDict2String(*ini.data()),
            "root=1\r\n[Print]\r\n  a=b c\r\n  aa=\r\n  ;c=d\r\n  k=b=c\r\n  k\xC3\xBC=\xC3\xA4\r\n[Two]\r\n  "
            "new=2\r\n");
  ASSERT_TRUE(ini.Save(R"(D:\y.ini)"));
  const std::string saved = IniFile::IniDict2String(*ini.data());
  ASSERT_TRUE(ini.Load(R"(D:\y.ini)"));
  EXPECT_EQ(IniFile::IniDict2String(*ini.data()), saved) << "reads back as it was written";

  EXPECT_FALSE(ini.Load(R"(D:\none.ini)"));
  EXPECT_EQ(ini.LastError(), failures::kFileNotFound);
  EXPECT_TRUE(ini.data() && ini.data()->empty());
  machine.files.freeBytes = 0;
  ini.data()->Set("key", "value");
  EXPECT_FALSE(ini.Save(R"(D:\y.ini)"));
  EXPECT_EQ(ini.LastError(), failures::kDiskFull);
}

struct ConfigTest : testing::Test {
  Settings Load(bool ignoreRunOnce = false) { return LoadConfig(run, ignoreRunOnce, settingsFile); }
  void Put(const std::string& file, const std::string& lines) {
    machine.files.Put(file, "[PDF Printer]\r\n" + lines);
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  std::string settingsFile;
};

TEST_F(ConfigTest, FirstJobMakesTheSettingsFile) {
  const Settings settings = Load();
  EXPECT_EQ(settingsFile, kSettings);
  ExpectGolden("settings-new.ini", machine.files.Text(kSettings));
  EXPECT_EQ(GetConfigContent(settings), machine.files.Text(kSettings));
}

TEST_F(ConfigTest, LayersFromWeakToStrong) {
  Put(kSettings, "Title=mine\r\nshowpdf=yes\r\nzoom=\r\nextra=kept\r\n");
  Put(kGlobal, "SHOWPDF=no\r\nauthor=\r\n");
  Settings settings = Load();
  EXPECT_EQ(settings->Text("title"), "mine");
  EXPECT_EQ(settings->Text("showpdf"), "no");
  EXPECT_EQ(settings->Text("zoom"), "") << "an empty value is a value";
  EXPECT_EQ(settings->Text("extra"), "kept");
  EXPECT_EQ(settings->Text("res"), "150");

  Put(kRunOnce, "subject=once\r\nshowpdf=yes\r\n");
  EXPECT_EQ(Load(true)->Text("subject"), "") << "left for the next job";
  settings = Load();
  EXPECT_EQ(settings->Text("subject"), "once");
  EXPECT_EQ(settings->Text("title"), "") << "a run-once file hides the user's file completely";
  EXPECT_EQ(settings->Text("showpdf"), "no");
  EXPECT_FALSE(machine.files.Exists(kRunOnce));
}

TEST_F(ConfigTest, InstancesHaveFilesOfTheirOwn) {
  run.job.InstanceName = "Sales";
  Put(R"(C:\Program Files\Tessary\global-Sales.ini)", "title=sales\r\n");
  Put(kGlobal, "title=all\r\n");
  EXPECT_EQ(Load()->Text("title"), "sales");
  EXPECT_EQ(settingsFile, kData + R"(\settings-Sales.ini)");
  EXPECT_EQ(GetUserSettingsFile(run), kData + R"(\user-Sales.ini)");
}

TEST_F(ConfigTest, FilesWithoutTheSection) {
  machine.files.Put(kRunOnce, "[Other]\r\ntitle=x\r\n");
  EXPECT_EQ(Load()->Text("title"), "");
  EXPECT_TRUE(machine.files.Exists(kRunOnce)) << "made again with the defaults, for the next job";
  machine.files.Put(kGlobal, "PDF Printer=plain\r\n");
  EXPECT_EQ(Load()->Text("res"), "150");
  EXPECT_EQ(machine.files.Text(kGlobal), "PDF Printer=plain\r\n") << "the global file is never written";
  const std::string log = machine.files.Text(R"(C:\Temp\Tessary\PDF Printer\_printer.log)");
  EXPECT_NE(log.find("No [PDF Printer] section found in the settings file '" + kGlobal + "'."),
            std::string::npos);
}

// The two keys are made to exist before the defaults are added, so a file without them leaves them empty.
TEST_F(ConfigTest, RetiredKeys) {
  struct Case {
    const char* lines;
    const char* color;
    const char* size;
  };
  for (const Case& c : {Case{"watermarkcolor=\r\nwatermarktransparency=50\r\n", "#808080", ""},
                        {"watermarkcolor=\r\nwatermarktransparency=101\r\n", "", ""},
                        {"watermarkcolor=#112233\r\nwatermarktransparency=5\r\n", "#112233", ""},
                        {"watermarkfontsize=\r\nwatermarksize=6\r\n", "", "45"},
                        {"watermarkfontsize=\r\nwatermarksize=7.9 pt\r\n", "", "59"},
                        {"watermarkfontsize=\r\nwatermarksize=-1\r\n", "", ""}}) {
    Put(kSettings, c.lines);
    const Settings settings = Load();
    EXPECT_EQ(settings->Text("watermarkcolor"), c.color) << c.lines;
    EXPECT_EQ(settings->Text("watermarkfontsize"), c.size) << c.lines;
  }
}

TEST_F(ConfigTest, FailuresAreNumberedAndLoseNothing) {
  const auto raised = [this] {
    try {
      Load();
    } catch (const Error& error) {
      return std::to_string(error.number()) + " " + error.source() + " " + error.description();
    }
    return std::string("nothing raised");
  };
  machine.files.freeBytes = 100;  // room for a log record, not for the settings
  EXPECT_TRUE(raised().starts_with("1004 LoadConfig::WriteConfig:: Error writing settings file '" + kSettings +
                                   "'. Error 61: "))
      << raised();
  EXPECT_FALSE(machine.files.Exists(kSettings));
  machine.files.freeBytes = 1'000'000;
  Put(kSettings, "title=x\r\n");
  machine.files.Hold(kSettings);
  EXPECT_TRUE(raised().starts_with("1002 LoadConfig:: Unable to load settings. Error 70: ")) << raised();
  machine.files.Release(kSettings);

  Put(kRunOnce, "title=once\r\n");
  machine.files.SetReadOnly(kRunOnce);
  EXPECT_EQ(Load()->Text("title"), "once") << "a run-once file that cannot be removed still serves";
}

TEST_F(ConfigTest, RememberedValues) {
  EXPECT_EQ(GetUserSetting(run, "lastfilename", "none"), "none");
  EXPECT_TRUE(SetUserSetting(run, "lastfilename", "b.pdf"));
  EXPECT_TRUE(SetUserSetting(run, "lastfoldername", "D:\\out\\"));
  EXPECT_EQ(machine.files.Text(kData + R"(\user.ini)"),
            "[User]\r\n  lastfilename=b.pdf\r\n  lastfoldername=D:\\out\\\r\n");
  Dictionary config;
  config.Set("output", R"(C:\a\x.pdf)");
  RestoreLastFileName(run, config);
  EXPECT_EQ(config.Text("output"), R"(C:\a\b.pdf)");
  RestoreLastFolderName(run, config);
  EXPECT_EQ(config.Text("output"), R"(D:\out\b.pdf)");
  config.Set("output", R"(C:\Temp\)");
  RestoreLastFileName(run, config);
  EXPECT_EQ(config.Text("output"), R"(C:\Temp\b.pdf)");
  machine.files.Hold(kData + R"(\user.ini)");
  EXPECT_THROW(GetUserSetting(run, "lastfilename", ""), Error);
}

TEST_F(ConfigTest, ValuesOfTheJob) {
  struct Case {
    const char *output, *cleaned;
  };
  for (const Case& c : {Case{R"(c:\\a\\\b.pdf)", R"(c:\a\b.pdf)"},
                        {R"(\\srv\share\\b.pdf)", R"(\\srv\share\b.pdf)"},
                        {"  c:\\x y.pdf ", R"(c:\x y.pdf)"},
                        {"", ""}}) {
    Dictionary config;
    config.Set("output", c.output);
    ExpandConfigValues(run, config);
    EXPECT_EQ(config.Text("output"), c.cleaned);
  }
  run.job.DocumentProperties.Set("author", "Ann");
  run.job.DocumentProperties.Set("title", "Report");
  const auto settled = [this](const char* use, const char* text) {
    Dictionary config;
    for (const char* key : {"author", "title"}) {
      config.Set(key, text);
      config.Set(std::string("usedefault") + key, use);
    }
    ExpandConfigValues(run, config);
    return config.Text("author") + "|" + config.Text("title");
  };
  EXPECT_EQ(settled("no", ""), "Ann|") << "only the author falls back to the job's";
  EXPECT_EQ(settled("no", "mine"), "mine|mine");
  EXPECT_EQ(settled("YES", "mine"), "Ann|Report");
}

TEST(Folders, TheFirstThatCanBeMade) {
  const auto temporary = [](auto prepare) {
    SimulatedMachine machine;
    machine.system.tempPath.clear();
    prepare(machine);
    tessary::Run run(machine.host());
    const std::string folder = GetTemporaryFolder(run);
    EXPECT_TRUE(machine.files.Exists(folder)) << folder;
    machine.system.tempPath = R"(D:\later)";
    EXPECT_EQ(GetTemporaryFolder(run), folder) << "kept for the run";
    return folder;
  };
  EXPECT_EQ(temporary([](auto& m) { m.system.tempPath = "D:\\t\\"; }), R"(D:\t\Tessary\PDF Printer)");
  const auto blocked = [](auto& m) {
    m.files.Put(R"(D:\file)", "");
    m.system.environment["TEMP"] = R"(D:\file\sub)";
  };
  EXPECT_EQ(temporary([&](auto& m) {
              blocked(m);
              m.system.environment["TMP"] = R"(D:\tmp)";
            }),
            R"(D:\tmp\Tessary\PDF Printer)");
  EXPECT_EQ(temporary([&](auto& m) {
              blocked(m);
              m.system.environment["TMP"] = "";
              m.registry.Set(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Tessary\PDF Printer\Settings\USERTEMP)",
                             "D:\\jobs\\");
            }),
            R"(D:\jobs)");
  EXPECT_EQ(temporary([&](auto& m) {
              blocked(m);
              m.system.environment["TMP"] = "";
            }),
            R"(C:\Program Files\Tessary\temp)");
  EXPECT_THROW(temporary([&](auto& m) {
                 blocked(m);
                 m.system.environment["TMP"] = "";
                 m.files.SetReadOnly(R"(C:\Program Files\Tessary)");
               }),
               Error);
}

}  // namespace
}  // namespace tessary
