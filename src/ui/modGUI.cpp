#include "ui/modGUI.h"

#include <algorithm>
#include <vector>

#include "system/Conversions.h"
#include "system/modCustom.h"
#include "system/modUtil.h"
#include "ui/Pickers.h"
#include "ui/Validators.h"
#include "ui/WatermarkPreview.h"

namespace tessary {

namespace {

/// Fields whose text is selected when they receive the focus.
constexpr const char* kSelectedFields[] = {"txtPDFFileName",
                                           "txtAppendFileName",
                                           "txtSuperimposeFileName",
                                           "txtAuthor",
                                           "txtTitle",
                                           "txtSubject",
                                           "txtKeywords",
                                           "txtOwnerPassword",
                                           "txtUserPassword",
                                           "txtWatermarkText",
                                           "txtWatermarkColor",
                                           "txtWatermarkFontSize",
                                           "txtWatermarkOutlineWidth",
                                           "txtWatermarkVerticalAdjustment",
                                           "txtWatermarkHorizontalAdjustment"};

/// Bytes of UTF-8 that begin a character.
bool BeginsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

/// Has a field take the file that its button asks for.
void AttachFileButton(Run& run, Form& form, const char* button, const char* field, const char* title,
                      bool mustExist) {
  form[button].click = [&run, &form, field, title, mustExist] {
    Control& control = form[field];
    const std::string file = BrowseForFile(run, title, run.host.paths.Native(control.text), mustExist);
    if (!file.empty()) form.SetText(control, file);
  };
}

void NumberControls(Control& container, std::int16_t& next) {
  std::vector<Control*> order;
  for (const auto& child : container.children) order.push_back(child.get());
  std::stable_sort(order.begin(), order.end(), [](const Control* one, const Control* other) {
    return one->place.row != other->place.row ? one->place.row < other->place.row
                                              : one->place.column < other->place.column;
  });
  for (Control* control : order) {
    control->tabIndex = next++;
    NumberControls(*control, next);
  }
}

}  // namespace

void AddElements(Control& container, std::span<const Element> elements) {
  for (const Element& element : elements)
    container.Add(element.kind, element.name, element.caption, element.place).index = element.index;
}

void SelectTextBoxContents(Control& control) {
  control.selStart = 0;
  control.selLength =
      static_cast<std::int32_t>(std::count_if(control.text.begin(), control.text.end(), BeginsCharacter));
}

std::string GetProductCaption(Run& run) {
  const std::string& instance = run.job.InstanceName;
  return GetProductName() + (instance.empty() ? "" : " - [" + instance + "]");
}

void AttachSharedEvents(Run& run, Form& form, const char* backgroundTitle) {
  AttachValidators(form);
  AttachWatermarkPreview(form);
  for (const char* field : kSelectedFields) {
    Control& control = form[field];
    control.gotFocus = [&control] { SelectTextBoxContents(control); };
  }
  for (const char* field : {"txtPDFFileName", "txtAppendFileName", "txtSuperimposeFileName"}) {
    Control& control = form[field];
    control.change = [&control] { control.toolTip = control.text; };
  }
  // The file to append to need not be there yet: a job may make it.
  AttachFileButton(run, form, "cmdAppendFileName", "txtAppendFileName", "[L79]Select a PDF File", false);
  AttachFileButton(run, form, "cmdSuperimposeFileName", "txtSuperimposeFileName", backgroundTitle, true);
  form["cmdBrowseWatermarkColor"].click = [&run, &form] {
    form.SetText(form["txtWatermarkColor"], BrowseColor(run, GetPreviewColor(form)));
  };
}

void SetTabOrderByPosition(Form& form) {
  std::int16_t next = 0;
  NumberControls(form.root, next);
}

void ApplyControlLists(Form& form, Dictionary& config) {
  const std::vector<std::string> hidden = Split(config.Text("hidecontrols"), ',');
  const std::vector<std::string> disabled = Split(config.Text("disablecontrols"), ',');
  form.ForEach([&](Control& control) {
    if (control.name.empty()) return;
    if (IsInArray(control.name, hidden)) control.visible = false;
    if (IsInArray(control.name, disabled)) control.enabled = false;
  });
}

}  // namespace tessary
