#include "ui/Binding.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>

#include "config/modConfig.h"
#include "config/modMacros.h"
#include "system/Conversions.h"

namespace tessary {

namespace {

struct Row;
using WayIn = void (*)(const Row& row, Form& form, Control& control, const std::string& value);
using WayOut = std::string (*)(const Row& row, const PathStyle& style, Form& form, const Control& control);
using Words = std::span<const char* const>;

enum class Owner { Both, Create, Options };

/// One control, or the members of a control array, and one key. A way that is null is not taken.
struct Row {
  const char* control;
  const char* key;
  Owner owner;
  WayIn in;
  WayOut out;
  Words words = {};          ///< of option buttons: what the members stand for, the first for anything else
  std::int32_t unknown = 0;  ///< the entry of a list for a value that it does not hold
  const char* none = "";     ///< the setting of a list without a selection
};

// Texts

void TextIn(const Row&, Form& form, Control& control, const std::string& value) {
  form.SetText(control, value);
}

void ColorIn(const Row&, Form& form, Control& control, const std::string& value) {
  form.SetText(control, ToUpper(value));
}

std::string TextOut(const Row&, const PathStyle&, Form&, const Control& control) {
  return TrimBlanks(control.text);
}

std::string PathOut(const Row&, const PathStyle& style, Form&, const Control& control) {
  return NativeOutsideMacros(style, TrimBlanks(control.text));
}

/// The blanks of a text that is more than blanks are kept.
std::string TypedTextOut(const Row&, const PathStyle&, Form&, const Control& control) {
  return TrimBlanks(control.text).empty() ? std::string() : control.text;
}

// Numbers

std::string NumberOut(const Row&, const PathStyle&, Form&, const Control& control) {
  return control.text.empty() ? std::string() : DecimalText(LeadingNumber(control.text));
}

std::string OutlineWidthOut(const Row&, const PathStyle&, Form&, const Control& control) {
  const double width = LeadingNumber(control.text);
  return width < 0 ? std::string() : DecimalText(width);
}

/// What is not written plainly is lost.
std::string AdjustmentOut(const Row&, const PathStyle&, Form&, const Control& control) {
  std::string number = DecimalText(LeadingNumber(control.text));
  return number == control.text ? number : std::string();
}

// Check boxes and option buttons

void CheckedUnlessNoIn(const Row&, Form& form, Control& control, const std::string& value) {
  form.SetChecked(control, ToLower(value) != "no");
}

void CheckedIfYesIn(const Row&, Form& form, Control& control, const std::string& value) {
  form.SetChecked(control, ToLower(value) == "yes");
}

std::string CheckOut(const Row&, const PathStyle&, Form&, const Control& control) {
  return control.checked ? "yes" : "no";
}

void OptionIn(const Row& row, Form& form, Control&, const std::string& value) {
  const auto word = std::find(row.words.begin(), row.words.end(), ToLower(value));
  const auto member = word == row.words.end() ? 0 : word - row.words.begin();
  if (Control* option = form.Find(row.control, static_cast<std::int16_t>(member)))
    form.SetChecked(*option, true);
}

std::string OptionOut(const Row& row, const PathStyle&, Form& form, const Control&) {
  for (std::size_t i = 0; i < row.words.size(); ++i)
    if (const Control* option = form.Find(row.control, static_cast<std::int16_t>(i)); option && option->checked)
      return row.words[i];
  return row.words.front();
}

// Lists

bool HasEntry(const Control& control, std::int32_t index) {
  return index >= 0 && static_cast<std::size_t>(index) < control.keys.size();
}

void ListIn(const Row& row, Form& form, Control& control, const std::string& value) {
  const auto key = std::find(control.keys.begin(), control.keys.end(), ToLower(value));
  const auto index = key == control.keys.end() ? row.unknown : key - control.keys.begin();
  if (HasEntry(control, static_cast<std::int32_t>(index)))
    form.SetListIndex(control, static_cast<std::int32_t>(index));
}

std::string ListOut(const Row& row, const PathStyle&, Form&, const Control& control) {
  return HasEntry(control, control.listIndex) ? control.keys[static_cast<std::size_t>(control.listIndex)]
                                              : row.none;
}

/// A font is known by its file or by its name, whatever the case.
void FontIn(const Row&, Form& form, Control& control, const std::string& value) {
  const std::string wanted = ToLower(value);
  std::size_t font = 0;
  while (font < control.list.size() && ToLower(control.keys[font]) != wanted &&
         ToLower(control.list[font]) != wanted)
    ++font;
  if (font == control.list.size()) font = 0;
  if (!control.list.empty()) form.SetListIndex(control, static_cast<std::int32_t>(font));
}

void RotationIn(const Row& row, Form& form, Control& control, const std::string& value) {
  const std::string rotation = ToLower(value);
  if (control.list.empty()) return;
  if (rotation.empty() || rotation == "c2c" || rotation == "-c2c")
    ListIn(row, form, control, rotation);
  else
    form.SetText(control, DecimalText(LeadingNumber(rotation)));
}

/// Here the text counts, not what is selected.
std::string RotationOut(const Row& row, const PathStyle&, Form&, const Control& control) {
  const auto entry = std::find(control.list.begin(), control.list.end(), control.text);
  if (TrimBlanks(control.text).empty()) return control.keys.empty() ? row.none : control.keys.front();
  if (entry != control.list.end()) return control.keys[static_cast<std::size_t>(entry - control.list.begin())];
  return DecimalText(LeadingNumber(control.text));
}

void ZoomIn(const Row& row, Form& form, Control& control, const std::string& value) {
  if (control.list.empty()) return;
  const double percent = LeadingNumber(value);
  if (percent > 0)
    form.SetText(control, DecimalText(percent));
  else
    ListIn(row, form, control, value);
}

std::string ZoomOut(const Row& row, const PathStyle& style, Form& form, const Control& control) {
  if (control.listIndex >= 0) return ListOut(row, style, form, control);
  const double percent = LeadingNumber(control.text);
  return percent == 0 ? std::string() : DecimalText(percent);
}

// Permissions: three controls, one number

constexpr std::int32_t kNoPermissions = 61632;  // what every such number holds
constexpr std::int32_t kPrintBit = 3, kCopyBit = 5, kPrintWellBit = 12;
constexpr std::int32_t kNotAllowed = 0, kLowQuality = 1, kHighQuality = 2;  // entries of the list

/// The bits of the setting; numbers that are written unsigned are taken as well.
std::int32_t PermissionsOf(const std::string& value) {
  const double number = LeadingNumber(value);
  return std::abs(number) < 9e18 ? static_cast<std::int32_t>(static_cast<std::int64_t>(number)) : 0;
}

bool HasBit(std::int32_t permissions, std::int32_t position) { return (permissions & Bit(position)) != 0; }

void PermissionsIn(const Row&, Form& form, Control& control, const std::string& value) {
  form.SetChecked(control, LeadingNumber(value) != 0);
}

void PrintPermissionIn(const Row&, Form& form, Control& control, const std::string& value) {
  const std::int32_t permissions = PermissionsOf(value);
  std::int32_t entry = kNotAllowed;
  if (permissions == 0 || (HasBit(permissions, kPrintBit) && HasBit(permissions, kPrintWellBit)))
    entry = kHighQuality;
  else if (HasBit(permissions, kPrintBit))
    entry = kLowQuality;
  if (HasEntry(control, entry)) form.SetListIndex(control, entry);
}

void CopyPermissionIn(const Row&, Form& form, Control& control, const std::string& value) {
  const std::int32_t permissions = PermissionsOf(value);
  form.SetChecked(control, permissions == 0 || HasBit(permissions, kCopyBit));
}

std::string PermissionsOut(const Row&, const PathStyle&, Form& form, const Control& control) {
  if (!control.checked) return {};
  const Control* const print = form.Find("cbPermissionsPrint");
  const Control* const copy = form.Find("chkPermissionsCopy");
  std::int32_t permissions = kNoPermissions;
  if (print && print->listIndex >= kLowQuality) permissions += Bit(kPrintBit);
  if (print && print->listIndex == kHighQuality) permissions += Bit(kPrintWellBit);
  if (copy && copy->checked) permissions += Bit(kCopyBit);
  return std::to_string(permissions);
}

std::string PermissionsOrDefaultOut(const Row& row, const PathStyle& style, Form& form,
                                    const Control& control) {
  return control.checked ? PermissionsOut(row, style, form, control) : GetDefaultSetting("permissions");
}

constexpr const char* kShowPdf[] = {"ask", "yes", "no"};
constexpr const char* kShowSaveAs[] = {"nofile", "always", "never"};
constexpr const char* kShowSettings[] = {"always", "never"};

using enum Owner;

constexpr Row kRows[] = {
    {"txtPDFFileName", "output", Both, TextIn, PathOut},
    {"cbQuality", "target", Both, ListIn, ListOut},
    {"chkConfirmOverwrite", "confirmoverwrite", Options, CheckedUnlessNoIn, CheckOut},
    {"chkOpenFolder", "openfolder", Both, CheckedIfYesIn, CheckOut},
    {"optShowPDF", "showpdf", Options, OptionIn, OptionOut, kShowPdf},
    {"chkShowPDF", "showpdf", Create, CheckedUnlessNoIn, CheckOut},
    {"chkRememberLastFileName", "rememberlastfilename", Options, CheckedUnlessNoIn, CheckOut},
    {"chkRememberLastFolderName", "rememberlastfoldername", Options, CheckedUnlessNoIn, CheckOut},
    {"optShowDialog", "showsaveas", Options, OptionIn, OptionOut, kShowSaveAs},
    {"rbShowSettings", "showsettings", Options, OptionIn, OptionOut, kShowSettings},
    {"chkSuppressErrors", "suppresserrors", Options, CheckedIfYesIn, CheckOut},
    {"txtAuthor", "author", Both, TextIn, TextOut},
    {"txtTitle", "title", Both, TextIn, TextOut},
    {"txtSubject", "subject", Both, TextIn, TextOut},
    {"txtKeywords", "keywords", Both, TextIn, TextOut},
    {"chkUseDefaultAuthor", "usedefaultauthor", Options, CheckedIfYesIn, CheckOut},
    {"chkUseDefaultTitle", "usedefaulttitle", Options, CheckedIfYesIn, CheckOut},
    {"txtWatermarkText", "watermarktext", Both, TextIn, TypedTextOut},
    {"cbWatermarkFontName", "watermarkfontname", Both, FontIn, ListOut},
    {"txtWatermarkFontSize", "watermarkfontsize", Both, TextIn, NumberOut},
    {"cbWatermarkRotation", "watermarkrotation", Both, RotationIn, RotationOut, {}, 0, "c2c"},
    {"txtWatermarkColor", "watermarkcolor", Both, ColorIn, TypedTextOut},
    {"txtWatermarkOutlineWidth", "watermarkoutlinewidth", Both, TextIn, OutlineWidthOut},
    {"cbWatermarkLayer", "watermarklayer", Both, ListIn, ListOut},
    {"cbWatermarkVerticalPosition", "watermarkverticalposition", Both, ListIn, ListOut},
    {"cbWatermarkHorizontalPosition", "watermarkhorizontalposition", Both, ListIn, ListOut},
    {"txtWatermarkVerticalAdjustment", "watermarkverticaladjustment", Both, TextIn, AdjustmentOut},
    {"txtWatermarkHorizontalAdjustment", "watermarkhorizontaladjustment", Both, TextIn, AdjustmentOut},
    {"txtAppendFileName", "mergefile", Both, TextIn, PathOut},
    // Read from one key and written to another: only the second has a meaning for the job.
    {"cbAppendPosition", "appendposition", Both, ListIn, nullptr},
    {"cbAppendPosition", "mergeposition", Both, nullptr, ListOut, {}, 0, "bottom"},
    {"txtSuperimposeFileName", "superimpose", Both, TextIn, PathOut},
    {"txtOwnerPassword", "ownerpassword", Both, TextIn, TextOut},
    {"txtUserPassword", "userpassword", Both, TextIn, TextOut},
    {"cbKeyLength", "keylength", Both, ListIn, ListOut, {}, 1, "128"},
    {"chkPermissions", "permissions", Both, PermissionsIn, nullptr},
    {"cbPermissionsPrint", "permissions", Both, PrintPermissionIn, nullptr},
    {"chkPermissionsCopy", "permissions", Both, CopyPermissionIn, nullptr},
    {"chkPermissions", "permissions", Options, nullptr, PermissionsOut},
    {"chkPermissions", "permissions", Create, nullptr, PermissionsOrDefaultOut},
    {"cbZoom", "zoom", Both, ZoomIn, ZoomOut},
};

bool IsIn(const Row& row, Dialog dialog) {
  return row.owner == Both || (row.owner == Create) == (dialog == Dialog::Create);
}

void TakeIn(const Row& row, Form& form, Dictionary& settings) {
  Control* const control = form.Find(row.control);
  if (row.in == nullptr || control == nullptr) return;
  row.in(row, form, *control, TrimBlanks(settings.Exists(row.key) ? settings.Text(row.key) : std::string()));
}

}  // namespace

void SettingsToControls(Form& form, Dialog dialog, Dictionary& settings) {
  for (const Row& row : kRows)
    if (IsIn(row, dialog)) TakeIn(row, form, settings);
}

void SettingToControl(Form& form, std::string_view control, Dictionary& settings) {
  for (const Row& row : kRows)
    if (row.control == control) TakeIn(row, form, settings);
}

void ControlsToSettings(Run& run, Form& form, Dialog dialog, Dictionary& settings) {
  for (const Row& row : kRows) {
    const Control* const control = form.Find(row.control);
    if (IsIn(row, dialog) && row.out != nullptr && control != nullptr)
      settings.Set(row.key, row.out(row, run.host.paths, form, *control));
  }
}

}  // namespace tessary
