// The dialog "Options", pressed and typed into.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "system/Conversions.h"
#include "system/Error.h"
#include "tests/support/SimulatedMachine.h"
#include "ui/Tabs.h"
#include "ui/frmMacros.h"
#include "ui/frmOptions.h"
#include "ui/modLocalize.h"

namespace tessary {
namespace {

const std::string kFolder = R"(C:\Documents and Settings\ann\Application Data\Tessary\PDF Printer)";
const std::string kSettings = kFolder + R"(\settings.ini)";
const std::string kLabels = R"(C:\Program Files\Tessary\labels.txt)";
const std::string kGlobal = R"(C:\Program Files\Tessary\global.ini)";

struct OptionsTest : testing::Test {
  void Put(const std::string& lines) { machine.files.Put(kSettings, "[PDF Printer]\r\n" + lines); }
  /// Shows the dialog to a user. True when it was saved.
  bool Show(const std::function<void(Form&)>& user) {
    machine.desktop.user = user;
    return frmOptions(run).Show();
  }
  /// Shows the dialog to a user who chooses from every list of macros with `keys`.
  bool ShowWithMacros(const std::vector<KeyPress>& keys, const std::function<void(Form&)>& user) {
    return Show([keys, user](Form& form) {
      if (form.root.caption != "Macros") return user(form);
      form.Choose(form["lstMacros"], 2);
      for (const KeyPress& key : keys) EXPECT_TRUE(form.PressKey(key));
    });
  }
  /// The value of a key in the settings file; "-" when it is not there.
  std::string Saved(const std::string& key) {
    const std::string text = machine.files.Text(kSettings), mark = key + "=";
    std::size_t at = text.find(" " + mark);
    if (at == std::string::npos) return "-";
    at += mark.size() + 1;
    return text.substr(at, text.find("\r\n", at) - at);
  }
  void PutEnglishLabels() {
    std::ifstream file(std::filesystem::path(TESSARY_ROOT_DIR) / "languages/english/labels.txt",
                       std::ios::binary);
    machine.files.Put(kLabels, std::string(std::istreambuf_iterator<char>(file), {}));
    LoadLabels(run);
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
};

std::string Heading(Form& form) { return form["lblHelpHeading"].caption; }
std::string Content(Form& form) { return form["lblHelpContent"].caption; }

/// Brings the page of a control onto the screen.
void ShowPageOf(Form& form, Control& control) {
  for (std::int32_t tab = 0; !form.IsOnDisplay(control); ++tab) form.Choose(form["tc"], tab);
}

TEST_F(OptionsTest, OkSavesWhatStandsThere) {
  Put("output=D:\\a.pdf\r\nRunOnSuccess=cmd\r\nhandmade= 1 \r\nhidetabs=general\r\nhidecontrols=cbZoom\r\n"
      "disablecontrols=txtTitle\r\nshowpdf=yes\r\npermissions=61632\r\nappendposition=top\r\n");
  machine.files.Put(kFolder + R"(\runonce.ini)", "[PDF Printer]\r\noutput=once.pdf\r\n");
  machine.files.Put(kGlobal, "[PDF Printer]\r\nTitle=Locked\r\n");
  EXPECT_TRUE(Show([](Form& form) {
    EXPECT_EQ(form.root.caption, "Options - Tessary PDF Printer");
    EXPECT_EQ(form["tc"].keys.size(), 8u);
    EXPECT_EQ(form["tc"].list[0], "General");
    EXPECT_EQ(form["txtPDFFileName"].text, R"(D:\a.pdf)");
    EXPECT_EQ(form["txtTitle"].text, "Locked");
    EXPECT_EQ(form["chkOpenFolder"].caption, "Open destination folder after creation");
    EXPECT_TRUE(form.Find("optShowPDF", 1)->checked);
    form.ForEach([&form](Control& control) {
      EXPECT_TRUE(control.enabled) << control.name;
      EXPECT_TRUE(control.visible || control.name == "picTab") << control.name;
      if (control.kind == ControlKind::TextField) form.SetFocus(control);
    });
    EXPECT_EQ(form["cbAppendPosition"].listIndex, 1);
    form.Type(form["txtPDFFileName"], R"( <desktop>\<title> )");
    form.Choose(form["tc"], 1);
    form.Press(*form.Find("optShowDialog", 2));
    form.Choose(form["tc"], 5);
    form.Press(form["chkPermissions"]);
    form.Press(form["cmdOK"]);
    EXPECT_FALSE(form.IsLoaded());
  }));
  EXPECT_TRUE(machine.desktop.boxes.empty());
  struct Case {
    const char *key, *value;
  };
  for (const Case& c : {Case{"output", R"(<desktop>\<title>)"},
                        {"showsaveas", "never"},
                        {"showpdf", "yes"},
                        {"permissions", ""},
                        {"mergeposition", "top"},
                        {"runonsuccess", "cmd"},
                        {"handmade", "1"},
                        {"title", "Locked"},
                        {"hidetabs", "general"},
                        {"keylength", "128"}})
    EXPECT_EQ(Saved(c.key), c.value) << c.key;
  EXPECT_TRUE(machine.files.Exists(kFolder + R"(\runonce.ini)"));
  EXPECT_EQ(machine.files.Text(kGlobal), "[PDF Printer]\r\nTitle=Locked\r\n");

  Put("output=D:\\a.pdf\r\n");
  EXPECT_TRUE(Show([](Form& form) {
    form.Type(form["txtPDFFileName"], "");
    form.PressKey({.key = Key::Enter});
  }));
  EXPECT_EQ(Saved("output"), "") << "nothing is checked";
}

TEST_F(OptionsTest, AnInstanceHasAFileOfItsOwn) {
  run.job.InstanceName = "Sales";
  EXPECT_TRUE(Show([](Form& form) {
    EXPECT_EQ(form.root.caption, "Options - Tessary PDF Printer - [Sales]");
    form.Press(form["cmdOK"]);
  }));
  EXPECT_EQ(machine.files.Names(kFolder), std::vector<std::string>{"settings-Sales.ini"});
}

TEST_F(OptionsTest, CancellingWritesNothing) {
  Put("output=D:\\a.pdf\r\n");
  const std::string before = machine.files.Text(kSettings);
  machine.desktop.answers = {box::kAnswerYes};
  EXPECT_FALSE(Show([](Form& form) {
    form.Press(form["cmdReset"]);
    EXPECT_EQ(form["txtPDFFileName"].text, GetDefaultSetting("output"));
    form.PressKey({.key = Key::Escape});
  }));
  EXPECT_FALSE(Show([](Form& form) {
    form.Type(form["txtPDFFileName"], "other");
    form.CloseBox();
  }));
  EXPECT_EQ(machine.files.Text(kSettings), before);
}

TEST_F(OptionsTest, DefaultsAreTakenOnYesAlone) {
  Put("output=D:\\a.pdf\r\nrunonsuccess=cmd\r\nhandmade=1\r\npermissions=61632\r\n");
  machine.desktop.answers = {box::kAnswerNo, box::kAnswerCancel, box::kAnswerYes};
  EXPECT_TRUE(Show([](Form& form) {
    for (const bool reset : {false, false, true}) {
      form.Press(form["cmdReset"]);
      EXPECT_EQ(form["txtPDFFileName"].text == R"(D:\a.pdf)", !reset);
    }
    EXPECT_EQ(Content(form), "[defaults]");
    form.Press(form["cmdOK"]);
  }));
  EXPECT_EQ(machine.desktop.boxes.at(0).text,
            "Do you want to reset the dialog values to default values?\r\n\r\n"
            "Please note that you current settings will be overwritten.");
  EXPECT_EQ(machine.desktop.boxes[0].flags, 35);
  EXPECT_EQ(Saved("output"), GetDefaultSetting("output"));
  EXPECT_EQ(Saved("runonsuccess"), "");
  EXPECT_EQ(Saved("handmade"), "-");
}

TEST_F(OptionsTest, MacrosAreAddedToTheEndOfTheirField) {
  Put("");
  std::vector<std::string> fields;
  EXPECT_TRUE(ShowWithMacros({{.key = Key::Enter}}, [&](Form& form) {
    for (std::int16_t i = 0; Control* button = form.Find("cmdMacro", i); ++i) {
      Control& field = form[button->tag];
      form.SetText(field, "text");
      ShowPageOf(form, field);
      form.Press(*button);
      EXPECT_EQ(field.text, "text<docname>");
      fields.push_back(button->tag);
    }
    form.Press(form["cmdOK"]);
  }));
  EXPECT_EQ(fields.size(), 10u);
  EXPECT_EQ(Saved("output"), "text<docname>");
  EXPECT_EQ(Saved("userpassword"), "text<docname>");

  const auto nothingAdded = [](Form& form) {
    form.Type(form["txtPDFFileName"], "text");
    form.Press(*form.Find("cmdMacro"));
    EXPECT_EQ(form["txtPDFFileName"].text, "text");
  };
  ShowWithMacros({{.key = Key::Escape}}, nothingAdded);
  ShowWithMacros({}, nothingAdded);  // the window's close button
}

TEST_F(OptionsTest, ListOfMacros) {
  machine.files.Put(kLabels, "L97=Datum\r\nL72=Makros\r\n");
  LoadLabels(run);
  machine.desktop.user = [](Form& form) {
    Control& list = form["lstMacros"];
    EXPECT_EQ(form.root.caption, "Makros");
    EXPECT_EQ(list.list[0], "<date>          \tDatum (yyyy-mm-dd)");
    EXPECT_EQ(list.list.back(), "<env:TEMP>      \tValue of environment variable TEMP");
    EXPECT_EQ(list.listIndex, 0);
    form.Choose(list, static_cast<std::int32_t>(list.list.size()) - 1);
    list.doubleClick();
    EXPECT_FALSE(form.IsLoaded());
  };
  frmMacros macros(run);
  macros.Show();
  EXPECT_EQ(macros.SelectedMacro, "<env:TEMP>");
}

TEST_F(OptionsTest, EveryControlHasItsHelp) {
  PutEnglishLabels();
  Show([](Form& form) {
    EXPECT_EQ(Heading(form), "General") << "the page, not the welcome";
    form.ForEach([&form](Control& control) {
      const bool takesFocus = control.kind != ControlKind::Label && control.kind != ControlKind::Picture &&
                              control.kind != ControlKind::Frame && control.kind != ControlKind::Shape;
      if (!takesFocus || control.name == "tc" || control.name == "pbDonate") return;
      ShowPageOf(form, control);
      form["lblHelpHeading"].caption = form["lblHelpContent"].caption = "none";
      form.SetFocus(control);
      const bool byClick = control.name == "chkPermissionsCopy";
      EXPECT_EQ(Heading(form) == "none", byClick) << control.name;
      if (byClick) form.Press(control);
      EXPECT_NE(Heading(form), "none") << control.name;
      EXPECT_NE(Heading(form), "No Help Available") << control.name;
      EXPECT_GT(Content(form).size(), 20u) << control.name;
    });
    for (std::int32_t tab = 7; tab >= 0; --tab) {
      form.Choose(form["tc"], tab);
      EXPECT_EQ(Heading(form), form["tc"].list[static_cast<std::size_t>(tab)]);
    }
    form.SetFocus(form["cbWatermarkRotation"]);
    EXPECT_GT(form["cbWatermarkRotation"].selLength, 10);
  });
}

TEST_F(OptionsTest, EveryControlHasTheHelpOfItsOwn) {
  const std::pair<const char*, const char*> topics[] = {
      {"txtPDFFileName", "pdffilename"},
      {"cmdBrowsePDFFileName", "browsepdf"},
      {"chkConfirmOverwrite", "confirmoverwrite"},
      {"chkRememberLastFileName", "rememberlastfilename"},
      {"chkRememberLastFolderName", "rememberlastfoldername"},
      {"optShowPDF", "showpdf"},
      {"optShowDialog", "showsaveas"},
      {"rbShowSettings", "showsettings"},
      {"chkSuppressErrors", "suppresserrors"},
      {"cbQuality", "quality"},
      {"txtAuthor", "author"},
      {"txtTitle", "title"},
      {"txtSubject", "subject"},
      {"txtKeywords", "keywords"},
      {"chkUseDefaultAuthor", "usedefaultauthor"},
      {"chkUseDefaultTitle", "usedefaulttitle"},
      {"txtWatermarkText", "watermarktext"},
      {"cbWatermarkFontName", "watermarkfontname"},
      {"txtWatermarkFontSize", "watermarkfontsize"},
      {"cbWatermarkRotation", "watermarkrotation"},
      {"txtWatermarkColor", "watermarkcolor"},
      {"cmdBrowseWatermarkColor", "watermarkcolor"},
      {"txtWatermarkOutlineWidth", "watermarkoutlinewidth"},
      {"cbWatermarkLayer", "watermarklayer"},
      {"cbWatermarkVerticalPosition", "watermarkposition"},
      {"txtWatermarkHorizontalAdjustment", "watermarkposition"},
      {"txtAppendFileName", "appendfilename"},
      {"cmdAppendFileName", "browsepdf"},
      {"cbAppendPosition", "appendposition"},
      {"txtSuperimposeFileName", "superimposefilename"},
      {"cmdSuperimposeFileName", "browsepdf"},
      {"txtOwnerPassword", "ownerpassword"},
      {"txtUserPassword", "userpassword"},
      {"cbKeyLength", "keylength"},
      {"chkPermissions", "setpermissions"},
      {"cbPermissionsPrint", "permissionsprint"},
      {"chkPermissionsCopy", "permissionscopy"},
      {"chkOpenFolder", "openfolder"},
      {"cbZoom", "zoom"},
      {"cmdMacro", "macros"},
      {"cmdOK", "ok"},
      {"cmdCancel", "cancel"},
      {"cmdReset", "defaults"},
  };
  Show([&](Form& form) {
    for (const auto& [name, topic] : topics) {
      Control& control = form[name];
      ShowPageOf(form, control);
      form.SetFocus(control);
      if (std::string(name) == "chkPermissionsCopy") form.Press(control);
      EXPECT_EQ(Content(form), "[" + std::string(topic) + "]") << name;
    }
    for (const char* page :
         {"about", "general", "dialogs", "document", "watermark", "merge", "security", "other"}) {
      SelectTab(form, form["tc"], page);
      EXPECT_EQ(Content(form), "[tab_" + std::string(page) + "]");
    }
  });
}

TEST_F(OptionsTest, HelpThatATranslatorForgot) {
  machine.files.Put(kLabels, "L87=Keine Hilfe\r\nQH_title=Only a heading\r\nQH_author=R&D\\nA & B\\nC\r\n");
  LoadLabels(run);
  Show([](Form& form) {
    form.SetFocus(form["txtPDFFileName"]);
    EXPECT_EQ(Heading(form) + "|" + Content(form), "Keine Hilfe|[pdffilename]");
    form.SetFocus(form["txtTitle"]);
    EXPECT_EQ(Heading(form) + "|" + Content(form), "Only a heading|");
    form.SetFocus(form["txtAuthor"]);
    EXPECT_EQ(Heading(form) + "|" + Content(form), "R&&D|A && B\r\nC") << "no letter is marked";
  });
}

TEST_F(OptionsTest, Pickers) {
  Put("output=<desktop>\\a.pdf\r\n");
  machine.files.Put(R"(D:\there.pdf)", "");
  machine.desktop.picks = {{R"(D:\there.pdf)"}, Failure{failures::kCancelled, ""}, {R"(D:\b.pdf)"}};
  Show([](Form& form) {
    form.Press(form["cmdBrowsePDFFileName"]);
    form.Press(form["cmdBrowsePDFFileName"]);
    EXPECT_EQ(form["txtPDFFileName"].text, R"(D:\there.pdf)");
    form.Choose(form["tc"], 4);
    form.Press(form["cmdSuperimposeFileName"]);
    EXPECT_EQ(form["txtSuperimposeFileName"].toolTip, R"(D:\b.pdf)");
  });
  EXPECT_TRUE(machine.desktop.boxes.empty()) << "nothing is written yet";
  EXPECT_EQ(machine.desktop.pickers.at(0).fileName, R"(<desktop>\a.pdf)");
  EXPECT_EQ(machine.desktop.pickers.at(2).title, "Select a PDF File Name");
}

TEST_F(OptionsTest, AFileThatCannotBeWrittenStaysAsItIs) {
  Put("output=D:\\a.pdf\r\n");
  const std::string before = machine.files.Text(kSettings);
  machine.files.SetReadOnly(kSettings);
  machine.files.SetReadOnly(kFolder);
  EXPECT_THROW(Show([](Form& form) {
                 form.Type(form["txtPDFFileName"], "other");
                 form.Press(form["cmdOK"]);
               }),
               Error);
  EXPECT_EQ(machine.files.Text(kSettings), before);
}

TEST_F(OptionsTest, WithoutADisplayTheFileIsNamedAndLeftAlone) {
  Put("output=D:\\a.pdf\r\n");
  const std::string before = machine.files.Text(kSettings);
  EXPECT_FALSE(frmOptions(run).Show());
  ASSERT_EQ(machine.desktop.boxes.size(), 1u);
  EXPECT_TRUE(machine.desktop.boxes[0].text.ends_with("'" + kSettings + "'."));
  EXPECT_EQ(machine.files.Text(kSettings), before);
}

}  // namespace
}  // namespace tessary
