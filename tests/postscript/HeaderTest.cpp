#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "postscript/PostScriptHeader.h"
#include "tests/support/Golden.h"
#include "tests/support/PostScriptStrings.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

const std::string kHeader = R"(C:\Temp\x_header.ps)";

struct HeaderTest : testing::Test {
  std::string Header(bool includeStamp = true) {
    EXPECT_TRUE(WritePostScriptHeader(run, kHeader, settings, includeStamp));
    return machine.files.Text(kHeader);
  }
  /// What stands behind "/Title ", and in front of it "! " where the title is given once more at the end.
  std::string Title(const std::string& title) {
    settings.Set("title", title);
    const std::string header = Header();
    const std::size_t start = header.find("/Title ") + 7;
    const bool again = header.find("/Title ", start) != std::string::npos;
    return (again ? "! " : "") + header.substr(start, header.find("\r\n", start) - start);
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  Dictionary settings;
};

TEST(PostScriptText, StringsAndNumbers) {
  for (const auto& [value, literal] : {std::pair{"", "()"},
                                       {"A (B)", "(A \\(B\\))"},
                                       {"\\)[{}]", "(\\\\\\)\\[\\{\\}\\])"},
                                       {"caf\xC3\xA9 \xE2\x82\xAC", "(caf\\351 \\200)"},
                                       {"\xE5\xA0\xB1", "(?)"},
                                       {"one\r\ntwo\n", "(one) (two) ()"}})
    EXPECT_EQ(EscapePostScriptString(value), literal) << value;
  EXPECT_EQ(EscapePostScriptBytes("\xFF\x80"), "(\\377\\200)");
  for (const auto& [number, text] : {std::pair{0.75, ".75"},
                                     {1.5, "1.5"},
                                     {2.0, "2"},
                                     {-0.5, "-.5"},
                                     {0.0, "0"},
                                     {-10.25, "-10.25"},
                                     {217 / 255.0, ".850980392156863"}})
    EXPECT_EQ(FormatNumber(number), text);
}

TEST_F(HeaderTest, WholeHeader) {
  for (const auto& [key, value] : {std::pair{"usethumbs", "YES"},
                                   {"zoom", " 75 "},
                                   {"creationdate", "D:20260102030405"},
                                   {"title", "A (B)"},
                                   {"subject", ""},
                                   {"keywords", "one, two"},
                                   {"author", "Ann"}})
    settings.Set(key, value);
  ExpectGolden("header.ps", Header());
  settings.Set("subject", "caf\xC3\xA9");
  settings.Set("author", "Ann \xE5\xA0\xB1");
  ExpectGolden("header-letters.ps", Header());
}

TEST_F(HeaderTest, View) {
  struct Case {
    const char *zoom, *thumbs, *entries;
  };
  for (const Case& c : {Case{"", "", ""},
                        {"0", "no", ""},
                        {"-5", "1", ""},
                        {"fit", "", ""},
                        {" FitAll ", "", "  /Page 1 /View [/Fit]\r\n"},
                        {"150%", "", "  /Page 1 /View [/XYZ null null 1.5]\r\n"},
                        {"100", "Yes", "  /PageMode /UseThumbs\r\n  /Page 1 /View [/XYZ null null 1]\r\n"}}) {
    settings.Set("zoom", c.zoom);
    settings.Set("usethumbs", c.thumbs);
    const std::string header = Header();
    const std::string view = header.substr(0, header.find("% Document information"));
    EXPECT_EQ(view, *c.entries ? "[ \r\n" + std::string(c.entries) + "  /DOCVIEW\r\npdfmark\r\n" : "")
        << c.zoom;
  }
}

TEST_F(HeaderTest, AnyTitleSurvives) {
  EXPECT_EQ(Title("A (x)"), "(A \\(x\\))");
  EXPECT_EQ(Title("C:\\101"), "! (C:\\\\101)") << "an escape in a comment of the job";
  EXPECT_EQ(Title("\xC3\x9C (x)"), "! (\\334 \\(x\\))");
  EXPECT_EQ(Title("\xFC"), "! (\\374)") << "no valid UTF-8";
  EXPECT_EQ(Title("\xE2\x80\x9CQ"), "! (\\376\\377\\040\\034\\000\\121)") << "elsewhere in documents' own code";
  EXPECT_EQ(Title("\xF0\x9F\x98\x80"), "! (\\376\\377\\330\\075\\336\\000)");
  EXPECT_EQ(Title("a\r\nb"), "! (\\376\\377\\000\\141\\000\\012\\000\\142)") << "one value, whatever its lines";
  EXPECT_EQ(Title(std::string("\0", 1)), "! (\\376\\377\\000\\000)");
  EXPECT_EQ(Title(std::string(100'000, 'x')).size(), 2u + 65535 + 2);
  std::string faces = "a";
  for (int i = 0; i < 40'000; ++i) faces += "\xF0\x9F\x98\x80";
  const std::string cut = ReadPostScriptStrings(Title(faces)).strings.at(0);
  EXPECT_EQ(cut.size(), 2u + 2 + 4 * 16382) << "at most 65535 bytes, and no half of a pair";
}

TEST_F(HeaderTest, FailuresAreAnsweredAndNotRaised) {
  EXPECT_FALSE(WritePostScriptHeader(run, R"(C:\missing\x_header.ps)", settings, true));
}

TEST_F(HeaderTest, TheStampIsAnOption) {
  settings.Set("watermarktext", "DRAFT");
  settings.Set("watermarkfontsize", "45");
  settings.Set("title", "x");
  const std::string merged = Header(false);
  EXPECT_EQ(merged.find("stamp"), std::string::npos);
  EXPECT_NE(merged.find("/Title (x)"), merged.rfind("/Title (x)"))
      << "said again behind what the documents say";
  const std::string header = Header(true);
  EXPECT_TRUE(header.starts_with("%!PS\r\n"));
  ExpectGolden("shelter.ps", header.substr(header.find("/DOCINFO pdfmark\r\n")));
}

// What the fuzzer begins with and has found.
TEST_F(HeaderTest, AnyValueStaysWithinItsString) {
  settings.Set("watermarktext", "x");
  settings.Set("watermarkfontsize", "45");
  settings.Set("title", "x");
  const std::string usual = ReadPostScriptStrings(Header()).rest;
  for (const auto& entry : std::filesystem::directory_iterator(TESSARY_ROOT_DIR "/fuzz/seeds/header")) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    settings.Set("title", text);
    PostScriptStrings header = ReadPostScriptStrings(Header());
    EXPECT_TRUE(header.isWhole) << entry.path();
    if (const std::size_t line = header.rest.find("<<\r\n/"); line != std::string::npos)
      header.rest.erase(line);
    EXPECT_EQ(header.rest, usual) << entry.path();
  }
}

}  // namespace
}  // namespace tessary
