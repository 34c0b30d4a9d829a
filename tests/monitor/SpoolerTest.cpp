// Documents in the form in which they are handed to `gui`. The expected texts show the inserted program as
// "<P>" and data as "<D…>" with the bytes that a filter would read from it.
#include <array>
#include <gtest/gtest.h>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "monitor/Spooler.h"
#include "system/Blocks.h"
#include "tests/support/Faults.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

using namespace std::string_literals;

const std::string kIn = R"(C:\in.ps)", kOut = R"(C:\out.ps)";

/// Spools `document`; gives the problem, or an empty text with the result in kOut.
std::string Spool(SimulatedMachine& machine, Files& files, const std::string& document, int copies = 1,
                  std::int32_t announced = -1) {
  machine.files.Put(kIn, document);
  const auto input = files.Open(kIn, OpenMode::Read);
  const auto output = files.Open(kOut, OpenMode::Create);
  if (!output.ok()) return output.failure.text;
  const DocumentRange range = FindDocument(*input.value);
  if (!range.problem.empty()) return range.problem;
  std::int32_t pages = 0;
  const std::string problem = SpoolDocument(*input.value, range, *output.value, copies, pages);
  if (announced >= 0) {
    EXPECT_EQ(pages, announced);
  }
  return problem;
}

std::string Spooled(const std::string& document) {
  SimulatedMachine machine;
  EXPECT_EQ(Spool(machine, machine.files, document), "");
  return machine.files.Text(kOut);
}

std::string Problem(const std::string& document) {
  SimulatedMachine machine;
  return Spool(machine, machine.files, document);
}

/// What Ghostscript's filter makes of `code`, which ends in "~>".
std::string Decoded(std::string_view code) {
  std::string bytes;
  std::vector<std::uint32_t> digits;
  const auto put = [&](std::size_t count) {
    std::uint32_t value = 0;
    digits.resize(5, 84);
    for (const std::uint32_t digit : digits) value = value * 85 + digit;
    for (std::size_t i = 0; i < count; ++i) bytes += static_cast<char>(value >> (24 - 8 * i));
    digits.clear();
  };
  for (const char c : code.substr(0, code.find('~'))) {
    if (c == 'z') bytes += "\0\0\0\0"s;
    if (c >= '!' && c <= 'u') digits.push_back(static_cast<std::uint32_t>(c - '!'));
    if (digits.size() == 5) put(4);
  }
  if (!digits.empty()) put(digits.size() - 1);
  return bytes;
}

/// `spooled` without its program, and its data read and put between two marks.
std::string Restored(std::string spooled, const std::string& program, const std::string& from,
                     const std::string& to) {
  static const std::string inserted = Spooled("%!\n").substr(4), data = "TessaryData\r\n";
  if (const std::size_t at = spooled.find(inserted); at != std::string::npos)
    spooled.replace(at, inserted.size(), program);
  for (std::size_t at = 0; (at = spooled.find(data, at)) != std::string::npos;) {
    const std::size_t code = at + data.size(), end = spooled.find("~>\r\n", code) + 4;
    spooled.replace(at, end - at, from + Decoded(std::string_view(spooled).substr(code, end - code)) + to);
  }
  return spooled;
}

/// `text` with LF for every line end.
std::string WithLf(const std::string& text) {
  std::string lines;
  for (std::size_t at = 0; at < text.size(); ++at)
    if (text[at] == '\r')
      lines += '\n';
    else if (text[at] != '\n' || at == 0 || text[at - 1] != '\r')
      lines += text[at];
  return lines;
}

struct Case {
  std::string document, expected;
};

TEST(Spooler, BringsDocumentsIntoTheFormOfADriver) {
  const std::string escape = "\x1b%-12345X", job = "%!\nA\n", spooledJob = "%!\r\n<P>A\r\n";
  const std::vector<Case> cases = {
      // Line ends of clean text; where they are not all alike, some are data.
      {"%!\nA\n\nB\n", "%!\r\n<P>A\r\n\r\nB\r\n"},
      {"%!\rA\r\rB", "%!\r\n<P>A\r\n\r\nB"},
      {"%!\r\nA\r\nB\r\n", "%!\r\n<P>A\r\nB\r\n"},
      {"%!\nA\r\nB\n", "%!\r\n<P><DA\r\nB\n>"},
      {"%!\nA\n\r", "%!\r\n<P><DA\n\r>"},
      // The head ends with its last comment.
      {"A\n%!\n", "<P>A\r\n%!\r\n"},
      {"%!\n%%Title: \xfc\n\n%%EndComments\n% B\nC\n",
       "%!\r\n%%Title: \xfc\r\n\r\n%%EndComments\r\n<P>% B\r\nC\r\n"},
      {"%!\n%%Page: 1 1\nA\n", "%!\r\n<P>%%Page: 1 1\r\nA\r\n"},
      {"%!\n%%BeginProlog\nA\n", "%!\r\n<P>%%BeginProlog\r\nA\r\n"},
      // Clean text holds letters of other code pages in comments alone.
      {"%!\nA\n% \xfc\nB\n", "%!\r\n<P>A\r\n% \xfc\r\nB\r\n"},
      {"%!\nA\n% \x01\nB\n", "%!\r\n<P><DA\n% \x01\nB\n>"},
      {"%!\n(\xfc)\n", "%!\r\n<P><D(\xfc)\n>"},
      // Each page is taken for itself, and its comment stays a line.
      {"%!\nA\n%%Page: 1 1\n\r\n\0\r\0%%\n%%Pages: 2\n%%Page: 2 2\nB\n"s,
       "%!\r\n<P>A\r\n%%Page: 1 1\r\n<D\r\n\0\r\0%%\n%%Pages: 2\n>%%Page: 2 2\r\nB\r\n"s},
      {"%!\n\0\0\0\0\0\n%%Page: 2 2"s, "%!\r\n<P><D\0\0\0\0\0\n>%%Page: 2 2"s},
      {"%!\n\x7f\n%%BeginDocument: a\n%%Page: 1 1\n%%EndDocument\n%%Page: 1 1\nA\n",
       "%!\r\n<P><D\x7f\n%%BeginDocument: a\n%%Page: 1 1\n%%EndDocument\n>%%Page: 1 1\r\nA\r\n"},
      // What stands around the document.
      {" \r\n\n" + job, spooledJob},
      {"\4" + job + "\4", spooledJob},
      {escape + "@PJL JOB\r\n@PJL ENTER LANGUAGE=POSTSCRIPT\r\n" + job + "\4" + escape + "@PJL EOJ\r\n" +
           escape,
       spooledJob},
      {escape + job + escape + " \r\n", spooledJob},
      {"%!\n(\4)\n", "%!\r\n<P><D(\4)\n>"},
      {"\xC5\xD0\xD3\xC6\x1e\0\0\0\5\0\0\0"s + std::string(18, '\0') + job + "preview", spooledJob},
  };
  for (const Case& test : cases) EXPECT_EQ(Restored(Spooled(test.document), "<P>", "<D", ">"), test.expected);
}

