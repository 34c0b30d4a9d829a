// PDF documents on the simulated machine, with a scripted Ghostscript that counts their pages.
#include <gtest/gtest.h>
#include <tuple>

#include "monitor/DocumentRange.h"
#include "monitor/SpoolJob.h"
#include "system/Error.h"
#include "tests/support/Faults.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

using namespace std::string_literals;

const std::string kIn = R"(C:\in.pdf)", kSpool = R"(C:\Temp\a (b.ps)";
const std::string kPdf = "%PDF-1.7\n1 0 obj\n\0\r\n%%EOF\n"s;
const std::string kPjl = "\x1b%-12345X@PJL ENTER LANGUAGE=PDF\r\n", kPjlEnd = "\4\x1b%-12345X";

struct PdfDocumentTest : testing::Test {
  PdfDocumentTest() {
    const std::string setting = R"(HKEY_LOCAL_MACHINE\SOFTWARE\Tessary\PDF Printer\Settings\ghostscriptfolder)";
    machine.registry.Set(setting, R"(C:\gs)");
    machine.files.Put(R"(C:\gs\gswin32c.exe)", "program");
    machine.ghostscripts.answer = std::string("10.00.0");
  }
  /// Expects Ghostscript to be asked for the pages; it `says` this on standard output and error.
  void ExpectCount(const std::string& says, const std::string& complaint = "") {
    machine.processes.Expect("*.ps.count.run*")
        .Does([this, says, complaint] {
          asked = machine.files.Text(kSpool + ".count.run");
          machine.files.Put(kSpool + ".count.out", says);
          machine.files.Put(kSpool + ".count.run.err", complaint);
        })
        .Exits(0);
  }
  std::string Spool(const std::string& document, const DocumentTicket& ticket = {}) {
    machine.files.Put(kIn, document);
    SpooledJob job(run, kSpool);
    const std::string problem = SpoolJob(run, kIn, job, ticket);
    spooled = machine.files.Exists(kSpool) ? machine.files.Text(kSpool) : "";
    drawn = machine.files.Exists(kSpool + ".pdf") ? machine.files.Text(kSpool + ".pdf") : "";
    return problem;
  }
  /// The lines of the spooled job behind its program.
  std::string Body() {
    const std::size_t end = spooled.find("\r\nend\r\n");
    return end == std::string::npos ? spooled : spooled.substr(end + 7);
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  std::string asked, spooled, drawn;
};

TEST_F(PdfDocumentTest, BecomesAJobThatDrawsIt) {
  // The path as a string in which nothing can be taken for code.
  const std::string open = "<433A5C54656D705C612028622E70732E706466> TessaryOpen\r\n";
  ExpectCount("odd words\r\nPages: 7\r\n**** warning\r\nPages: 2\r\n");
  ASSERT_EQ(Spool(kPdf, {"a\r\n%%Page: 1 1\rquit", "b\nc", 2}), "");
  EXPECT_NE(asked.find("--permit-file-read=" + kSpool + ".pdf\""), std::string::npos) << asked;
  EXPECT_TRUE(
      spooled.starts_with("%!PS-Adobe-3.0\r\n%%Title: a  %%Page: 1 1 quit\r\n%%For: b c\r\n"
                          "%%Pages: 4\r\n%%EndComments\r\n"))
      << spooled;
  EXPECT_EQ(Body(),
            open +
                "1 TessarySize\r\n%%Page: 1 1\r\nTessaryDraw\r\n2 TessarySize\r\n%%Page: 2 2\r\nTessaryDraw\r\n"
                "1 TessarySize\r\n%%Page: 1 3\r\nTessaryDraw\r\n2 TessarySize\r\n%%Page: 2 4\r\nTessaryDraw\r\n"
                "%%Trailer\r\n4 TessaryClose\r\n%%EOF\r\n");
  EXPECT_EQ(drawn, kPdf);
  EXPECT_TRUE(machine.files.Names(R"(C:\Temp\)").empty()) << "all goes with the job";
}

TEST_F(PdfDocumentTest, SaysWhyThereIsNoJob) {
  const std::string locked = "   **** This file requires a password for access.\n";
  for (const auto& [says, complaint, problem] : std::vector<std::tuple<std::string, std::string, std::string>>{
           {"\nPages: 0\n", locked, "needs a password"},
           {"**** Error\n\nPages: 0\n", "", "is damaged: there is no page that can be read"},
           {"\nPages: -3\n", "", "is damaged: there is no page that can be read"},
           {"", "", "is damaged: there is no page that can be read"},
           {"\nPages: 16384\n", "", "has more than 32767 pages"},
           {"\nPages: 99999999999999\n", "", "has more than 32767 pages"}}) {
    ExpectCount(says, complaint);
    EXPECT_EQ(Spool(kPdf, {"t", "u", 2}), problem) << says;
    EXPECT_EQ(spooled, "");
    EXPECT_TRUE(machine.files.Names(R"(C:\Temp\)").empty());
  }
  EXPECT_EQ(Spool("%PDF-1.7\nstartxref\n9\n%%EOF\n" + std::string(5000, 'x')),
            "is cut off: its end is missing");
}

// Copied from a file, or left where it was received: what stands around the document goes.
TEST_F(PdfDocumentTest, OnlyTheDocumentIsKept) {
  for (const auto& [sent, kept] :
       std::vector<std::pair<std::string, std::string>>{{kPdf, kPdf},
                                                        {kPjl + kPdf + kPjlEnd, kPdf},
                                                        {"\n\n" + kPdf, kPdf},
                                                        {"mail\n" + kPdf, "mail\n" + kPdf}}) {
    ExpectCount("\nPages: 1\n");
    EXPECT_EQ(Spool(sent), "");
    EXPECT_EQ(drawn, kept);

    ExpectCount("\nPages: 1\n");
    SpooledJob job(run, kSpool);
    auto received = machine.files.Open(job.DocumentPath(), OpenMode::Create);
    ASSERT_FALSE(received.value->Write(sent));
    EXPECT_EQ(SpoolReceived(run, std::move(received.value), job, {"", "", 3}), "");
    EXPECT_EQ(job.Pages(), 3);
    EXPECT_EQ(machine.files.Text(job.DocumentPath()), kept);
  }
  SpooledJob job(run, kSpool);
  auto received = machine.files.Open(job.DocumentPath(), OpenMode::Create);
  ASSERT_FALSE(received.value->Write("%!\nshowpage\n"));
  EXPECT_EQ(SpoolReceived(run, std::move(received.value), job, {}), "");
  EXPECT_FALSE(machine.files.Exists(job.DocumentPath())) << "a job may read what lies there";
}

TEST_F(PdfDocumentTest, IsToldFromPostScriptByContent) {
  for (const auto& [document, isPdf] : std::vector<std::pair<std::string, bool>>{
           {"%PDF-1.4\n", true},
           {std::string(1000, 'x') + "%PDF-1.4\n", true},
           {std::string(1024, 'x') + "%PDF-1.4\n", false},
           {kPjl + std::string(1000, 'x') + "%PDF-1.4\n", true},
           {"%!PS-Adobe-3.0\n%PDF-1.4\n", false},
           {"\xC5\xD0\xD3\xC6\x1e\0\0\0\5\0\0\0"s + std::string(18, '\0') + "%!PS\n%PDF-1.4", false}}) {
    machine.files.Put(kIn, document);
    const auto file = machine.files.Open(kIn, OpenMode::Read);
    EXPECT_EQ(FindDocument(*file.value).isPdf, isPdf) << document;
  }
}

TEST_F(PdfDocumentTest, EveryFullDiskIsTold) {
  machine.files.Put(kIn, kPjl + kPdf);
  for (int failing = 1, last = 1; failing <= last; ++failing) {
    FaultyFiles files(machine.files, failing);
    Host host = WithFiles(machine.host(), files);
    tessary::Run faulty(host);
    machine.processes.Expect("*.ps.count.run*")
        .Writes(kSpool + ".count.out", "\nPages: 1\n")
        .Exits(0)
        .Repeats();
    SpooledJob job(faulty, kSpool);
    std::string problem;
    try {
      problem = SpoolJob(faulty, kIn, job, {});
    } catch (const Error& error) {
      problem = error.description();
    }
    last = files.calls();
    EXPECT_NE(problem.find("Disk full"), std::string::npos) << failing << " of " << last << ": " << problem;
  }
  EXPECT_TRUE(machine.files.Names(R"(C:\Temp\)").empty());
}

}  // namespace
}  // namespace tessary
