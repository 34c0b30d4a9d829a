#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "postscript/modPostScript.h"
#include "system/Blocks.h"
#include "system/Error.h"
#include "system/modUtil.h"
#include "tests/support/Faults.h"
#include "tests/support/PatchedByLines.h"
#include "tests/support/ShortReads.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

using namespace std::string_literals;

const std::string kJob = R"(C:\a.ps)", kPatched = R"(C:\Temp\a_patched.ps)", kLog = R"(C:\Temp\a.log)";
const std::string kEpsPattern = R"(C:\Temp\a_si_#.eps)";
const std::string kUnderlay = "gsave stamp grestore\r\n\r\n";

struct Patching {
  SimulatedMachine machine;
  Dictionary settings;

  Patching() {
    machine.files.PutFolder(R"(C:\Temp)");
    settings.Set("title", "T");
    settings.Set("author", "A");
  }
  void StampBelow() {
    settings.Set("watermarktext", "DRAFT");
    settings.Set("watermarklayer", "Bottom");
  }
  std::string Patch(const std::string& job) { return Patch(job, machine.files); }
  std::string Patch(const std::string& job, Files& files) {
    machine.files.Put(kJob, job);
    Host host = WithFiles(machine.host(), files);
    tessary::Run run(host);
    run.log.fileName = kLog;
    PatchPostScriptFile(run, settings, kEpsPattern, kPatched, kJob);
    return machine.files.Text(kPatched);
  }
  std::int32_t Raised(const std::string& job, Files& files) {
    try {
      Patch(job, files);
    } catch (const Error& error) {
      return error.number();
    }
    return 0;
  }
};

TEST(Patcher, PutsTheSettingsIntoTheHead) {
  struct Case {
    std::string job, patched;
  };
  for (const Case& c :
       {Case{"", ""},
        {"%!PS", "%!PS\r\n"},
        {"\r\n", "\r\n"},
        {"a\rb\r\r\nc\n\rd\r\n", "a\r\nb\r\n\r\nc\n\r\nd\r\n"},
        {"%!PS\r%%Title: (x)\r\n%%For:y\r%%Title:z", "%!PS\r\n%%Title: T\r\n%%For: A\r\n%%Title: T\r\n"},
        {"%%title: x\r%%FOR: y\r%%Titles: z\r %%For: w\r",
         "%%title: x\r\n%%FOR: y\r\n%%Titles: z\r\n %%For: w\r\n"},
        {"%%Pages: 3\r%%PageOrder: Ascend\r%%For: x\r", "%%Pages: 3\r\n%%PageOrder: Ascend\r\n%%For: A\r\n"},
        {"%%Page: 1 1\r%%Title: x\r%%For: y\r", "%%Page: 1 1\r\n%%Title: x\r\n%%For: y\r\n"},
        {"%!PS\n%%Title: x\n%%Page: 1 1\n", "%!PS\n%%Title: x\n%%Page: 1 1\n\r\n"},
        {"%%Title: x\ny\0\rz\0\xFF\x1A\r"s, "%%Title: T\r\nz\0\xFF\x1A\r\n"s}})
    EXPECT_EQ(Patching().Patch(c.job), c.patched);
}

TEST(Patcher, ASettingIsDataAndNoProgram) {
  Patching patching;
  for (const auto& [title, line] : {std::pair<std::string, std::string>{"", ""},
                                    {"a\r\nb\nc\fd\0e"s, "a  b c d e"},
                                    {"(\xC3\x9C\\) \xE2\x82\xAC \xE5\xA0\xB1", "(\xDC\\) \x80 ?"}}) {
    patching.settings.Set("title", title);
    EXPECT_EQ(patching.Patch("%%Title: x\r"), "%%Title: " + line + "\r\n");
  }
  patching.machine.host().codePage = CodePage::Utf8;
  patching.settings.Set("title", "\xE5\xA0\xB1");
  EXPECT_EQ(patching.Patch("%%Title: x\r"), "%%Title: \xE5\xA0\xB1\r\n");
}

TEST(Patcher, LaysTheBackgroundAndTheStampBehindThePageLine) {
  Patching patching;
  patching.StampBelow();
  EXPECT_EQ(patching.Patch("%!PS\r%%Page: 1 1\rx\r%%Page: 2 2"),
            "%!PS\r\n%%Page: 1 1\r\n" + kUnderlay + "x\r\n%%Page: 2 2\r\n" + kUnderlay);

  patching.settings.Set("superimpose", R"(C:\b.pdf<1>)");
  patching.machine.files.Put(R"(C:\Temp\a_si_1.eps)", "eps\n");
  EXPECT_EQ(patching.Patch("%%Page: 1 1\rx\r%%Page: 2 2\r"),
            "%%Page: 1 1\r\neps\n" + kUnderlay + "x\r\n%%Page: 2 2\r\n" + kUnderlay);

  patching.settings.Set("watermarklayer", "top");
  EXPECT_EQ(patching.Patch("%%Page: 1 1\rx\r%%Page: 2 2\r"), "%%Page: 1 1\r\neps\n\r\nx\r\n%%Page: 2 2\r\n");
  patching.machine.files.Put(R"(C:\Temp\a_si_1.eps)", "");
  EXPECT_EQ(patching.Patch("%%Page: 1 1\rx\r"), "%%Page: 1 1\r\nx\r\n");
  patching.machine.files.Remove(R"(C:\Temp\a_si_1.eps)");
  EXPECT_EQ(patching.Raised("%%Page: 1 1\rx\r", patching.machine.files), failures::kFileNotFound);

  std::string told;
  const std::string log = patching.machine.files.Text(kLog);
  for (std::size_t at = 0; (at = log.find(": ", log.find("PC, ann", at))) < log.size();
       at = log.find("\r\n", at))
    told += log.substr(at + 2, log.find("\r\n", at) - at - 2) + "\n";
  EXPECT_TRUE(
      told.ends_with("Begin PatchPostScriptFile\n"
                     "GetPageCount: C:\\a.ps\n"
                     "MakeSuperimposePageMap: C:\\Temp\\a_si_#.eps\n"
                     "Open: C:\\a.ps\n"
                     "Open: C:\\Temp\\a_patched.ps\n"))
      << told;
}

