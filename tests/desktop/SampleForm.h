// A form with a control of every kind.
#pragma once

#include <string>

#include "ui/Form.h"

namespace tessary {

inline void MakePage(Control& strip, const std::string& key, std::int16_t index) {
  Control& page = strip.Add(ControlKind::Picture, "picTab");
  page.index = index;
  page.tag = key;
  page.visible = index == 0;
}

inline void FillSampleFields(Control& page) {
  page.Add(ControlKind::Label, "lblName", "PDF &File Name", {0, 0});
  page.Add(ControlKind::TextField, "txtName", "", {0, 1}).text = "/home/ann/out.pdf";
  page.Add(ControlKind::Button, "cmdBrowse", "...", {0, 2});
  page.Add(ControlKind::Label, "lblQuality", "&Quality", {1, 0});
  Control& quality = page.Add(ControlKind::DropDown, "cbQuality", "", {1, 1});
  quality.list = {"Default", "Screen", "Ebook"};
  quality.listIndex = 0;
  page.Add(ControlKind::Label, "lblZoom", "Initial &zoom level", {2, 0});
  Control& zoom = page.Add(ControlKind::EntryList, "cbZoom", "", {2, 1});
  zoom.list = {"Fit all", "Fit width"};
  zoom.text = "80";
  page.Add(ControlKind::Label, "lblSize", "Si&ze", {3, 0});
  page.Add(ControlKind::TextField, "txtSize", "", {3, 1}).maxLength = 3;
  page.Add(ControlKind::CheckBox, "chkShow", "&Show PDF after creation", {4, 1, 2});
}

inline void FillSampleLists(Control& page) {
  Control& text =
      page.Add(ControlKind::Label, "lblText",
               "You can append your output to a PDF file that is already there. Select the file, and whether "
               "the output stands before or behind it.",
               {0, 0, 3});
  text.multiLine = true;
  Control& frame = page.Add(ControlKind::Frame, "frameAsk", "Ask", {1, 0});
  for (std::int16_t i = 0; i < 2; ++i) {
    Control& option = frame.Add(ControlKind::Option, "optAsk", i == 0 ? "&Always" : "&Never", {i, 0});
    option.index = i;
    option.checked = i == 0;
  }
  Control& list = page.Add(ControlKind::ListBox, "lstMacros", "", {1, 1});
  list.list = {"one", "two", "three"};
  Control& view = page.Add(ControlKind::ListView, "lvMacros", "", {1, 2});
  view.list = {"ann", "bob"};
  Control& paper = page.Add(ControlKind::Picture, "pbPaper", "", {2, 0});
  paper.box = {0, 0, 105, 148};
  Control& stamp = paper.Add(ControlKind::Shape, "shapeStamp");
  stamp.box = {30, 60, 42, 14};
  stamp.fillColor = 0x1040FF;
}

/// Two pages, Save and Cancel; nothing happens yet when they are pressed.
inline void MakeSampleForm(Form& form) {
  form.root.caption = "Sample";
  Control& strip = form.root.Add(ControlKind::TabStrip, "tc", "", {0, 0, 3});
  strip.keys = {"fields", "lists"};
  strip.list = {" Fields ", " Lists "};
  strip.listIndex = 0;
  MakePage(strip, "fields", 0);
  MakePage(strip, "lists", 1);
  FillSampleFields(*form.Find("picTab", 0));
  FillSampleLists(*form.Find("picTab", 1));
  form.okButton = &form.root.Add(ControlKind::Button, "cmdOK", "Save", {1, 1});
  form.cancelButton = &form.root.Add(ControlKind::Button, "cmdCancel", "Cancel", {1, 2});
  std::int16_t number = 0;
  form.ForEach([&number](Control& control) { control.tabIndex = number++; });
  strip.click = [&strip] {
    for (const auto& page : strip.children)
      page->visible = page->tag == strip.keys[static_cast<std::size_t>(strip.listIndex)];
  };
}

}  // namespace tessary
