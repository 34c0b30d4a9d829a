#include <gtest/gtest.h>

#include "ghostscript/Dialect.h"
#include "ghostscript/modEncryption.h"
#include "ghostscript/modGhostScript.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

GhostscriptAdditions Opening(const std::string& password) { return {password, "", {}}; }

struct EncryptionTest : testing::Test {
  void Set(const std::string& owner, const std::string& user, const std::string& mergeFile = "") {
    settings.Set("ownerpassword", owner);
    settings.Set("userpassword", user);
    settings.Set("mergefile", mergeFile);
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  Dictionary settings;
};

TEST_F(EncryptionTest, LinesStandBetweenTargetAndDeviceOfTheLastConversion) {
  settings.Set("keylength", "128");
  settings.Set("permissions", "63700");
  settings.Set("target", "screen");
  const std::string lines =
      "-sOwnerPassword#own er\r\n-sUserPassword#\"us\"\r\n-dEncryptionR#3\r\n-dKeyLength#128\r\n"
      "-dPermissions#63700\r\n";
  Set("own er", "\"us\"");
  EXPECT_EQ(GetEncryptionParameters(settings), lines);
  struct Case {
    const char *owner, *mergeFile;
    bool isFinalPass, expected;
  };
  for (const Case& c : {Case{"own er", "", false, true},
                        {"own er", "  ", false, true},
                        {"own er", "C:\\m.pdf", false, false},
                        {"own er", "C:\\m.pdf", true, true},
                        {"", "", false, false}}) {
    Set(c.owner, "\"us\"", c.mergeFile);
    WritePdfParameterFile(run, R"(C:\Temp\p.gs)", "o.pdf", settings, c.isFinalPass, "o.out", {});
    const std::string between = c.expected ? lines : "";
    EXPECT_NE(machine.files.Text(R"(C:\Temp\p.gs)")
                  .find("-dPDFSETTINGS#/screen\r\n" + between + "-sDEVICE#pdfwrite\r\n"),
              std::string::npos)
        << c.owner << c.mergeFile << c.isFinalPass;
  }
  Set("o", "");
  settings.Set("keylength", "");
  settings.Set("permissions", "");
  EXPECT_EQ(GetEncryptionParameters(settings), "-sOwnerPassword#o\r\n-dEncryptionR#3\r\n");
}

TEST_F(EncryptionTest, OpeningPassword) {
  for (const auto& [owner, user, expected] : {std::tuple{"o", "u", "u"}, {"o", "", "o"}, {"", "u", ""}}) {
    Set(owner, user);
    EXPECT_EQ(GetOpeningPassword(settings), expected);
  }
}

TEST_F(EncryptionTest, LostEncryptionIsLogged) {
  Set("", "u", R"(C:\gone.pdf)");
  LogLostEncryption(run, settings);
  const std::string log = R"(C:\Temp\Tessary\PDF Printer\_printer.log)";
  EXPECT_FALSE(machine.files.Find(log));
  Set("o", "u", R"( C:\gone.pdf )");
  LogLostEncryption(run, settings);
  EXPECT_NE(machine.files.Text(log).find("not encrypted, because the file to merge it with does not exist: "
                                         "C:\\gone.pdf\r\n"),
            std::string::npos);
}

TEST(DialectPasswords, AreQuotedAsTheyAre) {
  const std::string lines = "-sOwnerPassword#\"a\" %d=#\\\\\r\n-sUserPassword#u\r\n";
  EXPECT_EQ(TranslateParameters(lines, 10),
            "\"-sOwnerPassword=\\\"a\\\" %d=#\\\\\\\r\n\"\r\n\"-sUserPassword=u\"\r\n");
  EXPECT_EQ(TranslateParameters(lines, 8, Opening("u")), lines);
  const std::string letters = std::string(511, 'x') + "\xC3\xBC";
  EXPECT_EQ(TranslateParameters("-sUserPassword#" + letters, 10),
            "\"-sUserPassword=" + std::string(511, 'x') + "\"\r\n");
}

TEST(DialectPasswords, ReadersOfPdfsGetThemAndStopAtWhatTheyCannotRead) {
  const std::string postScript = "-q\r\n\"/t/x.ps\"\r\n", pdf = "-q\r\n\"/t/x.PDF\"\r\n";
  EXPECT_EQ(TranslateParameters(postScript, 10, Opening("u")), postScript);
  EXPECT_EQ(TranslateParameters(pdf, 10), "-dPDFSTOPONERROR\r\n" + pdf);
  EXPECT_EQ(TranslateParameters(pdf, 10, Opening("u \"")),
            "-dPDFSTOPONERROR\r\n\"-sPDFPassword=u \\\"\"\r\n" + pdf);
  EXPECT_EQ(TranslateParameters(pdf, 9, Opening("u")), "\"-sPDFPassword=u\"\r\n" + pdf);
  EXPECT_EQ(TranslateParameters("-sOutputFile#\"/t/x.pdf\"\r\n", 10, Opening("u")),
            "\"-sOutputFile=/t/x.pdf\"\r\n");
}

}  // namespace
}  // namespace tessary
