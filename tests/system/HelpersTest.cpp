#include <gtest/gtest.h>

#include "system/Conversions.h"
#include "system/Error.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/RegistryHelpers.h"
#include "system/modInstances.h"
#include "system/modUtil.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

const PathStyle kWindows = PathStyle::Windows(), kPosix = PathStyle::Posix();

TEST(Conversions, ReadNumbersByTheirRules) {
  struct Case {
    const char* text;
    std::int32_t whole;  ///< SafeLong
    double leading;      ///< LeadingNumber
  };
  for (const Case& c : {Case{"12", 12, 12},
                        {" -7 ", -7, -7},
                        {"+3", 3, 3},
                        {"2.5", 2, 2.5},
                        {"3.5", 4, 3.5},
                        {"12abc", 0, 12},
                        {"1 2", 0, 12},
                        {"&hFF", 255, 255},
                        {"&h", 0, 0},
                        {".5", 0, 0.5},
                        {"", 0, 0},
                        {"inf", 0, 0},
                        {"nan", 0, 0},
                        {"--5", 0, 0},
                        {"1e999", 0, 0},
                        {"1e3", 1000, 1000},
                        {"2147483648", 0, 2147483648.0},
                        {"-2147483648", -2147483647 - 1, -2147483648.0}}) {
    EXPECT_EQ(SafeLong(c.text), c.whole) << c.text;
    EXPECT_EQ(LeadingNumber(c.text), c.leading) << c.text;
  }
  EXPECT_THROW(ToLong("x"), Error);
}

TEST(Conversions, BitsColoursAndAddresses) {
  EXPECT_EQ(Bit(1), 1);
  EXPECT_EQ(Bit(31), 1073741824);
  for (const std::int32_t position : {0, 32}) EXPECT_THROW(Bit(position), Error);
  std::int32_t red = 0, green = 0, blue = 0;
  SplitColor(0x123456, red, green, blue);
  EXPECT_EQ(std::make_tuple(red, green, blue), std::make_tuple(0x56, 0x34, 0x12));
  EXPECT_EQ(UrlEncode("a b/c_~-.\xE4"), "a+b%2Fc%5F%7E-.%E4");
}

TEST(Paths, TakeTheMachinesSeparators) {
  EXPECT_EQ(ParentFolder(kWindows, R"(C:\a/b\c.pdf)"), R"(C:\a/b\)");
  EXPECT_EQ(FileNameOf(kWindows, "plain.pdf"), "plain.pdf");
  EXPECT_EQ(StripTrailingBackslashes(kWindows, R"(C:\a\\)"), R"(C:\a)");
  EXPECT_EQ(StripTrailingBackslashes(kWindows, R"(C:\)"), "C:");
  EXPECT_EQ(FileNameOf(kPosix, R"(/a\b/c.pdf)"), "c.pdf");
  EXPECT_EQ(ParentFolder(kPosix, "/c.pdf"), "/");
  EXPECT_EQ(StripTrailingBackslashes(kPosix, "//"), "/");
  EXPECT_EQ(JoinPath(kPosix, "/", "x"), "/x");
  EXPECT_EQ(JoinPath(kWindows, "", "x"), "\\x");
  EXPECT_EQ(BaseNameOf(kWindows, R"(C:\v1.2\report.final.doc)"), "report.final");
  EXPECT_EQ(BaseNameOf(kPosix, "/x.d/none"), "none");
  EXPECT_TRUE(IsUncShareRoot(kWindows, R"(\\server\share\\)"));
  for (const char* path : {R"(\\server)", R"(\\server\share\x)", R"(C:\x)", R"(\\)"})
    EXPECT_FALSE(IsUncShareRoot(kWindows, path)) << path;
}

