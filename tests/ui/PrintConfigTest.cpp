// The dialog "Create PDF", pressed and typed into.
#include <gtest/gtest.h>

#include "tests/support/SimulatedMachine.h"
#include "ui/frmPrintConfig.h"
#include "ui/modGUI.h"
#include "ui/modLocalize.h"

namespace tessary {
namespace {

struct PrintConfigTest : testing::Test {
  PrintConfigTest() {
    machine.files.PutFolder(R"(D:\docs)");
    config->Set("output", R"(D:\docs\job.pdf)");
  }
  /// Shows the dialog to a user. True when it was saved.
  bool Show(const std::function<void(Form&)>& user) {
    machine.desktop.user = user;
    return frmPrintConfig(run, config).Show();
  }
  /// Types into a field on whatever tab it stands.
  static void Enter(Form& form, const char* field, const std::string& text) {
    for (std::int32_t tab = 0; !form.IsOnDisplay(form[field]); ++tab) form.Choose(form["tc"], tab);
    form.Type(form[field], text);
  }
  static std::string Tab(Form& form) {
    const Control& strip = form["tc"];
    return strip.keys.at(static_cast<std::size_t>(strip.listIndex));
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  Settings config = GetDefaultConfig();
};

TEST_F(PrintConfigTest, TabsShowTheirPages) {
  config->Set("hidetabs", "general, merge,Other");
  Show([](Form& form) {
    EXPECT_EQ(form["tc"].keys,
              (std::vector<std::string>{"document", "watermark", "merge", "security", "other", "about"}))
        << "names are exact";
    EXPECT_EQ(form["tc"].list[0], " Document ");
    EXPECT_TRUE(form.IsOnDisplay(form["txtTitle"]));
    form.Choose(form["tc"], 3);
    EXPECT_TRUE(form.IsOnDisplay(form["chkPermissions"]));
    EXPECT_FALSE(form.IsOnDisplay(form["txtTitle"]));
    form.Press(form["cmdOK"]);
  });
  EXPECT_EQ(config->Text("output"), R"(D:\docs\job.pdf)") << "a hidden page keeps its values";

  config->Set("hidetabs", "general,document,watermark,merge,security,other,about");
  config->Set("output", R"(Q:\none.pdf)");
  EXPECT_FALSE(Show([](Form& form) {
    EXPECT_EQ(form["tc"].listIndex, -1);
    EXPECT_TRUE(form.PressKey({.key = Key::Tab, .control = true}));
    form.Press(form["cmdOK"]);
    EXPECT_EQ(form.Focused(), &form["cmdOK"]) << "there is no field to go to";
  }));
}

TEST_F(PrintConfigTest, Keyboard) {
  struct Case {
    KeyPress press;
    const char* tab;  ///< null: not swallowed
  };
  EXPECT_FALSE(Show([](Form& form) {
    for (const Case& c : {Case{{.key = Key::PageUp, .control = true}, "general"},
                          {{.key = Key::PageDown, .control = true}, "document"},
                          {{.key = Key::PageDown}, "document"},
                          {{.key = Key::PageUp, .shift = true}, "document"},
                          {{.key = Key::PageUp, .control = true}, "general"},
                          {{.key = Key::Tab, .shift = true, .control = true}, "about"},
                          {{.key = Key::PageDown, .control = true}, "about"},
                          {{.key = Key::Tab, .control = true}, "general"},
                          {{.key = Key::Tab}, nullptr},
                          {{.key = Key::Tab, .shift = true}, nullptr}}) {
      const std::string before = Tab(form);
      EXPECT_EQ(form.PressKey(c.press), c.tab != nullptr);
      EXPECT_EQ(Tab(form), c.tab != nullptr ? c.tab : before);
    }
    EXPECT_TRUE(form.PressKey({.key = Key::Escape}));
    EXPECT_FALSE(form.IsLoaded());
  }));
  EXPECT_TRUE(Show([](Form& form) {
    form.Type(form["txtPDFFileName"], "typed");
    EXPECT_TRUE(form.PressKey({.key = Key::Enter}));
  }));
  EXPECT_EQ(config->Text("output"), R"(D:\docs\typed.pdf)");
  EXPECT_FALSE(Show([](Form& form) { form.CloseBox(); }));
}

TEST_F(PrintConfigTest, OrderOfTheTabKey) {
  Show([](Form& form) {
    std::int16_t last = -1;
    for (const char* name :
         {"tc", "lblPDFFileName", "txtPDFFileName", "cmdBrowsePDFFileName", "Label6", "cbQuality",
          "txtWatermarkText", "cbWatermarkFontName", "txtWatermarkFontSize", "cbWatermarkRotation",
          "cmdBrowseWatermarkColor", "txtOwnerPassword", "cbPermissionsPrint", "cmdOK", "cmdCancel"}) {
      EXPECT_GT(form[name].tabIndex, last) << name;
      last = form[name].tabIndex;
    }
    form.SetFocus(form["txtPDFFileName"]);
    EXPECT_EQ(form["txtPDFFileName"].selLength, 15);
    form.SetText(form["txtPDFFileName"], "ü");
    form.SetFocus(form["cmdOK"]);
    EXPECT_EQ(form["txtPDFFileName"].text, "ü.pdf");
    form.SetFocus(form["txtPDFFileName"]);
    EXPECT_EQ(form["txtPDFFileName"].selLength, 5);
  });
}

TEST_F(PrintConfigTest, WhatHasNoMeaningIsDisabled) {
  config->Set("permissions", "61632");
  config->Set("disablecontrols", "txtTitle,cbAppendPosition,picTab");
  config->Set("hidecontrols", "chkOpenFolder,nothing,cmdok");
  Show([](Form& form) {
    const auto enabled = [&form](std::initializer_list<const char*> names) {
      std::string states;
      for (const char* name : names) states += form[name].enabled ? '1' : '0';
      return states;
    };
    EXPECT_EQ(enabled({"cbKeyLength", "lblKeylength", "txtUserPassword", "lblUserPassword", "framePermissions",
                       "chkPermissions", "cbPermissionsPrint", "chkPermissionsCopy"}),
              "00000000");
    form.SetText(form["txtOwnerPassword"], "x");
    EXPECT_EQ(enabled({"cbKeyLength", "lblKeylength", "txtUserPassword", "lblUserPassword", "framePermissions",
                       "chkPermissions", "cbPermissionsPrint", "chkPermissionsCopy"}),
              "11111111");
    form.SetChecked(form["chkPermissions"], false);
    EXPECT_EQ(enabled({"chkPermissions", "cbPermissionsPrint", "lblPermissionsPrint"}), "100");
    EXPECT_EQ(enabled({"cbAppendPosition", "lblAppendPosition", "txtTitle", "txtSubject"}), "0001");
    form.SetText(form["txtAppendFileName"], R"(D:\a.pdf)");
    EXPECT_EQ(enabled({"cbAppendPosition", "lblAppendPosition"}), "11") << "although the settings disabled it";
    EXPECT_EQ(form["txtAppendFileName"].toolTip, R"(D:\a.pdf)");
    EXPECT_FALSE(form["chkOpenFolder"].visible);
    EXPECT_TRUE(form["cmdOK"].visible);
    EXPECT_FALSE(form.Find("picTab", 4)->enabled) << "the members of a control array share a name";
  });
}

TEST_F(PrintConfigTest, NamesOfTheOutput) {
  machine.files.PutFolder(R"(D:\docs\folder)");
  machine.host().workingFolder = R"(C:\work)";
  struct Case {
    const char *output, *typed, *left, *saved;
  };
  const std::string documents = machine.shell.specialFolders[folders::kPersonal];
  for (const Case& c : {Case{R"(D:\docs\x.pdf)", "abc", "abc.pdf", R"(D:\docs\abc.pdf)"},
                        {R"( D:\docs\x.pdf )", " a.PDF ", " a.PDF .pdf", R"(D:\docs\a.PDF .pdf)"},
                        {"", "abc", "abc.pdf", R"(C:\Documents and Settings\ann\My Documents\abc.pdf)"},
                        {R"(D:\docs\x.pdf)", R"(D:\docs\folder)", R"(D:\docs\folder)", R"(D:\docs\folder.pdf)"},
                        {R"(D:\docs\x.pdf)", R"(D:\docs\)", R"(D:\docs\)", R"(D:\docs\.pdf)"},
                        {R"(D:\docs\x.pdf)", R"(sub\a)", R"(sub\a.pdf)", R"(C:\work\sub\a.pdf)"}}) {
    config->Set("output", c.output);
    Show([&c](Form& form) {
      form.Type(form["txtPDFFileName"], c.typed);
      form.SetFocus(form["cbQuality"]);
      EXPECT_EQ(form["txtPDFFileName"].text, c.left);
      form.Press(form["cmdOK"]);
      EXPECT_EQ(form["txtPDFFileName"].toolTip, c.saved);
    });
    EXPECT_EQ(config->Text("output"), c.saved);
  }

  machine.host().paths = PathStyle::Posix();
  config->Set("output", "/docs/x.pdf");
  Show([](Form& form) {
    form.Type(form["txtPDFFileName"], R"(\tmp\a)");
    form.Press(form["cmdOK"]);
  });
  EXPECT_EQ(config->Text("output"), "/tmp/a.pdf");
}

TEST_F(PrintConfigTest, SaveSaysWhatIsWrong) {
  machine.files.Put(R"(D:\docs\there.pdf)", "");
  struct Case {
    const char *output, *append, *superimpose, *box, *tab, *field;
  };
  const Case cases[] = {
      {"", "", "", "The output PDF file must be specified.", "general", "txtPDFFileName"},
      {R"(D:\none\a.pdf)", "", "", "The output folder does not exist.", "general", "txtPDFFileName"},
      {R"(\\srv\a.pdf)", "", "", "The output folder does not exist.", "general", "txtPDFFileName"},
      {R"(\\srv\share\a.pdf)", "", "", "", "", ""},
      {R"(D:\a.pdf)", R"(D:\a.pdf)", "", "", "", ""},
      {R"(D:\a.pdf)", R"( D:\none.pdf )", "", "The PDF you want to append does not exist.", "merge",
       "txtAppendFileName"},
      {R"(D:\a.pdf)", R"(D:\docs\there.pdf)", R"(D:\docs\there.pdf<1>D:\b.pdf<2->)",
       "The PDF you want to use as background does not exist.\r\n\r\n\"D:\\b.pdf\"", "merge",
       "txtSuperimposeFileName"},
      {R"(D:\a.pdf)", "", R"(D:\docs\there.pdf)", "", "", ""},
  };
  for (const Case& c : cases) {
    machine.desktop.boxes.clear();
    EXPECT_EQ(Show([&](Form& form) {
                Enter(form, "txtAppendFileName", c.append);
                Enter(form, "txtSuperimposeFileName", c.superimpose);
                Enter(form, "txtPDFFileName", c.output);
                form.Press(form["cmdOK"]);
                if (*c.box == 0) return;
                EXPECT_EQ(Tab(form), c.tab);
                EXPECT_EQ(form.Focused(), &form[c.field]);
                EXPECT_TRUE(form.IsLoaded());
              }),
              *c.box == 0)
        << c.output;
    ASSERT_EQ(machine.desktop.boxes.size(), *c.box == 0 ? 0u : 1u) << c.output;
    if (*c.box == 0) continue;
    EXPECT_EQ(machine.desktop.boxes[0].text.substr(0, std::string(c.box).size()), c.box);
    EXPECT_EQ(machine.desktop.boxes[0].flags, 48);
    EXPECT_EQ(machine.desktop.boxes[0].caption, "Tessary PDF Printer");
  }
}

TEST_F(PrintConfigTest, AnExistingFileIsAskedAboutOnce) {
  const std::string there = R"(D:\docs\there %1.pdf)";
  machine.files.Put(there, "");
  config->Set("output", there);
  machine.desktop.answers = {box::kAnswerNo, box::kAnswerCancel, box::kAnswerYes};
  EXPECT_TRUE(Show([](Form& form) {
    for (const bool closes : {false, false, true}) {
      form.Choose(form["tc"], 2);
      form.Press(form["cmdOK"]);
      EXPECT_EQ(form.IsLoaded(), !closes);
      EXPECT_EQ(form.Focused()->name, closes ? "cmdOK" : "txtPDFFileName");
    }
  }));
  ASSERT_EQ(machine.desktop.boxes.size(), 3u);
  EXPECT_EQ(machine.desktop.boxes[0].text,
            "The PDF file already exists.\r\n\r\n" + there + "\r\n\r\nDo you want to overwrite it?");
  EXPECT_EQ(machine.desktop.boxes[0].flags, 51);

  // What the save dialog has asked about is not asked again, until the name was touched.
  machine.files.Put(R"(C:\Program Files\Tessary\labels.txt)", "L94=Replace %1 (%1)?\r\n");
  LoadLabels(run);
  machine.desktop.boxes.clear();
  machine.desktop.picks = {{there}, {there}, {there}};
  machine.desktop.answers = {box::kAnswerNo, box::kAnswerYes};
  EXPECT_TRUE(Show([](Form& form) {
    form.Press(form["cmdBrowsePDFFileName"]);
    form.Press(form["cmdOK"]);
  }));
  ASSERT_EQ(machine.desktop.boxes.size(), 2u);
  EXPECT_EQ(machine.desktop.boxes[0].text, "Replace " + there + " (" + there + ")?");
  EXPECT_EQ(machine.desktop.boxes[0].flags, 52);
  machine.desktop.answers = {box::kAnswerYes};
  EXPECT_FALSE(Show([&](Form& form) {
    form.Press(form["cmdBrowsePDFFileName"]);
    form.Type(form["txtPDFFileName"], there + "x");
    form.Type(form["txtPDFFileName"], there);
    form.Press(form["cmdOK"]);
  }));
  EXPECT_EQ(machine.desktop.boxes.size(), 4u);

  config->Set("confirmoverwrite", "0");
  EXPECT_TRUE(Show([](Form& form) { form.Press(form["cmdOK"]); }));
  EXPECT_EQ(machine.desktop.boxes.size(), 4u);
}

TEST_F(PrintConfigTest, Pickers) {
  const std::string filter = "PDF Documents (*.pdf)|*.pdf|All Files|*.*";
  machine.desktop.picks = {Failure{failures::kInvalidFileName, ""},
                           {R"(D:\b.pdf)"},
                           {R"(D:\c.pdf)"},
                           Failure{failures::kCancelled, ""},
                           Failure{5, "No picker"}};
  machine.desktop.pickedColor = 0x0000FF;
  Show([&](Form& form) {
    form.Choose(form["tc"], 3);
    form.Type(form["txtAppendFileName"], "a<b");
    form.Press(form["cmdAppendFileName"]);
    EXPECT_EQ(form["txtAppendFileName"].text, R"(D:\b.pdf)");
    form.Press(form["cmdSuperimposeFileName"]);
    EXPECT_EQ(form["txtSuperimposeFileName"].text, R"(D:\c.pdf)");
    for (int times = 0; times < 2; ++times) form.Press(form["cmdAppendFileName"]);
    EXPECT_EQ(form["txtAppendFileName"].text, R"(D:\b.pdf)");
    form.Choose(form["tc"], 0);
    form.Type(form["txtPDFFileName"], R"(D:\docs)");
    form.Press(form["cmdBrowsePDFFileName"]);
    EXPECT_EQ(form["txtPDFFileName"].text, R"(D:\docs)");
    form.Choose(form["tc"], 2);
    form.Type(form["txtWatermarkColor"], "");
    form.Press(form["cmdBrowseWatermarkColor"]);
    EXPECT_EQ(form["txtWatermarkColor"].text, "#FF0000");
    machine.desktop.pickedColor = -1;
    form.Press(form["cmdBrowseWatermarkColor"]);
    EXPECT_EQ(form["txtWatermarkColor"].text, "#FF0000");
  });
  const auto& shown = machine.desktop.pickers;
  ASSERT_EQ(shown.size(), 6u);
  EXPECT_EQ(shown[0].title, "Select a PDF File");
  EXPECT_EQ(shown[0].filter, filter);
  EXPECT_EQ(shown[0].fileName, "a<b");
  EXPECT_EQ(shown[1].fileName, "") << "a name that is impossible is not suggested again";
  EXPECT_FALSE(shown[1].mustExist);
  EXPECT_TRUE(shown[2].mustExist);
  EXPECT_EQ(shown[5].folder, R"(D:\docs)");
  EXPECT_EQ(shown[5].fileName, "");
  EXPECT_TRUE(shown[5].saves);
}

TEST_F(PrintConfigTest, CaptionsAndTheAboutPanel) {
  machine.files.Put(R"(C:\Program Files\Tessary\labels.txt)",
                    "WindowsLanguage=JPN\r\nL127=Sichern\r\nL80=Allgemein\r\nL73=Stand\r\n");
  machine.files.SetModified(machine.host().programFile, machine.clock.startTime - 86400);
  LoadLabels(run);
  run.job.InstanceName = "Sales";
  Show([&](Form& form) {
    EXPECT_EQ(form.root.caption, "Create PDF - Tessary PDF Printer - [Sales]");
    EXPECT_TRUE(form.toForeground);
    EXPECT_EQ(form["cmdOK"].caption, "Sichern");
    EXPECT_EQ(form["tc"].list[0], " Allgemein ");
    EXPECT_EQ(form["lblVersion"].caption.substr(0, 8), "Stand 0.");
    EXPECT_EQ(form["lblVersion"].caption.back(), ' ');
    EXPECT_EQ(form["lblExeFile"].caption, "File: " + machine.host().programFile + "\r\n(2026-03-01 10:00:00)");
    EXPECT_EQ(form["lblExeFile"].font.charset, charsets::kJapanese);
    EXPECT_EQ(form["pbDonate"].font.charset, charsets::kDefault);
    form.Choose(form["tc"], 6);
    form.Press(form["pbDonate"]);
  });
  ASSERT_EQ(machine.shell.opened.size(), 1u);
  EXPECT_TRUE(machine.shell.opened[0].ends_with("/dispatch/?action=Donate&productid=pdf"));
  run.job.PrinterName = "Office [Sales]";
  Show([](Form& form) { EXPECT_EQ(form.root.caption, "Create PDF - Office [Sales]"); });
}

TEST_F(PrintConfigTest, OddSettingsAndManyFonts) {
  for (int i = 0; i < 10000; ++i)
    machine.shell.fonts.push_back({"F" + std::to_string(i) + " (TrueType)", std::to_string(i) + ".ttf"});
  for (const auto& [key, value] : *config) config->Set(key, "\xFF%1,&h[" + std::string(5000, '9') + "\\");
  EXPECT_FALSE(Show([](Form& form) {
    EXPECT_EQ(form["cbWatermarkFontName"].list.size(), 10000u);
    for (std::int32_t tab = 0; tab < 7; ++tab) form.Choose(form["tc"], tab);
    form.ForEach([&form](Control& control) {
      if (control.kind == ControlKind::TextField || control.kind == ControlKind::EntryList)
        form.SetFocus(control);
    });
    form.Press(form["cmdOK"]);
  }));
  EXPECT_EQ(config->Text("watermarkfontname"), "0.ttf");
  EXPECT_EQ(config->Text("keylength"), "128");
}

}  // namespace
}  // namespace tessary
