#include "ui/PrintConfigPages.h"

#include <cstdint>

#include "ui/modGUI.h"

namespace tessary {

namespace {

using K = ControlKind;

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

constexpr Element kDocument[] = {
    {K::Label, "Label2", "[L68]Author", {0, 0}},   {K::TextField, "txtAuthor", "", {0, 1}},
    {K::Label, "Label3", "[L69]Title", {1, 0}},    {K::TextField, "txtTitle", "", {1, 1}},
    {K::Label, "Label4", "[L70]Subject", {2, 0}},  {K::TextField, "txtSubject", "", {2, 1}},
    {K::Label, "Label5", "[L71]Keywords", {3, 0}}, {K::TextField, "txtKeywords", "", {3, 1}},
};

// The watermark page: two columns of fields, and the preview at their right.

constexpr Element kWatermarkFields[] = {
    {K::Label, "Label10", "[L64]Text", {0, 0}},
    {K::TextField, "txtWatermarkText", "", {0, 1, 3}},
    {K::Label, "Label25", "[L144]Font", {1, 0}},
    {K::DropDown, "cbWatermarkFontName", "", {1, 1}},
    {K::Label, "Label11", "[L66]Size", {1, 2}},
    {K::TextField, "txtWatermarkFontSize", "", {1, 3}},
    {K::Label, "Label8", "[L65]Rotation (0-360)", {2, 0}},
    {K::EntryList, "cbWatermarkRotation", "", {2, 1}},
    {K::Label, "Label26", "[L147]Outline width", {2, 2}},
    {K::TextField, "txtWatermarkOutlineWidth", "", {2, 3}},
    {K::Label, "lblWatermarkColor", "[L138]Color", {3, 0}},
    {K::Picture, "picWatermarkColor", "", {3, 1}},
    {K::Label, "Label27", "[L148]Layer", {3, 2}},
    {K::DropDown, "cbWatermarkLayer", "", {3, 3}},
    {K::Label, "Label7", "[L139]Vertical position", {4, 0}},
    {K::DropDown, "cbWatermarkVerticalPosition", "", {4, 1}},
    {K::Label, "Label21", "[L146]Vertical adjustment", {4, 2}},
    {K::TextField, "txtWatermarkVerticalAdjustment", "", {4, 3}},
    {K::Label, "Label18", "[L140]Horizontal position", {5, 0}},
    {K::DropDown, "cbWatermarkHorizontalPosition", "", {5, 1}},
    {K::Label, "Label22", "[L145]Horizontal adjustment", {5, 2}},
    {K::TextField, "txtWatermarkHorizontalAdjustment", "", {5, 3}},
};

constexpr Element kWatermarkColor[] = {
    {K::TextField, "txtWatermarkColor", "", {0, 0}},
    {K::Picture, "picWatermarkSample", "", {0, 1}},
    {K::Button, "cmdBrowseWatermarkColor", "...", {0, 2}},
};

constexpr Element kMerge[] = {
    {K::Label,
     "Label14",
     "[L61]You can append your PDF output with an existing PDF file. Select the PDF file you want to append "
     "to. "
     "You can also choose the position of your output in relation to the appended PDF file.",
     {0, 0, 3}},
    {K::Label, "Label12", "[L59]Append PDF", {1, 0}},
    {K::TextField, "txtAppendFileName", "", {1, 1}},
    {K::Button, "cmdAppendFileName", "...", {1, 2}},
    {K::Label, "lblAppendPosition", "[L60]Position", {2, 0}},
    {K::DropDown, "cbAppendPosition", "", {2, 1}},
    {K::Label,
     "Label1",
     "[L63]The superimpose feature will write your PDF output on top of another PDF file. The best result is "
     "achieved if the imposed documents are using the same paper format.",
     {3, 0, 3}},
    {K::Label, "Label13", "[L62]Background PDF", {4, 0}},
    {K::TextField, "txtSuperimposeFileName", "", {4, 1}},
    {K::Button, "cmdSuperimposeFileName", "...", {4, 2}},
};

constexpr Element kSecurity[] = {
    {K::Label, "Label19", "[L52]Owner password", {0, 0}},
    {K::TextField, "txtOwnerPassword", "", {0, 1}},
    {K::Label, "lblUserPassword", "[L53]User password", {1, 0}},
    {K::TextField, "txtUserPassword", "", {1, 1}},
    {K::Label, "lblKeylength", "[L54]Key Length", {2, 0}},
    {K::DropDown, "cbKeyLength", "", {2, 1}},
    {K::Frame, "framePermissions", "[L55]Permissions", {3, 0, 2}},
};

constexpr Element kPermissions[] = {
    {K::CheckBox, "chkPermissions", "[L56]Set Permissions", {0, 0, 2}},
    {K::Label, "lblPermissionsPrint", "[L57]Print", {1, 0}},
    {K::DropDown, "cbPermissionsPrint", "", {1, 1}},
    {K::CheckBox, "chkPermissionsCopy", "[L58]Copy to clipboard", {2, 0, 2}},
};

constexpr Element kOther[] = {
    {K::Label, "Label28", "[L151]Initial zoom level", {0, 0}},
    {K::EntryList, "cbZoom", "", {0, 1}},
};

constexpr Element kAbout[] = {{K::Picture, "ucAbout1"}};

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

constexpr struct {
  std::int16_t panel;
  std::span<const Element> elements;
} kPages[] = {
    {0, kGeneral}, {1, kDocument}, {2, kMerge}, {4, kSecurity}, {7, kOther}, {6, kAbout},
};

/// A picture with a rectangle in it, both of fixed size.
void Paint(Control& picture, const char* shape, Box pictureSize, Box shapeBox) {
  picture.box = pictureSize;
  picture.Add(K::Shape, shape).box = shapeBox;
}

void LayOutWatermark(Form& form, Control& page) {
  AddElements(page.Add(K::Picture, ""), kWatermarkFields);
  AddElements(form["picWatermarkColor"], kWatermarkColor);
  Paint(form["picWatermarkSample"], "shapeWatermarkColor", {0, 0, 22, 22}, {0, 0, 22, 22});
  Paint(page.Add(K::Picture, "pbWatermarkPaper", "", {0, 1}), "shapeWatermarkPreviewColor", {0, 0, 105, 148},
        {0, 0, 42, 14});
  form["txtWatermarkFontSize"].maxLength = 3;
}

}  // namespace

std::span<const TabPage> PrintConfigTabs() { return kTabs; }

void LayOutPrintConfig(Form& form) {
  Control& strip = form.root.Add(K::TabStrip, "tc", "", {0, 0, 3});
  for (const TabPage& tab : kTabs) AddPage(strip, tab);
  for (const auto& page : kPages) AddElements(*form.Find("picTab", page.panel), page.elements);
  LayOutWatermark(form, *form.Find("picTab", 3));
  AddElements(form["framePermissions"], kPermissions);
  AddElements(form.root, kButtons);
  form["Label14"].multiLine = form["Label1"].multiLine = true;
  form.okButton = &form["cmdOK"];
  form.cancelButton = &form["cmdCancel"];
  form.ForEach([](Control& control) {
    if (control.kind == K::Picture) control.tabStop = false;
  });
}

}  // namespace tessary