// Reads of few bytes put the borders of blocks everywhere; the long texts lie across those of full blocks.
TEST(Patcher, SeesLinesThroughAllBordersOfBlocks) {
  std::vector<std::string> jobs;
  for (const auto& entry : std::filesystem::directory_iterator(TESSARY_ROOT_DIR "/fuzz/seeds/dsc")) {
    std::ifstream file(entry.path(), std::ios::binary);
    jobs.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  ASSERT_FALSE(jobs.empty());
  const std::string tail = "\r\n%%Title: x\r%%For: y\r\r\n\n%%Page: 1 1\r\n%%Title: z\r%%Page: 2 2";
  for (std::size_t size = kBlockSize - tail.size() - 10; size < kBlockSize + 10; ++size)
    jobs.push_back(std::string(size, 'x') + tail);
  jobs.push_back("%%Title: " + std::string(3 * kBlockSize, '%') + tail + std::string(2 * kBlockSize, '\r'));

  Patching patching;
  patching.StampBelow();
  for (const std::string& job : jobs) {
    const std::string expected = PatchedByLines(job, kUnderlay);
    for (const std::size_t most :
         {std::size_t{1}, std::size_t{2}, std::size_t{7}, std::size_t{10}, 2 * kBlockSize}) {
      if (most < kBlockSize && job.size() > 10'000) continue;
      ShortReads files(patching.machine.files, most);
      EXPECT_TRUE(patching.Patch(job, files) == expected) << job.substr(0, 2000) << "\nin reads of " << most;
    }
  }
}

TEST(Patcher, CountsPagesUpTo32767) {
  SimulatedMachine machine;
  tessary::Run run(machine.host());
  machine.files.Put(kJob, "%%Page: 1 1\r\n%%Page:\r%%PAGE: 2\r %%Page: 3\n%%Page: 4\r%%Pages: 9\r%%Page:");
  EXPECT_EQ(GetPageCount(run, kJob), 3);
  EXPECT_THROW(GetPageCount(run, R"(C:\none.ps)"), Error);

  std::string pages;
  for (int page = 1; page <= 32767; ++page) pages += "%%Page: x\r\n";
  for (const char* superimpose : {"", "b.pdf<2>"}) {
    Patching patching;
    patching.settings.Set("superimpose", superimpose);
    patching.machine.files.Put(R"(C:\Temp\a_si_1.eps)", "eps");
    EXPECT_EQ(patching.Raised(pages, patching.machine.files), 0);
    EXPECT_EQ(patching.Raised(pages + "%%Page: x", patching.machine.files), errors::kOverflow);
  }
}

TEST(Patcher, AFullDiskEndsTheJob) {
  const std::string job = "%!PS\r\n" + std::string(3 * kBlockSize, 'x');
  int failed = 0;
  for (int n = 1, last = 1; n <= last; ++n) {
    Patching patching;
    FaultyFiles files(patching.machine.files, n);
    failed += patching.Raised(job, files) == failures::kDiskFull;
    last = std::max(last, files.calls());
    EXPECT_EQ(patching.machine.files.OpenHandles(), 0);
  }
  EXPECT_GE(failed, 4) << "opening, two writes and closing";
  Patching full;
  full.machine.files.freeBytes = 1'000'000;
  EXPECT_EQ(full.Raised(std::string(4'000'000, 'x'), full.machine.files), failures::kDiskFull);
}

// Lines of 16 bytes in reads of 16 bytes, the border in the middle: each piece but the first ends one line.
TEST(Patcher, YieldsAtEveryLineButEachThousandth) {
  constexpr int kLogRecords = 5;  // the queue runs with each of them, too
  for (const auto& [lines, yields] : {std::pair{999, 1000}, {1000, 1000}, {1001, 1001}, {2001, 2000}}) {
    Patching patching;
    std::string job;
    for (int line = 0; line < lines; ++line) job += "0123456789abcd\r\n";
    patching.machine.desktop.pumped = 0;
    ShortReads files(patching.machine.files, 16, [&] { patching.machine.clock.SleepFor(10); });
    patching.Patch(job, files);
    EXPECT_EQ(patching.machine.desktop.pumped - kLogRecords, yields) << lines;
  }
}

TEST(DoEvents, LetsTheQueueRestFor10Milliseconds) {
  SimulatedMachine machine;
  tessary::Run run(machine.host());
  for (const auto& [wait, pumped] : {std::pair{0, 1}, {0, 1}, {9, 1}, {1, 2}, {0, 2}, {30, 3}}) {
    machine.clock.SleepFor(wait);
    DoEvents(run);
    EXPECT_EQ(machine.desktop.pumped, pumped);
  }
}

}  // namespace
}  // namespace tessary
