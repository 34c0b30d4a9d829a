#include "ui/Tabs.h"

#include <algorithm>

#include "system/modUtil.h"
#include "ui/modLocalize.h"

namespace tessary {

namespace {

void Step(Form& form, Control& strip, std::int32_t by, bool around) {
  const auto count = static_cast<std::int32_t>(strip.keys.size());
  if (count == 0) return;
  const std::int32_t wanted = strip.listIndex + by;
  if (around)
    form.SetListIndex(strip, (wanted + count) % count);
  else if (wanted >= 0 && wanted < count)
    form.SetListIndex(strip, wanted);
}

}  // namespace

Control& AddPage(Control& strip, const TabPage& page) {
  Control& panel = strip.Add(ControlKind::Picture, "picTab");
  panel.index = page.panel;
  panel.tag = page.key;
  panel.visible = false;
  return panel;
}

void BuildTabs(Run& run, Control& strip, std::span<const TabPage> pages, const std::vector<std::string>& hidden,
               std::string_view padding) {
  strip.keys.clear();
  strip.list.clear();
  strip.listIndex = -1;
  for (const TabPage& page : pages) {
    if (IsInArray(page.key, hidden)) continue;
    strip.keys.emplace_back(page.key);
    strip.list.push_back(std::string(padding).append(Translate(run, page.caption)).append(padding));
  }
}

void ShowSelectedPage(Control& strip) {
  const auto selected = static_cast<std::size_t>(strip.listIndex);  // none is larger than any
  for (const auto& page : strip.children)
    page->visible = selected < strip.keys.size() && page->tag == strip.keys[selected];
}

void SelectTab(Form& form, Control& strip, std::string_view key) {
  const auto tab = std::find(strip.keys.begin(), strip.keys.end(), key);
  if (tab != strip.keys.end()) form.SetListIndex(strip, static_cast<std::int32_t>(tab - strip.keys.begin()));
}

bool HandleTabKey(Form& form, Control& strip, const KeyPress& press) {
  switch (press.key) {
    case Key::PageUp:
    case Key::PageDown:
      // A field must not act on them either.
      if (press.control) Step(form, strip, press.key == Key::PageUp ? -1 : 1, false);
      return true;
    case Key::Tab:
      // Shift alone leaves the key to the focus, which goes back with it.
      if (!press.control && !press.alt) return false;
      Step(form, strip, press.shift ? -1 : 1, true);
      return true;
    default:
      return false;
  }
}

}  // namespace tessary
