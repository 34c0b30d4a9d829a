#include <gtest/gtest.h>

#include "job/modMain.h"
#include "system/Error.h"
#include "tests/support/SimulatedMachine.h"
#include "ui/modLocalize.h"

namespace tessary {
namespace {

const std::string kProgram = R"(C:\Program Files\Tessary\)";

struct LocalizeTest : testing::Test {
  void Load(const std::string& bytes) {
    machine.files.Put(kProgram + "labels.txt", bytes);
    LoadLabels(run);
  }
  std::string Translated(const std::string& text) { return Translate(run, text); }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
};

TEST_F(LocalizeTest, EscapedTexts) {
  for (const auto& [text, meant] : {std::pair{R"(a\\b)", R"(a\b)"},
                                    {R"(a\nb)", "a\r\nb"},
                                    {R"(a\tb)", "a\r\nb"},
                                    {R"(a\qb\=\")", "aqb=\""},
                                    {R"(\\n\\)", R"(\n\)"},
                                    {"a\\", "a"},
                                    {"\\\xC3\xA4", "\xC3\xA4"},
                                    {"", ""}})
    EXPECT_EQ(UnescapeLabelText(text), meant) << text;
}

TEST_F(LocalizeTest, LinesOfTheFile) {
  Load(
      "L1=a=b\r\n[section]\r\nL2= x "
      "\r\nL5=old\r\nL5=new\r\nL3=\r\n=nameless\r\n\\L6=six\r\nl7=seven\r\nL8=\xE4\nL9=one "
      "line");
  for (const auto& [text, shown] : {std::pair{"[L1]", "a=b"},
                                    {"[L2]", " x "},
                                    {"[L5]five", "new"},
                                    {"[L3]three", "three"},
                                    {"[]x", "nameless"},
                                    {"[L6]", "six"},
                                    {"[L7]case", "case"},
                                    {"[L8]", "\xC3\xA4\nL9=one line"},
                                    {"[L9]nine", "nine"},
                                    {"[L94", "[L94"},
                                    {"L94]x", "L94]x"},
                                    {"[x] y", " y"},
                                    {"[", "["},
                                    {"", ""}})
    EXPECT_EQ(Translated(text), shown) << text;

  machine.files.Put(kProgram + "debug.txt", "");
  EXPECT_EQ(Translated("[L999]Fallback"), "[L999]Fallback") << "shows what a language lacks";
  EXPECT_EQ(Translated("[L3]three"), "[L3]three");
  EXPECT_EQ(Translated("[L5]five"), "new");
}

TEST_F(LocalizeTest, LinesWhereLineFeedsEndThem) {
  machine.host().lfEndsLines = true;
  machine.host().codePage = CodePage::Utf8;
  Load("\xEF\xBB\xBFL1=one\nL2=two\r\nL3=\xC3\xA9\n\n");
  EXPECT_EQ(Translated("[L1]"), "one");
  EXPECT_EQ(Translated("[L2]"), "two");
  EXPECT_EQ(Translated("[L3]"), "\xC3\xA9");
}

TEST_F(LocalizeTest, CharsetOfTheLanguage) {
  for (const auto& [language, charset] : {std::pair{"JPN", charsets::kJapanese},
                                          {"KOR", charsets::kKorean},
                                          {"jpn", charsets::kDefault},
                                          {"DEU", charsets::kDefault}}) {
    Load(std::string("WindowsLanguage=") + language);
    EXPECT_EQ(run.labels.charset, charset) << language;
  }
}

TEST_F(LocalizeTest, FormsAreTranslatedInPlace) {
  Control form;
  form.caption = "Configure";
  Control& frame = form.Add(ControlKind::Frame, "Frame2", "[L25]Output");
  frame.Add(ControlKind::Button, "cmdReset", "[L155]Defaults").toolTip = "[L158]Click";
  frame.Add(ControlKind::TextField, "txtTitle");
  Control plain;

  Load("WindowsLanguage=KOR\r\nL25=Ausgabe\r\nL158=Hier");
  LocalizeControl(run, form);
  EXPECT_EQ(form.caption, "Configure");
  EXPECT_EQ(frame.caption, "Ausgabe");
  EXPECT_EQ(frame.children[0]->caption, "Defaults");
  EXPECT_EQ(frame.children[0]->toolTip, "Hier");
  EXPECT_EQ(frame.children[1]->caption, "");
  EXPECT_EQ(frame.children[1]->font.charset, charsets::kKorean);

  plain.font.charset = 204;
  Load("L1=x");
  LocalizeControl(run, plain);
  EXPECT_EQ(plain.font.charset, 204) << "no character set is forced";
}

TEST_F(LocalizeTest, ALanguageFileThatCannotBeReadEndsTheRun) {
  machine.files.Put(kProgram + "labels.txt", "L109=Fehler\r\n");
  machine.files.Hold(kProgram + "labels.txt");
  EXPECT_EQ(Main(run), exitcodes::kError);
  ASSERT_EQ(machine.desktop.boxes.size(), 1u);
  EXPECT_EQ(machine.desktop.boxes[0].text,
            "An error occured.\r\n\r\nError 70: Permission denied\r\n\r\nInit language");

  machine.files.Release(kProgram + "labels.txt");
  machine.host().commandLine = "ps=";
  tessary::Run own(machine.host());
  EXPECT_EQ(Main(own), exitcodes::kError);
  EXPECT_TRUE(machine.desktop.boxes[1].text.starts_with("Fehler\r\n\r\nError 1006: "))
      << "labels are loaded first";
}

}  // namespace
}  // namespace tessary