TEST(Paths, NamesOfStrangersAreSafe) {
  EXPECT_EQ(SafeFileName("a:b.pdf."), "a_b.pdf");
  EXPECT_EQ(SafeFileName(R"(\/:*?"<>|)"), "_________");
  EXPECT_EQ(SafeFileName("..."), "");
  EXPECT_EQ(GetInstanceFromPrinterName("PDF Printer [../a]"), ".._a");
  for (const char* name : {"PDF Printer", "PDF ] [x", "x []"})
    EXPECT_EQ(GetInstanceFromPrinterName(name), "") << name;
}

TEST(FileHelpers, FoldersAreMadeWithTheirParents) {
  SimulatedMachine machine;
  tessary::Run run(machine.host());
  machine.files.AddRoot(R"(\\server\share)");
  for (const char* path : {R"(D:\a\b/c)", R"(\\server\share\x\y)"}) {
    MkDirRecurse(run, path);
    EXPECT_TRUE(FolderExists(run, path)) << path;
    EXPECT_FALSE(FileExists(run, path)) << path;
  }
  machine.files.Put(R"(D:\file)", "x");
  EXPECT_TRUE(FileExists(run, R"(D:\f*)"));
  try {
    MkDirRecurse(run, R"(D:\file\b)");
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.number(), failures::kPathFileAccess);
    EXPECT_TRUE(error.description().starts_with(
        R"(Error creating folder in function MkDirRecurse. Target=D:\file\b, Current=D:\file\. )"))
        << error.description();
  }
}

TEST(FileHelpers, WholeFiles) {
  SimulatedMachine machine;
  tessary::Run run(machine.host());
  WriteBinaryFile(run, R"(D:\x)", "0123456789");
  WriteBinaryFile(run, R"(D:\x)", "abc");
  EXPECT_EQ(ReadFile(run, R"(D:\x)"), "abc");
  WriteTextFile(run, R"(D:\x)", "\xC3\xBC\xE2\x82\xAC");
  EXPECT_EQ(ReadTextFile(run, R"(D:\x)"), "\xFC\x80");
  for (const auto& [path, number] : {std::pair{"", 1000}, {R"(D:\none)", 53}}) {
    try {
      ReadFile(run, path);
      FAIL() << path;
    } catch (const Error& error) {
      EXPECT_EQ(error.number(), number);
    }
  }
  machine.files.handles = 0;
  try {
    ReadFile(run, R"(D:\x)");
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.description(), "Function ReadFile was not able to get a free file handle.");
  }
}

TEST(Registry, ReadsByFullPaths) {
  SimulatedMachine machine;
  tessary::Run run(machine.host());
  machine.registry.Set(R"(HKEY_LOCAL_MACHINE\Software\X\Y)", "value");
  machine.registry.Set(R"(HKEY_LOCAL_MACHINE\Software\X\)", "default");
  machine.registry.Set(R"(HKEY_LOCAL_MACHINE\Software\X\Only64)", "64", SimulatedRegistry::View::View64);
  machine.registry.SetValue(R"(HKEY_LOCAL_MACHINE\Software\X\Number)",
                            {0, registry::kDword, std::string("\x01\x02\x00\x80", 4)});
  machine.registry.SetValue(R"(HKEY_LOCAL_MACHINE\Software\X\Odd)", {0, 7, "multi"});
  const auto read = [&run](const char* path, bool view64) { return RegistryText(RegRead(run, path, view64)); };
  EXPECT_EQ(read(R"(hklm\Software\X\Y)", false), "value");
  EXPECT_EQ(read(R"(HKLM\Software\X\)", false), "default");
  EXPECT_EQ(read(R"(HKLM\Software\X\Number)", false), std::to_string(static_cast<std::int32_t>(0x80000201)));
  EXPECT_EQ(read(R"(HKLM\Software\X\Only64)", true), "64");
  for (const char* path : {R"(HKLM\Y)", R"(XX\Y\Z)", R"(HKU\Software\X\Y)", R"(HKLM\Software\X\Odd)",
                           R"(HKLM\Software\X\Only64)", R"(HKLM\Software\X\None)", "", "HKLM"})
    EXPECT_FALSE(RegRead(run, path, false)) << path;
  machine.system.version.majorVersion = 5;
  machine.system.version.minorVersion = 0;  // Windows 2000 has no 64-bit view
  tessary::Run older(machine.host());
  EXPECT_FALSE(RegRead(older, R"(HKLM\Software\X\Only64)", true));
}

