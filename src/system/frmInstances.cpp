#include "system/frmInstances.h"

#include <algorithm>
#include <vector>

#include "system/Conversions.h"
#include "system/modInstances.h"
#include "ui/modLocalize.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

class frmInstances {
 public:
  frmInstances(Run& run, const Dictionary& instances) : run_(run) {
    form_.root.caption = "[L157]Select Instance";
    Control& list = form_.root.Add(ControlKind::ListView, "lv");
    LocalizeControl(run, form_.root);
    for (const auto& [name, value] : instances) list.keys.push_back(name);
    std::sort(list.keys.begin(), list.keys.end(), [](const std::string& one, const std::string& other) {
      return ToLower(TextOf(one)) < ToLower(TextOf(other));
    });
    for (const std::string& name : list.keys) list.list.push_back(TextOf(name));
    list.picture = "printer";
    list.listIndex = 0;
    list.doubleClick = [this] { Choose(); };
    form_.keyDown = [this](const KeyPress& press) { return HandleKey(press); };
  }

  std::string Select() {
    ShowModal(run_, form_);
    return result_;
  }

 private:
  static std::string TextOf(const std::string& name) { return name.empty() ? "[default]" : name; }

  void Choose() {
    const Control& list = form_["lv"];
    result_ = list.keys[static_cast<std::size_t>(list.listIndex)];
    form_.Unload();
  }

  bool HandleKey(const KeyPress& press) {
    if (press.key != Key::Enter && press.key != Key::Escape) return false;
    if (press.key == Key::Enter)
      Choose();
    else
      form_.Unload();
    return true;
  }

  Run& run_;
  Form form_;
  std::string result_;
};

}  // namespace

std::string SelectInstance(Run& run) { return SelectInstance(run, GetInstances(run)); }

std::string SelectInstance(Run& run, const Dictionary& instances) {
  if (instances.empty()) return {};
  if (instances.size() == 1) return instances.begin()->key;
  return frmInstances(run, instances).Select();
}

}  // namespace tessary
