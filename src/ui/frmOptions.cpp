#include "ui/frmOptions.h"

#include "config/modMacros.h"
#include "system/ucAbout.h"
#include "ui/Binding.h"
#include "ui/ChoiceLists.h"
#include "ui/OptionsPages.h"
#include "ui/Pickers.h"
#include "ui/QuickHelp.h"
#include "ui/Tabs.h"
#include "ui/WatermarkPreview.h"
#include "ui/frmMacros.h"
#include "ui/modGUI.h"
#include "ui/modLocalize.h"
#include "ui/modSharedGUI.h"

namespace tessary {

frmOptions::frmOptions(Run& run) : run_(run) {
  LayOutOptions(form_);
  LocalizeControl(run, form_.root);
  FillAboutPanel(run, form_["ucAbout1"]);
  form_.root.caption = Translate(run, "[L88]Options") + " - " + GetProductCaption(run);
  form_.toForeground = true;
  Control& strip = form_["tc"];
  BuildTabs(run, strip, OptionsTabs(), {}, "");
  FillLists(run, form_);
  SetTabOrderByPosition(form_);
  AttachEvents();
  ShowQuickHelp(run, form_, "start");
  config_ = LoadConfig(run, true, settingsFile_);
  SetConfig();
  form_.SetListIndex(strip, 0);
}

bool frmOptions::Show() {
  if (run_.host.desktop.ShowForm(form_)) return saved_;
  // Pressing its default button for the user would write a file that nobody has looked at.
  ShowMessage(run_,
              "There is no display to show the Options dialog on.\r\n\r\nThe settings are in the file '" +
                  settingsFile_ + "'.",
              box::kInformation + box::kForeground);
  return false;
}

void frmOptions::AttachEvents() {
  AttachSharedEvents(run_, form_, "[L78]Select a PDF File Name");
  Control& rotation = form_["cbWatermarkRotation"];
  rotation.gotFocus = [&rotation] { SelectTextBoxContents(rotation); };
  Control& strip = form_["tc"];
  strip.click = [this] { ShowTab(); };
  form_.keyDown = [this, &strip](const KeyPress& press) { return HandleTabKey(form_, strip, press); };
  form_["cmdBrowsePDFFileName"].click = [this] { BrowseOutput(); };
  form_.ForEach([this](Control& control) {
    if (control.name == "cmdMacro") control.click = [this, &control] { AppendMacro(control.tag); };
  });
  form_["cmdOK"].click = [this] { Save(); };
  form_["cmdCancel"].click = [this] { form_.Unload(); };
  form_["cmdReset"].click = [this] { Reset(); };
  AttachQuickHelp(run_, form_);
}

void frmOptions::SetConfig() {
  SettingsToControls(form_, Dialog::Options, *config_);
  DrawWatermarkPreview(form_);
}

void frmOptions::GetConfig(Dictionary& config) { ControlsToSettings(run_, form_, Dialog::Options, config); }

void frmOptions::AcceptSettings() {
  GetConfig(*config_);
  WriteConfig(run_, settingsFile_, config_);
}

void frmOptions::ShowTab() {
  Control& strip = form_["tc"];
  ShowSelectedPage(strip);
  ShowQuickHelp(run_, form_, "tab_" + strip.keys[static_cast<std::size_t>(strip.listIndex)]);
}

void frmOptions::BrowseOutput() {
  Control& field = form_["txtPDFFileName"];
  // Nothing is written yet, so there is nothing to ask about.
  const std::string chosen = ShowSaveAs(run_, NativeOutsideMacros(run_.host.paths, field.text), false);
  if (!chosen.empty()) form_.SetText(field, chosen);
}

void frmOptions::AppendMacro(const std::string& field) {
  frmMacros macros(run_);
  macros.Show();
  form_.SetText(form_[field], form_[field].text + macros.SelectedMacro);
}

void frmOptions::Save() {
  AcceptSettings();
  saved_ = true;
  form_.Unload();
}

void frmOptions::Reset() {
  const std::string question =
      Translate(run_,
                "[L156]Do you want to reset the dialog values to default values?\r\n\r\nPlease note that you "
                "current settings will be overwritten.");
  if (ShowMessage(run_, question, box::kQuestion + box::kYesNoCancel) != box::kAnswerYes) return;
  config_ = GetDefaultConfig();
  config_->Set("output", NativeOutsideMacros(run_.host.paths, config_->Text("output")));
  SetConfig();
  ShowQuickHelp(run_, form_, "defaults");  // check boxes that turn show a help of their own
}

}  // namespace tessary