TEST(OpSysInfo, KnowsFamiliesAndTheShortRecord) {
  struct Case {
    std::uint32_t platform, major, minor, build;
    const char* name;
    bool xp;
  };
  for (const Case& c : {Case{2, 6, 0, 6000, "Windows Vista", true},
                        {2, 10, 0, 19041, "Windows Vista", true},
                        {2, 5, 2, 3790, "Windows Server 2003", true},
                        {2, 5, 1, 2600, "Windows XP", true},
                        {2, 5, 0, 2195, "Windows 2000", false},
                        {2, 4, 0, 1381, "Windows NT", false},
                        {1, 4, 90, 3000, "Windows Me", false},
                        {1, 4, 10, 2222, "Windows 98", false},
                        {1, 4, 0, 950, "Windows 95", false},
                        {0, 6, 1, 0, "", false}}) {
    SimulatedSystem system;
    system.version = {c.major, c.minor, c.build, c.platform, " SP 1 ", 0, 0, 128, 1};
    system.refusedSizes = {156};
    const COpSysInfo info(system);
    EXPECT_EQ(info.Platform(), c.name);
    EXPECT_EQ(info.IsWinXP(), c.xp) << c.name;
    EXPECT_EQ(info.CSDVersion(), "SP 1");
    EXPECT_EQ(info.ProductTypeName(), "Unknown") << "the short record has no product type";
  }
}

TEST(Util, GuidsComponentsAndOrder) {
  SimulatedMachine machine;
  tessary::Run run(machine.host());
  EXPECT_EQ(NewGuid(run), "00000001-0002-0003-0405-060708090A0B");
  machine.system.guidFailure = {5, "no"};
  machine.components.components["Odd.Thing"] = {-2147024891, "Access is denied."};
  const auto text = [](const auto& act) {
    try {
      act();
    } catch (const Error& error) {
      return std::to_string(error.number()) + " " + error.description();
    }
    return std::string("nothing raised");
  };
  EXPECT_EQ(text([&] { NewGuid(run); }),
            "1000 Error generating guid: Error generating guid. Function did not return S_OK");
  EXPECT_EQ(text([&] { CreateObjectChecked(run, "No.Thing"); }), "429 Error creating object: No.Thing");
  EXPECT_EQ(text([&] { CreateObjectChecked(run, "Odd.Thing"); }),
            "-2147024891 Error creating object: Odd.Thing. Error -2147024891 (0x80070005): Access is denied.");

  Dictionary fonts;
  for (const auto& [key, value] : {std::pair{"z.ttf", "Alpha"}, {"a.ttf", "beta"}, {"m.ttf", "Beta"}})
    fonts.Add(key, value);
  const auto keys = [&fonts] {
    std::string joined;
    for (const auto& [key, value] : fonts) joined += key.substr(0, 1);
    return joined;
  };
  SortCollection(fonts, "");
  EXPECT_EQ(keys(), "zma");
  SortCollection(fonts, std::nullopt);
  EXPECT_EQ(keys(), "amz");
  for (const auto& [key, left] : {std::pair{"a.ttf", "3"}, {"m.ttf", "1"}, {"z.ttf", "2"}}) {
    auto place = NewDictionary(), item = NewDictionary();
    place->Set("left", left);
    item->Set("place", place);
    fonts.Set(key, item);
  }
  SortCollection(fonts, "place.left");
  EXPECT_EQ(keys(), "mza");
}

TEST(LaunchProcess, WaitsToItsLimitAndNoLonger) {
  SimulatedMachine machine;
  tessary::Run run(machine.host());
  const Command command = machine.processes.ProgramCommand(R"(C:\x.exe)", {"a"});
  machine.processes.Expect("*").Exits(7, 1230);
  LaunchResult result = LaunchProcess(run, command, 5, R"(C:\)");
  EXPECT_EQ(result.exitCode, 7);
  EXPECT_EQ(machine.clock.Ticks(), 1230) << "its end is no later seen than it comes";
  EXPECT_GT(machine.desktop.pumped, 20);

  machine.processes.Expect("*").NeverEnds();
  const std::int64_t start = machine.clock.Ticks();
  result = LaunchProcess(run, command, 5, R"(C:\)");
  EXPECT_TRUE(result.stillRunning);
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_NEAR(static_cast<double>(machine.clock.Ticks() - start), 5500, 600);

  for (const std::int32_t limit : {0, -5}) {
    machine.processes.Expect("*").NeverEnds();
    const std::int64_t before = machine.clock.Ticks();
    EXPECT_TRUE(LaunchProcess(run, command, limit, "").stillRunning);
    EXPECT_LE(machine.clock.Ticks() - before, 50) << limit;
  }
}

}  // namespace
}  // namespace tessary
