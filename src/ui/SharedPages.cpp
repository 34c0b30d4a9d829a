#include "ui/SharedPages.h"

#include <span>

#include "ui/modGUI.h"

namespace tessary {

namespace {

using K = ControlKind;

/// A row of a layout table. The dialog Options may know it by another caption and by another name.
struct SharedElement {
  Element element;
  const char* optionsCaption = nullptr;  ///< null: the same
  const char* optionsName = nullptr;     ///< null: the same
};

constexpr SharedElement kProperties[] = {
    {{K::Label, "Label2", "[L68]Author", {0, 0}}, "[L19]Author"},
    {{K::TextField, "txtAuthor", "", {0, 1}}},
    {{K::Label, "Label3", "[L69]Title", {1, 0}}, "[L22]Title"},
    {{K::TextField, "txtTitle", "", {1, 1}}},
    {{K::Label, "Label4", "[L70]Subject", {2, 0}}, "[L23]Subject"},
    {{K::TextField, "txtSubject", "", {2, 1}}},
    {{K::Label, "Label5", "[L71]Keywords", {3, 0}}, "[L24]Keywords"},
    {{K::TextField, "txtKeywords", "", {3, 1}}},
};

constexpr SharedElement kWatermarkFields[] = {
    {{K::Label, "Label10", "[L64]Text", {0, 0}}, "[L14]Text"},
    {{K::Picture, "picWatermarkText", "", {0, 1, 3}}},
    {{K::Label, "Label25", "[L144]Font", {1, 0}}},
    {{K::DropDown, "cbWatermarkFontName", "", {1, 1}}},
    {{K::Label, "Label11", "[L66]Size", {1, 2}}, "[L16]Size"},
    {{K::TextField, "txtWatermarkFontSize", "", {1, 3}}},
    {{K::Label, "Label8", "[L65]Rotation (0-360)", {2, 0}}, "[L15]Rotation (0-360)"},
    {{K::EntryList, "cbWatermarkRotation", "", {2, 1}}},
    {{K::Label, "Label26", "[L147]Outline width", {2, 2}}},
    {{K::TextField, "txtWatermarkOutlineWidth", "", {2, 3}}},
    {{K::Label, "lblWatermarkColor", "[L138]Color", {3, 0}}},
    {{K::Picture, "picWatermarkColor", "", {3, 1}}},
    {{K::Label, "Label27", "[L148]Layer", {3, 2}}},
    {{K::DropDown, "cbWatermarkLayer", "", {3, 3}}},
    {{K::Label, "Label7", "[L139]Vertical position", {4, 0}}, nullptr, "Label15"},
    {{K::DropDown, "cbWatermarkVerticalPosition", "", {4, 1}}},
    {{K::Label, "Label21", "[L146]Vertical adjustment", {4, 2}}},
    {{K::TextField, "txtWatermarkVerticalAdjustment", "", {4, 3}}},
    {{K::Label, "Label18", "[L140]Horizontal position", {5, 0}}, nullptr, "Label7"},
    {{K::DropDown, "cbWatermarkHorizontalPosition", "", {5, 1}}},
    {{K::Label, "Label22", "[L145]Horizontal adjustment", {5, 2}}},
    {{K::TextField, "txtWatermarkHorizontalAdjustment", "", {5, 3}}},
};

constexpr Element kWatermarkColor[] = {
    {K::TextField, "txtWatermarkColor", "", {0, 0}},
    {K::Picture, "picWatermarkSample", "", {0, 1}},
    {K::Button, "cmdBrowseWatermarkColor", "...", {0, 2}},
};

constexpr SharedElement kAppendFields[] = {
    {{K::Label, "Label12", "[L59]Append PDF", {0, 0}}, "[L36]Append PDF"},
    {{K::TextField, "txtAppendFileName", "", {0, 1}}},
    {{K::Button, "cmdAppendFileName", "...", {0, 2}}},
    {{K::Label, "lblAppendPosition", "[L60]Position", {1, 0}}, "[L37]Position"},
    {{K::DropDown, "cbAppendPosition", "", {1, 1}}},
};

constexpr SharedElement kBackgroundFields[] = {
    {{K::Label, "Label13", "[L62]Background PDF", {0, 0}}, "[L39]Background PDF"},
    {{K::TextField, "txtSuperimposeFileName", "", {0, 1}}},
    {{K::Button, "cmdSuperimposeFileName", "...", {0, 2}}},
};

constexpr SharedElement kPasswords[] = {
    {{K::Label, "Label19", "[L52]Owner password", {0, 0}}, "[L41]Owner password"},
    {{K::TextField, "txtOwnerPassword", "", {0, 1}}},
    {{K::Label, "lblUserPassword", "[L53]User password", {1, 0}}, "[L42]User password", "Label1"},
    {{K::TextField, "txtUserPassword", "", {1, 1}}},
    {{K::Label, "lblKeylength", "[L54]Key Length", {2, 0}}, "[L43]Key Length", "Label20"},
    {{K::DropDown, "cbKeyLength", "", {2, 1}}},
};

constexpr SharedElement kPermissions[] = {
    {{K::CheckBox, "chkPermissions", "[L56]Set Permissions", {0, 0, 2}}, "[L45]Set Permissions"},
    {{K::Label, "lblPermissionsPrint", "[L57]Print", {1, 0}}, "[L46]Print"},
    {{K::DropDown, "cbPermissionsPrint", "", {1, 1}}},
    {{K::CheckBox, "chkPermissionsCopy", "[L58]Copy to clipboard", {2, 0, 2}}, "[L47]Copy to clipboard"},
};

constexpr SharedElement kZoom[] = {
    {{K::Label, "Label28", "[L151]Initial zoom level", {0, 0}}},
    {{K::EntryList, "cbZoom", "", {0, 1}}},
};

void AddShared(Control& container, std::span<const SharedElement> rows, Dialog dialog,
               std::int16_t firstRow = 0) {
  for (const SharedElement& row : rows) {
    Element element = row.element;
    const bool isOptions = dialog == Dialog::Options;
    if (isOptions && row.optionsCaption != nullptr) element.caption = row.optionsCaption;
    if (isOptions && row.optionsName != nullptr) element.name = row.optionsName;
    element.place.row = static_cast<std::int16_t>(element.place.row + firstRow);
    AddElements(container, {&element, 1});
  }
}

/// A picture with a rectangle in it, both of fixed size.
void Paint(Control& picture, const char* shape, Box pictureSize, Box shapeBox) {
  picture.box = pictureSize;
  picture.Add(K::Shape, shape).box = shapeBox;
}

}  // namespace

void AddProperties(Control& container, Dialog dialog) { AddShared(container, kProperties, dialog); }

void AddAppendFields(Control& container, Dialog dialog, std::int16_t firstRow) {
  AddShared(container, kAppendFields, dialog, firstRow);
}

void AddBackgroundFields(Control& container, Dialog dialog, std::int16_t firstRow) {
  AddShared(container, kBackgroundFields, dialog, firstRow);
}

void AddPasswords(Control& container, Dialog dialog) { AddShared(container, kPasswords, dialog); }

void AddPermissions(Control& container, Dialog dialog) { AddShared(container, kPermissions, dialog); }

void AddZoom(Control& container, std::int16_t firstRow) {
  AddShared(container, kZoom, Dialog::Create, firstRow);
}

void AddWatermark(Form& form, Control& container, Dialog dialog) {
  AddShared(container.Add(K::Picture, ""), kWatermarkFields, dialog);
  form["picWatermarkText"].Add(K::TextField, "txtWatermarkText");
  AddElements(form["picWatermarkColor"], kWatermarkColor);
  Paint(form["picWatermarkSample"], "shapeWatermarkColor", {0, 0, 22, 22}, {0, 0, 22, 22});
  Paint(container.Add(K::Picture, "pbWatermarkPaper", "", {0, 1}), "shapeWatermarkPreviewColor",
        {0, 0, 105, 148}, {0, 0, 42, 14});
  form["txtWatermarkFontSize"].maxLength = 3;
}

void FinishLayout(Form& form) {
  form.okButton = &form["cmdOK"];
  form.cancelButton = &form["cmdCancel"];
  form.ForEach([](Control& control) {
    if (control.kind == K::Picture) control.tabStop = false;
  });
}

}  // namespace tessary
