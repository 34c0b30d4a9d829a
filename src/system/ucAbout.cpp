#include "system/ucAbout.h"

#include <string>

#include "system/Conversions.h"
#include "system/modCustom.h"
#include "system/modUtil.h"
#include "ui/modLocalize.h"

namespace tessary {

namespace {

void AddLabel(Run& run, Control& panel, const char* name, const std::string& text) {
  const auto row = static_cast<std::int16_t>(panel.children.size());
  Control& label = panel.Add(ControlKind::Label, name, ReplaceAll(text, "&", "&&"), {row, 0});
  if (run.labels.charset != charsets::kDefault) label.font.charset = run.labels.charset;
}

/// Path and age of the running program.
std::string ProgramText(Run& run) {
  const std::string& file = run.host.programFile;
  const auto found = run.host.files.Find(file);
  const std::string modified = found ? DateTimeStamp(LocalDateTime(run.host, found->modified)) : std::string();
  return Translate(run, "[L74]File") + ": " + file + "\r\n(" + modified + ")";
}

}  // namespace

void FillAboutPanel(Run& run, Control& panel) {
  AddLabel(run, panel, "lblPrinterName", GetProductName());
  AddLabel(run, panel, "lblVersion", Translate(run, "[L73]Version") + " " + GetVersion() + " ");
  AddLabel(run, panel, "lblCopyright", GetCopyright());
  AddLabel(run, panel, "lblExeFile", ProgramText(run));
  Control& donate = panel.Add(ControlKind::Button, "pbDonate", "\xE2\x99\xA5", {4, 0});
  donate.toolTip = GetVendorSite();
  donate.visible = ToLower(GetCompanyName()) == "tessary";
  donate.click = [&run] {
    ShellOpen(run, "https://" + GetVendorSite() + "/dispatch/?action=Donate&productid=pdf");
  };
}

}  // namespace tessary
