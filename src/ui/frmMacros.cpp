#include "ui/frmMacros.h"

#include <algorithm>

#include "config/modMacros.h"
#include "system/Conversions.h"
#include "ui/modLocalize.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

constexpr std::size_t kKeyColumn = 13;  // characters

/// "<key>", and behind a tab what it stands for; fonts of one width bring the second column into line by the
/// blanks, others by the tab.
std::string LineOf(const std::string& key, const std::string& label) {
  return "<" + key + "> " + std::string(kKeyColumn - std::min(key.size(), kKeyColumn), ' ') + "\t" + label;
}

}  // namespace

frmMacros::frmMacros(Run& run) : run_(run) {
  form_.root.caption = "[L72]Macros";
  Control& list = form_.root.Add(ControlKind::ListBox, "lstMacros");
  LocalizeControl(run, form_.root);
  for (const auto& [key, label] : GetMacroList(run)) {
    list.keys.push_back(key);
    list.list.push_back(LineOf(key, SafeString(label)));
  }
  list.listIndex = 0;
  list.doubleClick = [this] { Choose(); };
  form_.keyDown = [this](const KeyPress& press) { return HandleKey(press); };
}

void frmMacros::Show() { ShowModal(run_, form_); }

void frmMacros::Choose() {
  const Control& list = form_["lstMacros"];
  const auto selected = static_cast<std::size_t>(list.listIndex);  // none is larger than any
  if (selected < list.keys.size()) SelectedMacro = "<" + list.keys[selected] + ">";
  form_.Unload();
}

bool frmMacros::HandleKey(const KeyPress& press) {
  if (press.key == Key::Enter) {
    Choose();
    return true;
  }
  if (press.key != Key::Escape) return false;
  SelectedMacro.clear();
  form_.Unload();
  return true;
}

}  // namespace tessary
