#include "ui/PrintConfigPages.h"

#include <cstdint>

#include "ui/SharedPages.h"
#include "ui/modGUI.h"

namespace tessary {

namespace {

using K = ControlKind;

constexpr auto kDialog = Dialog::Create;

// Pages of fields have three columns: labels, fields, and the buttons that fill the fields.

constexpr Element kGeneral[] = {
    {K::Label, "lblPDFFileName", "[L49]PDF &File Name", {0, 0}},
    {K::TextField, "txtPDFFileName", "", {0, 1}},
    {K::Button, "cmdBrowsePDFFileName", "...", {0, 2}},
    {K::Label, "Label6", "[L50]&Quality", {1, 0}},
    {K::DropDown, "cbQuality", "", {1, 1}},
    {K::CheckBox, "chkShowPDF", "[L51]&Show PDF after creation", {2, 1, 2}},
    {K::CheckBox, "chkOpenFolder", "[L132]Open folder after creation", {3, 1, 2}},
};

constexpr Element kAppendHint = {
    K::Label,
    "Label14",
    "[L61]You can append your PDF output with an existing PDF file. Select the PDF file you want to append to. "
    "You can also choose the position of your output in relation to the appended PDF file.",
    {0, 0, 3}};

constexpr Element kBackgroundHint = {
    K::Label,
    "Label1",
    "[L63]The superimpose feature will write your PDF output on top of another PDF file. The best result is "
    "achieved if the imposed documents are using the same paper format.",
    {3, 0, 3}};

// The strip takes the whole width; the buttons stand below its right end.
constexpr Element kButtons[] = {
    {K::Button, "cmdOK", "[L127]Save", {1, 1}},
    {K::Button, "cmdCancel", "[L129]Cancel", {1, 2}},
};

constexpr TabPage kTabs[] = {
    {"general", "[L80]General", 0}, {"document", "[L82]Document", 1}, {"watermark", "[L83]Watermark", 3},
    {"merge", "[L84]Merge", 2},     {"security", "[L85]Security", 4}, {"other", "[L137]Other", 7},
    {"about", "[L86]About", 6},
};

void LayOutMerge(Control& page) {
  AddElements(page, {&kAppendHint, 1});
  AddAppendFields(page, kDialog, 1);
  AddElements(page, {&kBackgroundHint, 1});
  AddBackgroundFields(page, kDialog, 4);
}

void LayOutSecurity(Control& page) {
  AddPasswords(page, kDialog);
  AddPermissions(page.Add(K::Frame, "framePermissions", "[L55]Permissions", {3, 0, 2}), kDialog);
}

}  // namespace

std::span<const TabPage> PrintConfigTabs() { return kTabs; }

void LayOutPrintConfig(Form& form) {
  Control& strip = form.root.Add(K::TabStrip, "tc", "", {0, 0, 3});
  for (const TabPage& tab : kTabs) AddPage(strip, tab);
  const auto page = [&form](std::int16_t panel) -> Control& { return *form.Find("picTab", panel); };
  AddElements(page(0), kGeneral);
  AddProperties(page(1), kDialog);
  AddWatermark(form, page(3), kDialog);
  LayOutMerge(page(2));
  LayOutSecurity(page(4));
  AddZoom(page(7), 0);
  page(6).Add(K::Picture, "ucAbout1");
  AddElements(form.root, kButtons);
  form["Label14"].multiLine = form["Label1"].multiLine = true;
  FinishLayout(form);
}

}  // namespace tessary
