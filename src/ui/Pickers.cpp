#include "ui/Pickers.h"

#include "system/Conversions.h"
#include "system/FileHelpers.h"
#include "system/modLog.h"
#include "ui/modLocalize.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

std::string PdfFilter(Run& run) {
  return Translate(run, "[L76]PDF Documents") + " (*.pdf)|*.pdf|" + Translate(run, "[L77]All Files") + "|*.*";
}

/// Shows a picker, once more without its suggestion where that is no possible name.
std::string Pick(Run& run, FilePicker picker) {
  Result<std::string> picked = run.host.desktop.PickFile(picker);
  if (picked.failure.number == failures::kInvalidFileName) {
    picker.fileName.clear();
    picked = run.host.desktop.PickFile(picker);
  }
  if (!picked.ok() && picked.failure.number != failures::kCancelled)
    WriteLog(run, picker.title + ": " + picked.failure.text);
  return picked.value;
}

}  // namespace

std::string BrowseForFile(Run& run, const std::string& title, const std::string& fileName, bool mustExist) {
  FilePicker picker;
  picker.title = Translate(run, title);
  picker.filter = PdfFilter(run);
  picker.fileName = fileName;
  picker.mustExist = mustExist;
  return Pick(run, picker);
}

std::string ShowSaveAs(Run& run, const std::string& fileName, bool confirmOverwrite) {
  FilePicker picker;
  picker.saves = true;
  picker.title = Translate(run, "[L75]Save PDF Document As");
  picker.filter = PdfFilter(run);
  (FolderExists(run, fileName) ? picker.folder : picker.fileName) = fileName;
  for (;;) {
    std::string chosen = Pick(run, picker);
    if (chosen.empty() || !confirmOverwrite || !FileExists(run, chosen)) return chosen;
    const std::int32_t answer =
        ShowMessage(run, GetOverwriteQuestion(run, chosen), box::kExclamation + box::kYesNo);
    if (answer == box::kAnswerYes) return chosen;
    picker.folder.clear();
    picker.fileName = chosen;
  }
}

std::string GetOverwriteQuestion(Run& run, const std::string& fileName) {
  return ReplaceAll(Translate(run,
                              "[L94]The PDF file already exists.\r\n\r\n%1\r\n\r\n"
                              "Do you want to overwrite it?"),
                    "%1", fileName);
}

std::string BrowseColor(Run& run, const std::string& currentText) {
  return ColorToHex(
      run.host.desktop.PickColor(Translate(run, "[L136]Select Watermark Color"), HexToColor(currentText)));
}

}  // namespace tessary
