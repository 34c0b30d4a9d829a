#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "postscript/modMerge.h"
#include "postscript/modSuperimpose.h"
#include "system/Error.h"
#include "tests/support/Golden.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

const std::string kBase = R"(C:\Temp\x)", kEps = kBase + "_si_#.eps";

Dictionary Superimpose(const std::string& value) {
  Dictionary settings;
  settings.Set("superimpose", value);
  return settings;
}

/// The pages of a document and the entries under them: "1:1 3:2".
std::string Selected(const std::string& value, std::int16_t pageCount) {
  Dictionary settings = Superimpose(value);
  std::string text;
  for (const auto& [page, number] : MakeSuperimposePageMap(settings, "#", pageCount))
    if (!number.AsText()->empty()) text += (text.empty() ? "" : " ") + page + ":" + *number.AsText();
  return text;
}

TEST(Superimpose, Places) {
  struct Case {
    const char* value;
    std::int16_t pages;
    const char* selected;
  };
  const std::string all = "1:1 2:1 3:1 4:1 5:1";
  for (const Case& c : {Case{"a.pdf", 5, all.c_str()},
                        {"a.pdf<>", 5, all.c_str()},
                        {"a.pdf< >", 5, all.c_str()},
                        {"a<1>b<2->", 3, "1:1 2:2 3:2"},
                        {"a<1>b", 2, "1:2 2:2"},
                        {"a<L1>", 5, "5:1"},
                        {"a<l2-3>", 5, "3:1 4:1"},
                        {"a<O>", 5, "1:1 3:1 5:1"},
                        {"a<o>", 5, "1:1 3:1 5:1"},
                        {"a<E2->", 5, "2:1 4:1"},
                        {"a<O2->", 5, "3:1 5:1"},
                        {"a<LO>", 4, "2:1 4:1"},
                        {"a<Fo>", 5, all.c_str()},
                        {"a<OE2-3>", 5, "2:1 3:1"},
                        {"a< L O 1 - 2 >", 5, "5:1"},
                        {"a<3>", 2, "3:1"},
                        {"a<L3>", 2, "0:1"},
                        {"a<0>", 5, all.c_str()},
                        {"a<0-0>", 2, "1:1 2:1"},
                        {"a<->", 2, "1:1 2:1"},
                        {"a<-2>", 5, "1:1 2:1"},
                        {"a<4-2>", 5, ""},
                        {"a<2-3-4x>", 5, "2:1 3:1"},
                        {"a<x>", 2, "1:1 2:1"},
                        {"a<1>", 0, "1:1"},
                        {"a", 0, ""},
                        {"a<1<2>", 3, "1:1"},
                        {"<1>", 2, "1:1"}})
    EXPECT_EQ(Selected(c.value, c.pages), c.selected) << c.value;
  EXPECT_EQ(Selected(">>a<1>b<2", 3), "1:1 2:2") << "empty parts make no entries; an open bracket does";
  EXPECT_THROW(Selected("a<32768>", 1), Error);
  EXPECT_THROW(Selected("a<1-99999>", 1), Error);
  const std::string far = Selected("a<1-32767>b<L32767>", 3);
  EXPECT_TRUE(far.ends_with("32767:1 -32763:2")) << far.substr(far.size() - 40);
}

TEST(Superimpose, SeedsOfTheFuzzer) {
  int replayed = 0;
  for (const auto& file : std::filesystem::directory_iterator(TESSARY_ROOT_DIR "/fuzz/seeds/superimpose")) {
    std::ifstream stream(file.path(), std::ios::binary);
    const std::string value{std::istreambuf_iterator<char>(stream), {}};
    for (const int pages : {-1, 0, 3, 32767}) {
      try {
        Selected(value, static_cast<std::int16_t>(pages));
      } catch (const Error& error) {
        EXPECT_EQ(error.number(), errors::kOverflow) << file.path();
      }
    }
    ++replayed;
  }
  EXPECT_GT(replayed, 3);
}

TEST(Superimpose, RequestedByMoreThanBlanksOnlyForTheMerge) {
  Dictionary settings = Superimpose(" ");
  settings.Set("mergefile", " ");
  EXPECT_TRUE(IsSuperimposeRequested(settings));
  EXPECT_FALSE(IsMergeRequested(settings));
  settings.Set("superimpose", "");
  settings.Set("mergefile", " a.pdf");
  EXPECT_FALSE(IsSuperimposeRequested(settings));
  EXPECT_TRUE(IsMergeRequested(settings));
}

struct SuperimposeFilesTest : testing::Test {
  /// Puts a Ghostscript of this version on the machine.
  void Install(const std::string& version) {
    machine.registry.Set(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Tessary\PDF Printer\Settings\ghostscriptfolder)",
                         R"(D:\gs)");
    machine.files.Put(R"(D:\gs\gswin32c.exe)", "c:/gs/gs" + version + "/lib");
  }
  /// Expects the run for an entry, which leaves `page`.
  ScriptedChild& ExpectRun(const std::string& number, const std::string& page, bool translated) {
    return machine.processes
        .Expect(R"(cmd /c ""D:\gs\gswin32c.exe" @")" + kBase + "_si_param_" + number + ".gs" +
                (translated ? ".run\"" : "\""))
        .Writes(kBase + "_si_full_" + number + ".eps", page)
        .Writes(kBase + "_si_param_" + number + ".out", "said");
  }
  std::string Raised(const std::string& value) {
    Dictionary settings = Superimpose(value);
    try {
      CreateSuperimposeEpsFiles(run, settings, kEps, kBase + "_si_full_#.eps", kBase + "_si_param_#.gs",
                                kBase + "_si_param_#.out");
    } catch (const Error& error) {
      return std::to_string(error.number()) + " " + error.description();
    }
    return "nothing raised";
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
};

