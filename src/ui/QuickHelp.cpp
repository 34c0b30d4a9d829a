#include "ui/QuickHelp.h"

#include <utility>

#include "system/Conversions.h"
#include "ui/modLocalize.h"

namespace tessary {

namespace {

using Event = std::function<void()> Control::*;

/// A control, or all members of a control array, and what is told about it.
struct Topic {
  const char* control;
  const char* topic;
  Event event = &Control::gotFocus;
};

constexpr Topic kTopics[] = {
    {"txtPDFFileName", "pdffilename"},
    {"cmdBrowsePDFFileName", "browsepdf"},
    {"cmdAppendFileName", "browsepdf"},
    {"cmdSuperimposeFileName", "browsepdf"},
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
    {"cbWatermarkHorizontalPosition", "watermarkposition"},
    {"txtWatermarkVerticalAdjustment", "watermarkposition"},
    {"txtWatermarkHorizontalAdjustment", "watermarkposition"},
    {"txtAppendFileName", "appendfilename"},
    {"cbAppendPosition", "appendposition"},
    {"txtSuperimposeFileName", "superimposefilename"},
    {"txtOwnerPassword", "ownerpassword"},
    {"txtUserPassword", "userpassword"},
    {"cbKeyLength", "keylength"},
    {"chkPermissions", "setpermissions"},
    {"cbPermissionsPrint", "permissionsprint"},
    {"chkPermissionsCopy", "permissionscopy", &Control::click},  // passing by with the Tab key tells nothing
    {"chkOpenFolder", "openfolder"},
    {"cbZoom", "zoom"},
    {"cmdMacro", "macros"},
    {"cmdOK", "ok"},
    {"cmdCancel", "cancel"},
    {"cmdReset", "defaults"},
};

/// A caption that shows the text as it is.
std::string Caption(const std::string& text) { return ReplaceAll(text, "&", "&&"); }

}  // namespace

void ShowQuickHelp(Run& run, Form& form, const std::string& topic) {
  std::string text = Translate(run, "[QH_" + topic + "]");
  if (text.empty()) text = Translate(run, "[L87]No Help Available") + "\r\n[" + topic + "]";
  const std::size_t end = text.find("\r\n");
  form["lblHelpHeading"].caption = Caption(text.substr(0, end));
  form["lblHelpContent"].caption = end == std::string::npos ? std::string() : Caption(text.substr(end + 2));
}

void AttachQuickHelp(Run& run, Form& form) {
  for (const Topic& row : kTopics) {
    form.ForEach([&](Control& control) {
      if (control.name != row.control) return;
      std::function<void()>& event = control.*row.event;
      event = [&run, &form, topic = row.topic, before = std::exchange(event, {})] {
        if (before) before();
        ShowQuickHelp(run, form, topic);
      };
    });
  }
}

}  // namespace tessary
