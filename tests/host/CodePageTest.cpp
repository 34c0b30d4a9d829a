#include <gtest/gtest.h>

#include "host/CodePage.h"
#include "host/CommandLine.h"

namespace tessary {
namespace {

TEST(CodePage, OnlyWellFormedUtf8IsValid) {
  for (const char* text :
       {"", "plain", "\xC3\xA4", "\xE2\x82\xAC", "\xED\x9F\xBF", "\xF4\x8F\xBF\xBF", "01234567\xC3\xA4"})
    EXPECT_TRUE(IsValidUtf8(text)) << text;
  const std::string broken[] = {"\x80",              // begins in the middle of a character
                                "\xC3",              // breaks off
                                "01234567\xE2\x82",  //
                                "\xE2\x28\xA1",      // goes on with a byte that does not continue
                                "\xC0\xAF",          // overlong forms
                                "\xC1\xBF",
                                "\xE0\x9F\xBF",
                                "\xF0\x8F\xBF\xBF",
                                "\xED\xA0\x80",      // a surrogate
                                "\xF4\x90\x80\x80",  // above the last character
                                "\xFE",
                                "\xFF"};
  for (const std::string& text : broken) EXPECT_FALSE(IsValidUtf8(text)) << testing::PrintToString(text);
}

TEST(CodePage, EveryByteOfWindows1252ComesBack) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  const std::string text = DecodeText(CodePage::Windows1252, bytes);
  EXPECT_TRUE(IsValidUtf8(text));
  EXPECT_EQ(EncodeText(CodePage::Windows1252, text), bytes);
  EXPECT_EQ(DecodeText(CodePage::Windows1252, "\x80 \x9F \xE4 \x81"), "€ Ÿ ä \xC2\x81");
}

TEST(CodePage, WhatThePageLacksBecomesAQuestionMark) {
  EXPECT_EQ(EncodeText(CodePage::Windows1252, "ü Ω 😀 €"), "\xFC ? ? \x80");
  EXPECT_EQ(EncodeText(CodePage::Windows1252, "a\xC3(\xFF"), "a?(?");
  EXPECT_EQ(EncodeText(CodePage::Utf8, "a\xC3(\xFFΩ"), "a\xC3(\xFFΩ");
}

TEST(CodePage, AFileThatIsNoUtf8IsWindows1252) {
  EXPECT_EQ(DecodeText(CodePage::Utf8, "Grüße"), "Grüße");
  EXPECT_EQ(DecodeText(CodePage::Utf8,
                       "Gr\xFC\xDF"
                       "e"),
            "Grüße");
  EXPECT_EQ(DecodeText(CodePage::Utf8, "\xEF\xBB\xBFtext\xEF\xBB\xBF"), "text\xEF\xBB\xBF");
  EXPECT_EQ(DecodeText(CodePage::Windows1252, "\xEF\xBB\xBF"), "ï»¿");
}

TEST(CommandLine, AValueIsQuotedWhereItHasTo) {
  const std::pair<const char*, const char*> cases[] = {{"ps=/tmp/a.ps", "ps=/tmp/a.ps"},
                                                       {"ps=/tmp/a b.ps", R"(ps="/tmp/a b.ps")"},
                                                       {"doc=a,b", R"(doc="a,b")"},
                                                       {R"(doc=say "hi")", R"(doc="say ""hi""")"},
                                                       {R"(doc=")", R"(doc="""")"},
                                                       {"doc=", R"(doc="")"},
                                                       {"doc=x=y z", R"(doc="x=y z")"},
                                                       {"doc=\t\\", "doc=\t\\"},
                                                       {"/debug", "/debug"}};
  for (const auto& [argument, quoted] : cases) EXPECT_EQ(QuoteParameter(argument), quoted);
  EXPECT_EQ(JoinParameters({"ps=a b", "", "doc=c"}), R"(ps="a b" doc=c)");
  EXPECT_EQ(JoinParameters({}), "");
}

}  // namespace
}  // namespace tessary