TEST_F(SuperimposeFilesTest, EpsWriteMakesTheText) {
  Install("8.54");
  machine.files.Put(R"(D:\letter head.pdf)", "whatever");
  ExpectRun("1", "%!PS\r\nno page", false);
  ExpectRun("2", "%!PS\r\nfirst\xFF\nshowpage\r\nsecond showpage", false);
  EXPECT_EQ(Raised(R"(D:\letter head.pdf<1>D:\letter head.pdf<2>D:\none.pdf<3>D:\never.pdf)"),
            R"(1011 Background PDF 'D:\none.pdf' does not exist.)");
  EXPECT_EQ(machine.files.Text(kBase + "_si_param_2.gs"),
            "-q\r\n-dSAFER\r\n-dNOPAUSE\r\n-dBATCH\r\n-sstdout#\"C:\\Temp\\x_si_param_2.out\"\r\n"
            "-sDEVICE#epswrite\r\n-r14400\r\n-sOutputFile#\"C:\\Temp\\x_si_full_2.eps\"\r\n"
            "\"D:\\letter head.pdf\"");
  EXPECT_EQ(machine.files.Text(kBase + "_si_1.eps"), "%!PS\r\nno page") << "without a showpage pasted whole";
  EXPECT_EQ(machine.files.Text(kBase + "_si_2.eps"), "%!PS\r\nfirst\xFF\n");
  EXPECT_FALSE(machine.files.Exists(kBase + "_si_param_2.out"));
  EXPECT_EQ(run.job.ProgressFile, kBase + "_si_param_3.out");
}

TEST_F(SuperimposeFilesTest, Eps2WriteIsWrapped) {
  Install("9.27");
  machine.files.Put(R"(D:\a.pdf)", "%PDF-1.4");
  ExpectRun("1", "/showpage load\npage", true);
  EXPECT_EQ(Raised(R"(D:\a.pdf)"), "nothing raised");
  EXPECT_NE(machine.files.Text(kBase + "_si_param_1.gs").find("-sDEVICE#eps2write\r\n-r600\r\n"),
            std::string::npos);
  EXPECT_EQ(machine.files.Text(kBase + "_si_1.eps"),
            "save userdict /showpage {} put\r\n/showpage load\npage\r\nrestore\r\n");
  EXPECT_EQ(run.ghostscript.nextRun.prelude, "");
}

TEST_F(SuperimposeFilesTest, NewerVersionsDrawThePdf) {
  Install("10.00.0");
  machine.files.Put(R"(D:\a (1).pdf)", "junk%PDF-1.4");
  const std::string inner = "<</Type/XObject/Group 4 0 R>>endobj\n", behind = ">>\nendobj\n<</Group 1>>";
  ExpectRun("1", inner + "<</Type/Page/MediaBox [0 0 1 1]\n/Group 4 0 R\n" + behind, true);
  ExpectRun("2", inner + "<</Type/Page/MediaBox [0 0 1 1]\n" + behind, true);
  EXPECT_EQ(Raised(R"(D:\a (1).pdf<1>D:\a (1).pdf<2>)"), "nothing raised");
  ExpectGolden("underlay.gs", machine.files.Text(kBase + "_si_param_1.gs"));
  ExpectGolden("underlay.ps", machine.files.Text(kBase + "_si_0.eps"));
  EXPECT_EQ(machine.files.Text(kBase + "_si_2.eps"),
            "systemdict begin globaldict /TessaryUnderlay get begin 2 Show end end\r\n");
  EXPECT_EQ(machine.files.Text(kBase + "_si_full_1.eps"),
            inner + "<</Type/Page/MediaBox [0 0 1 1]\n/group 4 0 R\n" + behind);
  EXPECT_EQ(machine.files.Text(kBase + "_si_full_2.eps"), inner + "<</Type/Page/MediaBox [0 0 1 1]\n" + behind);
  EXPECT_EQ(run.ghostscript.nextRun.prelude, kBase + "_si_0.eps");
  EXPECT_EQ(run.ghostscript.nextRun.readableFiles.size(), 2u);
}

TEST_F(SuperimposeFilesTest, UnusableBackgroundsEndTheJob) {
  Install("10.00.0");
  machine.files.Put(R"(D:\a.ps)", "%!PS");
  machine.files.Put(R"(D:\a.pdf)", "%PDF-1.4");
  EXPECT_EQ(Raised(R"(D:\a.ps)"), R"(1011 Background PDF 'D:\a.ps' cannot be used. It is no PDF.)");
  EXPECT_EQ(Raised("<1>"), "1011 Background PDF '' does not exist.");
  ExpectRun("1", "", true).Exits(1);
  EXPECT_EQ(
      Raised(R"(D:\a.pdf)"),
      "1007 Background PDF 'D:\\a.pdf' cannot be used. An error occured while running Ghostscript\r\n\r\nsaid");
  EXPECT_EQ(run.ghostscript.nextRun.prelude, "");
}

}  // namespace
}  // namespace tessary
