// Which dialogs a job shows, and what they leave behind.
#include <gtest/gtest.h>

#include "config/modConfig.h"
#include "tests/support/SimulatedMachine.h"
#include "ui/Form.h"

namespace tessary {
namespace {

const std::string kData = R"(C:\Documents and Settings\ann\Application Data\Tessary\PDF Printer\)";

struct JobConfigTest : testing::Test {
  JobConfigTest() {
    machine.files.PutFolder(R"(D:\docs)");
    machine.files.PutFolder(R"(D:\last)");
  }
  /// GetJobConfig with these lines in the settings.
  bool Get(const std::string& lines) {
    machine.files.Put(kData + "settings.ini", "[PDF Printer]\r\nrememberlastfoldername=no\r\n" + lines);
    machine.desktop.pickers.clear();
    machine.desktop.boxes.clear();
    forms = 0;
    run.ui.ConfirmedOutputFile.clear();
    std::string file;
    return GetJobConfig(run, config, file);
  }
  /// The next dialogs are answered with this button.
  void Answer(const char* button) {
    machine.desktop.user = [this, button](Form& form) {
      ++forms;
      form.Press(form[button]);
    };
  }
  std::string Output() { return config->Text("output"); }

  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  Settings config;
  int forms = 0;
};

TEST_F(JobConfigTest, SettingsChooseTheDialogs) {
  Answer("cmdOK");
  struct Case {
    const char* lines;
    std::size_t pickers;
    int forms;
  };
  for (const Case& c : {Case{"output=D:\\a.pdf\r\n", 0, 1},
                        {"output=D:\\a.pdf\r\nshowsaveas=Always\r\nshowsettings=Never\r\n", 1, 0},
                        {"output=\r\nshowsaveas=nofile\r\nshowsettings=never\r\n", 1, 0},
                        {"output=D:\\docs\r\nshowsettings=never\r\n", 1, 0},
                        {"output=\r\nshowsaveas=NEVER\r\nshowsettings=sometimes\r\n", 0, 1},
                        {"output=D:\\docs\r\nshowsaveas=never\r\nshowsettings=never\r\n", 0, 0}}) {
    Get(c.lines);
    EXPECT_EQ(machine.desktop.pickers.size(), c.pickers) << c.lines;
    EXPECT_EQ(forms, c.forms) << c.lines;
  }
}

TEST_F(JobConfigTest, TheSaveDialogBeforeTheOther) {
  machine.files.Put(R"(D:\there.pdf)", "");
  machine.desktop.picks = {{R"(D:\there.pdf)"}};
  machine.desktop.answers = {box::kAnswerYes};
  Answer("cmdOK");
  EXPECT_TRUE(Get("output=D:\\docs\r\n"));
  EXPECT_EQ(Output(), R"(D:\there.pdf)");
  EXPECT_EQ(machine.desktop.boxes.size(), 1u) << "the second dialog does not ask again";
  EXPECT_EQ(machine.desktop.pickers[0].folder, R"(D:\docs)");

  EXPECT_TRUE(Get("output=D:\\docs\\job.pdf\r\nshowsaveas=always\r\n"));
  EXPECT_EQ(Output(), R"(D:\docs\job.pdf)") << "cancelled, and the other dialog has the say";
  EXPECT_TRUE(Get("output=\r\nshowsaveas=always\r\nshowsettings=never\r\n"));
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(machine.desktop.pickers[0].fileName, "*.pdf");

  Answer("cmdCancel");
  EXPECT_FALSE(Get("output=D:\\docs\\job.pdf\r\n"));
}

TEST_F(JobConfigTest, NamesAreRememberedByDialogsAlone) {
  const std::string user = kData + "user.ini";
  const std::string plain =
      "output=D:\\docs\\job.pdf\r\nrememberlastfilename= Yes\r\nrememberlastfoldername=yes\r\n";
  machine.files.Put(user, "[User]\r\nlastfilename=old.pdf\r\nlastfoldername=D:\\last\\\r\n");
  EXPECT_TRUE(Get(plain + "showsettings=never\r\nshowpdf=no\r\n"));
  EXPECT_EQ(Output(), R"(D:\docs\job.pdf)");

  machine.desktop.user = [](Form& form) {
    EXPECT_EQ(form["txtPDFFileName"].text, R"(D:\last\old.pdf)");
    form.Type(form["txtPDFFileName"], R"(D:\docs\new.pdf)");
    form.Press(form["cmdCancel"]);
  };
  EXPECT_FALSE(Get(plain));
  EXPECT_NE(machine.files.Text(user).find("lastfilename=old.pdf"), std::string::npos);

  machine.desktop.user = [](Form& form) {
    form.Type(form["txtPDFFileName"], R"(D:\docs\new.pdf)");
    form.Press(form["cmdOK"]);
  };
  EXPECT_TRUE(Get(plain));
  EXPECT_NE(machine.files.Text(user).find("lastfilename=new.pdf"), std::string::npos);
  EXPECT_NE(machine.files.Text(user).find("lastfoldername=D:\\docs\\"), std::string::npos);
}

TEST_F(JobConfigTest, TheQuestionWhereNoDialogIsShown) {
  const std::string lines = "output=D:\\a.pdf\r\nshowsettings=never\r\n";
  machine.desktop.answers = {box::kAnswerYes, box::kAnswerNo};
  EXPECT_TRUE(Get(lines + "showpdf=Ask\r\n"));
  EXPECT_EQ(config->Text("showpdf"), "yes");
  ASSERT_EQ(machine.desktop.boxes.size(), 1u);
  EXPECT_EQ(machine.desktop.boxes[0].text, "Do you want to open the PDF document?\r\n\r\nD:\\a.pdf");
  EXPECT_EQ(machine.desktop.boxes[0].flags, 36);
  EXPECT_TRUE(Get(lines));
  EXPECT_EQ(config->Text("showpdf"), "ask");
  EXPECT_TRUE(Get(lines + "showpdf=later\r\n"));
  EXPECT_TRUE(machine.desktop.boxes.empty());
  EXPECT_TRUE(Get("output=\r\nshowsaveas=never\r\nshowsettings=never\r\n"));
  EXPECT_TRUE(machine.desktop.boxes.empty());
}

TEST_F(JobConfigTest, WithoutADisplay) {
  machine.desktop.attended = false;
  EXPECT_TRUE(Get("output=D:\\docs\\job.pdf\r\n"));
  EXPECT_EQ(config->Text("showpdf"), "ask");
  EXPECT_EQ(config->Text("openfolder"), "no") << "the form was saved";
  machine.files.Put(R"(D:\docs\job.pdf)", "");
  EXPECT_FALSE(Get("output=D:\\docs\\job.pdf\r\n")) << "nobody agreed to overwrite it";
  EXPECT_TRUE(Get("output=D:\\docs\\job.pdf\r\nconfirmoverwrite=no\r\n"));
  EXPECT_FALSE(Get("output=\r\n"));
  EXPECT_TRUE(Get("output=\r\nshowsettings=never\r\n"));
  EXPECT_EQ(Output(), "");
}

}  // namespace
}  // namespace tessary