TEST(Spooler, EachCopyIsADocumentOfItsOwn) {
  SimulatedMachine machine;
  const std::string copy =
      "userdict /TessaryBefore save put\r\n%%Page: 1 1\r\nA\r\n%%Page: 2 2\r\n<D\1>\r\nTessaryCopied\r\n";
  ASSERT_EQ(Spool(machine, machine.files, "%!\n%%Title: x\n%%Page: 1 1\nA\n%%Page: 2 2\n\1", 3, 6), "");
  const std::string spooled = Restored(machine.files.Text(kOut), "", "<D", ">");
  const std::string body = spooled.substr(spooled.find("userdict /TessaryBefore save"));
  EXPECT_EQ(body, copy + copy + copy);
}

TEST(Spooler, SaysWhatIsNoDocument) {
  for (const Case& test : std::vector<Case>{
           {"", "is empty"},
           {" \n\4", "holds no document"},
           {"\x89PNG\r\n", "is a PNG image, not PostScript or PDF"},
           {"\x1b%-12345X@PJL ENTER LANGUAGE=PCL\n\x1b&l1",
            "is a PCL or other printer-language job, not PostScript or PDF"},
           {"\xC5\xD0\xD3\xC6\x1e\0\0\0\5\0\0\0%!"s, "is damaged: its EPS header points outside the file"}})
    EXPECT_EQ(Problem(test.document), test.expected);
}

// Lines, pages and odd bytes that lie anywhere about the ends of the blocks.
TEST(Spooler, LosesNothingInLargeDocuments) {
  std::mt19937 random(7);
  const std::array<std::string, 12> words = {"\n",  "\n",         "a line\n", "% \xfc\n",      "%%\n",
                                             "%",   "\0"s,        "\r\n",     "%%Page: 1 1\n", "%%Page:\r",
                                             "a\r", "some words "};
  for (std::size_t round = 0; round < 16; ++round) {
    std::string document = "%!\n%%EndComments\n";
    for (int count = 0; count < 16; ++count) {
      document += words[random() % (round % 2 == 0 ? words.size() : 6)];
      if (count % 5 == 0) document += std::string(kBlockSize - random() % 40, 'x');
    }
    const std::string spooled = Spooled(document);
    EXPECT_TRUE(WithLf(Restored(spooled, "", "", "")) == WithLf(document)) << round;
    for (std::size_t at = 0; at < spooled.size(); ++at)
      ASSERT_TRUE(spooled[at] != '\r' || spooled[at + 1] == '\n') << round;
  }
}

TEST(Spooler, KeepsTextAsTextAcrossBlocks) {
  for (std::size_t shift = 0; shift < 40; ++shift) {
    const std::string document = "%!\r\n%%EndComments\r\n" + std::string(kBlockSize - shift, 'x') +
                                 "\r\n%%Page: 1 1\r\nA\r\n%%Page: 2 2\r\n\1\r\n";
    std::string expected = document;
    expected.insert(expected.size() - 3, "<D").append(">");
    EXPECT_TRUE(Restored(Spooled(document), "", "<D", ">") == expected) << shift;
  }
}

TEST(Spooler, WritesDataInShortLinesThatAreNoComments) {
  std::string document = "%!\n";
  for (int page = 0; page < 300; ++page)
    document += "%%\n\1" + std::string(static_cast<std::size_t>(page), 'x');
  std::istringstream lines(Spooled(document));
  std::string line;
  while (std::getline(lines, line) && line != "TessaryData\r") continue;
  int count = 0;
  for (; std::getline(lines, line); ++count) EXPECT_TRUE(line.starts_with(' ') && line.size() < 255) << line;
  EXPECT_GT(count, 200);
}

TEST(Spooler, ReportsEveryFailure) {
  const std::string document = "%!\n" + std::string(2 * kBlockSize, 'x') + "\0\n%%Page: 1 1\nA\n"s;
  for (int failing = 1, last = 1; failing <= last; ++failing) {
    SimulatedMachine machine;
    FaultyFiles files(machine.files, failing);
    const std::string problem = Spool(machine, files, document);
    last = files.calls();
    EXPECT_NE(problem.find("Disk full"), std::string::npos) << failing << " of " << last << ": " << problem;
  }
}

}  // namespace
}  // namespace tessary
