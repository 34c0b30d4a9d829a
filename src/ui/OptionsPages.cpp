#include "ui/OptionsPages.h"

#include <cstdint>

#include "ui/SharedPages.h"
#include "ui/modGUI.h"

namespace tessary {

namespace {

using K = ControlKind;

constexpr auto kDialog = Dialog::Options;

constexpr std::int32_t kHelpHeight = 92;
constexpr std::int32_t kHelpPicture = 32;

// A page is a column of frames. Those with fields have columns for the labels, the fields, the buttons that
// choose a file, and the macro buttons.

constexpr Element kOutput[] = {
    {K::Label, "lblPDFFileName", "[L26]PDF &File Name", {0, 0}},
    {K::TextField, "txtPDFFileName", "", {0, 1}},
    {K::Button, "cmdBrowsePDFFileName", "...", {0, 2}},
    {K::CheckBox, "chkConfirmOverwrite", "[L27]Confirm overwrite", {1, 1, 3}},
    {K::CheckBox, "chkRememberLastFileName", "[L134]Remember last filename", {2, 1, 3}},
    {K::CheckBox, "chkRememberLastFolderName", "[L135]Remember last folder", {3, 1, 3}},
};

// Questions have their answers in a row below.

constexpr Element kShowPdf[] = {
    {K::Label, "Label14", "[L29]Open the PDF document after creation?", {0, 0, 4}},
    {K::Option, "optShowPDF", "[L30]Ask", {1, 0}, 0},
    {K::Option, "optShowPDF", "[L31]Yes", {1, 1}, 1},
    {K::Option, "optShowPDF", "[L32]No", {1, 2}, 2},
};

constexpr Element kSaveAs[] = {
    {K::Label, "lblSaveAsDialogQuestion", "[L2]When will the \"Save As\" dialog be shown?", {0, 0, 4}},
    {K::Option, "optShowDialog", "[L3]When no file name is specified", {1, 0}, 0},
    {K::Option, "optShowDialog", "[L4]Always", {1, 1}, 1},
    {K::Option, "optShowDialog", "[L5]Never", {1, 2}, 2},
};

constexpr Element kPdfSettings[] = {
    {K::Label, "Label9", "[L7]When should the \"PDF Settings\" dialog be shown?", {0, 0, 3}},
    {K::Option, "rbShowSettings", "[L8]Always", {1, 0}, 0},
    {K::Option, "rbShowSettings", "[L9]Never", {1, 1}, 1},
};

constexpr Element kOtherDialogs[] = {
    {K::CheckBox, "chkSuppressErrors", "[L11]Suppress all errors", {0, 0}},
};

constexpr Element kQuality[] = {
    {K::Label, "Label6", "[L34]PDF &Quality", {0, 0}},
    {K::DropDown, "cbQuality", "", {0, 1}},
};

constexpr Element kUseDefaults[] = {
    {K::CheckBox, "chkUseDefaultAuthor", "[L20]Use Default", {0, 3}},
    {K::CheckBox, "chkUseDefaultTitle", "[L21]Use Default", {1, 3}},
};

constexpr Element kOtherSettings[] = {
    {K::CheckBox, "chkOpenFolder", "[L132]Open destination folder after creation", {0, 0, 2}},
};

/// Below the strip: the help, and the buttons in a row.
constexpr Element kBelow[] = {
    {K::Picture, "pbQuickHelp", "", {1, 0, 4}},
    {K::Button, "cmdOK", "[L128]OK", {2, 2}},
    {K::Button, "cmdCancel", "[L129]Cancel", {2, 3}},
    {K::Button, "cmdReset", "[L155]Defaults", {2, 0}},
};

constexpr Element kHelp[] = {
    {K::Picture, "picQuickHelp", "", {0, 0}},
    {K::Picture, "picQuickHelpText", "", {0, 1}},
};

constexpr Element kHelpText[] = {
    {K::Label, "lblHelpHeading", "[L12]Heading", {0, 0}},
    {K::Label, "lblHelpContent", "", {1, 0}},
};

constexpr TabPage kTabs[] = {
    {"general", "[L80]General", 0},     {"dialogs", "[L81]Dialogs", 6}, {"document", "[L82]Document", 1},
    {"watermark", "[L83]Watermark", 3}, {"merge", "[L84]Merge", 2},     {"security", "[L85]Security", 5},
    {"other", "[L137]Other", 8},        {"about", "[L86]About", 7},
};

/// The macro buttons by their index: the field that each adds to, and its place in the field's container.
constexpr struct {
  const char* field;
  const char* container;
  Place place;
} kMacroButtons[] = {
    {"txtPDFFileName", "Frame2", {0, 3}},
    {"txtAppendFileName", "Frame11", {0, 3}},
    {"txtSuperimposeFileName", "Frame12", {0, 3}},
    {"txtWatermarkText", "picWatermarkText", {0, 1}},
    {"txtAuthor", "Frame7", {0, 2}},
    {"txtTitle", "Frame7", {1, 2}},
    {"txtSubject", "Frame7", {2, 2}},
    {"txtKeywords", "Frame7", {3, 2}},
    {"txtOwnerPassword", "Frame10", {0, 2}},
    {"txtUserPassword", "Frame10", {1, 2}},
};

void AddMacroButtons(Form& form) {
  std::int16_t index = 0;
  for (const auto& [field, container, place] : kMacroButtons) {
    Control& button = form[container].Add(K::Button, "cmdMacro", "<>", place);
    button.tag = field;
    button.index = index++;
  }
}

Control& AddFrame(Control& page, const char* name, const char* caption) {
  const auto row = static_cast<std::int16_t>(page.children.size());
  return page.Add(K::Frame, name, caption, {row, 0});
}

void LayOutPages(Form& form) {
  const auto page = [&form](std::int16_t panel) -> Control& { return *form.Find("picTab", panel); };
  AddElements(AddFrame(page(0), "Frame2", "[L25]Output"), kOutput);
  AddElements(AddFrame(page(0), "Frame1", "[L28]Show PDF"), kShowPdf);
  AddElements(AddFrame(page(6), "frameSaveAs", "[L1]Save As - Dialog"), kSaveAs);
  AddElements(AddFrame(page(6), "framePDFSettingsDialog", "[L6]PDF Settings - Dialog"), kPdfSettings);
  AddElements(AddFrame(page(6), "Frame5", "[L10]Other Dialogs"), kOtherDialogs);
  AddElements(AddFrame(page(1), "Frame6", "[L33]Quality Settings"), kQuality);
  Control& properties = AddFrame(page(1), "Frame7", "[L18]Document Properties");
  AddProperties(properties, kDialog);
  AddElements(properties, kUseDefaults);
  AddWatermark(form, AddFrame(page(3), "Frame8", "[L13]Watermark"), kDialog);
  AddAppendFields(AddFrame(page(2), "Frame11", "[L35]Append To PDF"), kDialog, 0);
  AddBackgroundFields(AddFrame(page(2), "Frame12", "[L38]Superimpose Documents"), kDialog, 0);
  AddPasswords(AddFrame(page(5), "Frame10", "[L40]Password Protection"), kDialog);
  AddPermissions(AddFrame(page(5), "framePermissions", "[L44]Permissions"), kDialog);
  Control& other = AddFrame(page(8), "Frame4", "[L154]Other Settings");
  AddElements(other, kOtherSettings);
  AddZoom(other, 1);
  AddFrame(page(7), "Frame13", "[L48]About").Add(K::Picture, "ucAbout1");
  for (const char* question : {"Label14", "lblSaveAsDialogQuestion", "Label9"}) form[question].multiLine = true;
  AddMacroButtons(form);
}

void LayOutHelp(Form& form) {
  Control& pane = form["pbQuickHelp"];
  pane.box.height = kHelpHeight;
  AddElements(pane, kHelp);
  AddElements(form["picQuickHelpText"], kHelpText);
  Control& picture = form["picQuickHelp"];
  picture.picture = "help";
  picture.box = {0, 0, kHelpPicture, kHelpPicture};
  form["lblHelpHeading"].font.bold = true;
  form["lblHelpHeading"].multiLine = form["lblHelpContent"].multiLine = true;
}

}  // namespace

std::span<const TabPage> OptionsTabs() { return kTabs; }

void LayOutOptions(Form& form) {
  Control& strip = form.root.Add(K::TabStrip, "tc", "", {0, 0, 4});
  for (const TabPage& tab : kTabs) AddPage(strip, tab);
  LayOutPages(form);
  AddElements(form.root, kBelow);
  LayOutHelp(form);
  form["cmdReset"].toolTip = "[L158]Click this button to restore the default values";
  FinishLayout(form);
}

}  // namespace tessary
