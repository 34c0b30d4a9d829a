#include "ui/frmPrintConfig.h"

#include <initializer_list>
#include <utility>

#include "config/modSpecialFolders.h"
#include "postscript/modSuperimpose.h"
#include "system/Conversions.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/modStealFocus.h"
#include "system/ucAbout.h"
#include "ui/Binding.h"
#include "ui/ChoiceLists.h"
#include "ui/Pickers.h"
#include "ui/PrintConfigPages.h"
#include "ui/Tabs.h"
#include "ui/WatermarkPreview.h"
#include "ui/modGUI.h"
#include "ui/modLocalize.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

constexpr const char* kExtension = ".pdf";

std::string CaptionOf(Run& run) {
  const std::string& printer = run.job.PrinterName;
  return Translate(run, "[L89]Create PDF") + " - " + (printer.empty() ? GetProductCaption(run) : printer);
}

bool HasExtension(const std::string& fileName) { return ToLower(fileName).ends_with(kExtension); }

std::string DefaultFolderFor(Run& run, const std::string& output) {
  const PathStyle& style = run.host.paths;
  std::string folder = ParentFolder(style, TrimBlanks(output));
  if (!folder.empty()) return folder;
  const auto documents = GetSpecialFolder(run, folders::kPersonal);
  return documents ? JoinPath(style, *documents, "") : std::string();
}

/// The dialog of a print job comes up ahead of the program that printed.
void BringToFront(Run& run, std::int64_t window) {
  constexpr std::uint32_t kInPlace = windows::kNoSize | windows::kNoMove;
  SetTopMost(run, window, true, kInPlace);
  SetTopMost(run, window, false, kInPlace);
  ForceForeground(run, window);
}

bool IsPlaceForFiles(Run& run, const std::string& folder) {
  return FolderExists(run, folder) || DriveExists(run, folder) || IsUncShareRoot(run.host.paths, folder);
}

}  // namespace

frmPrintConfig::frmPrintConfig(Run& run, Settings config) : run_(run), config_(std::move(config)) {
  LayOutPrintConfig(form_);
  LocalizeControl(run, form_.root);
  FillAboutPanel(run, form_["ucAbout1"]);
  Control& strip = form_["tc"];
  BuildTabs(run, strip, PrintConfigTabs(), Split(config_->Text("hidetabs"), ','), " ");
  FillLists(run, form_);
  form_.root.caption = CaptionOf(run);
  form_.toForeground = true;
  ApplyControlLists(form_, *config_);
  SetTabOrderByPosition(form_);
  AttachEvents();
  SetConfig();
  if (!strip.keys.empty()) form_.SetListIndex(strip, 0);
}

bool frmPrintConfig::Show() {
  const std::string showPdf = config_->Text("showpdf");
  // Nobody was there to answer "ask", and nobody would see the document.
  if (!ShowModal(run_, form_)) config_->Set("showpdf", showPdf);
  return accepted_;
}

void frmPrintConfig::AttachEvents() {
  AttachSharedEvents(run_, form_, "[L79]Select a PDF File");
  Control& strip = form_["tc"];
  strip.click = [&strip] { ShowSelectedPage(strip); };
  form_.shown = [this] { BringToFront(run_, form_.window); };
  form_.keyDown = [this, &strip](const KeyPress& press) { return HandleTabKey(form_, strip, press); };

  Control& output = form_["txtPDFFileName"];
  output.change = [this] { OutputChanged(); };
  output.lostFocus = [this] { LeaveOutput(); };
  form_["cmdBrowsePDFFileName"].click = [this] { BrowseOutput(); };

  Control& append = form_["txtAppendFileName"];
  append.change = [this, showPath = append.change] {
    showPath();
    UpdateControls();
  };
  form_["txtOwnerPassword"].change = form_["txtUserPassword"].change =
      form_["chkPermissions"].click = [this] { UpdateControls(); };

  form_["cmdOK"].click = [this] { Save(); };
  form_["cmdCancel"].click = [this] { form_.Unload(); };
}

void frmPrintConfig::SetConfig() {
  SettingsToControls(form_, Dialog::Create, *config_);
  defaultFolder_ = DefaultFolderFor(run_, config_->Text("output"));
  DrawWatermarkPreview(form_);
  UpdateControls();
}

void frmPrintConfig::GetConfig(Dictionary& config) {
  const PathStyle& style = run_.host.paths;
  Control& field = form_["txtPDFFileName"];
  std::string output = style.Native(TrimBlanks(field.text));
  if (!output.empty() && !HasExtension(output)) output += kExtension;
  if (ParentFolder(style, output).empty()) output = defaultFolder_ + output;
  form_.SetText(field, FullPath(run_.host, output));
  ControlsToSettings(run_, form_, Dialog::Create, config);
}

void frmPrintConfig::UpdateControls() {
  const auto enable = [this](std::initializer_list<const char*> names, bool enabled) {
    for (const char* name : names) form_[name].enabled = enabled;
  };
  enable({"cbAppendPosition", "lblAppendPosition"}, !form_["txtAppendFileName"].text.empty());
  // Nothing is protected without an owner password.
  const bool isProtected = !form_["txtOwnerPassword"].text.empty();
  enable({"cbKeyLength", "lblKeylength", "txtUserPassword", "lblUserPassword", "framePermissions",
          "chkPermissions"},
         isProtected);
  enable({"cbPermissionsPrint", "chkPermissionsCopy", "lblPermissionsPrint"},
         isProtected && form_["chkPermissions"].checked);
}

void frmPrintConfig::OutputChanged() {
  Control& field = form_["txtPDFFileName"];
  field.toolTip = field.text;
  std::string& confirmed = run_.ui.ConfirmedOutputFile;
  if (confirmed != field.text) confirmed.clear();
}

void frmPrintConfig::LeaveOutput() {
  Control& field = form_["txtPDFFileName"];
  if (!field.text.empty() && !HasExtension(field.text) &&
      !FolderExists(run_, run_.host.paths.Native(field.text)))
    form_.SetText(field, field.text + kExtension);
}

void frmPrintConfig::BrowseOutput() {
  Control& field = form_["txtPDFFileName"];
  const std::string chosen = ShowSaveAs(run_, run_.host.paths.Native(field.text), IsConfirmOverwrite(*config_));
  if (chosen.empty()) return;
  form_.SetText(field, chosen);
  run_.ui.ConfirmedOutputFile = chosen;
}

void frmPrintConfig::Save() {
  GetConfig(*config_);
  accepted_ = ValidateForm(*config_);
  if (accepted_) form_.Unload();
}

bool frmPrintConfig::FailAt(const char* tab, const char* field, const std::string& message) {
  if (!message.empty()) ShowMessage(run_, message, box::kExclamation);
  SelectTab(form_, form_["tc"], tab);
  if (form_.IsOnDisplay(form_[field])) form_.SetFocus(form_[field]);
  return false;
}

bool frmPrintConfig::IsOutputGood(Dictionary& config) {
  const std::string& output = form_["txtPDFFileName"].text;
  const auto fail = [this](const std::string& message) { return FailAt("general", "txtPDFFileName", message); };
  if (output.empty() || FolderExists(run_, output))
    return fail(Translate(run_,
                          "[L90]The output PDF file must be specified. Please enter the path of a valid "
                          "file name or use the browse button."));
  if (FileExists(run_, output)) {
    const bool ask = IsConfirmOverwrite(config) && output != run_.ui.ConfirmedOutputFile;
    return !ask ||
           ShowMessage(run_, GetOverwriteQuestion(run_, output), box::kExclamation + box::kYesNoCancel) ==
               box::kAnswerYes ||
           fail({});
  }
  return IsPlaceForFiles(run_, ParentFolder(run_.host.paths, output)) ||
         fail(Translate(run_,
                        "[L91]The output folder does not exist. Please enter the path of a valid folder "
                        "or use the browse button."));
}

bool frmPrintConfig::IsAppendGood(Dictionary& config) {
  const std::string file = config.Text("mergefile");
  // The output file itself may be named before it is there.
  return file.empty() || file == config.Text("output") || FileExists(run_, file) ||
         FailAt("merge", "txtAppendFileName",
                Translate(run_, "[L92]The PDF you want to append does not exist."));
}

bool frmPrintConfig::IsBackgroundGood(Dictionary& config) {
  const std::string value = config.Text("superimpose");
  if (value.empty()) return true;
  const Dictionary entries = ParseSuperimposeValue(value);
  for (const auto& [number, entry] : entries) {
    const std::string file = entry.AsDictionary()->Text("filename");
    if (!FileExists(run_, file))
      return FailAt("merge", "txtSuperimposeFileName",
                    Translate(run_, "[L93]The PDF you want to use as background does not exist.") +
                        "\r\n\r\n\"" + file + "\"");
  }
  return true;
}

bool frmPrintConfig::ValidateForm(Dictionary& config) {
  return IsOutputGood(config) && IsAppendGood(config) && IsBackgroundGood(config);
}

}  // namespace tessary
