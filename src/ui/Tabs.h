// A tab strip and its pages. The strip holds the keys of the tabs that are there; its children are the pages,
// each with the key of its tab.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "system/Run.h"
#include "ui/Form.h"

namespace tessary {

struct TabPage {
  const char* key;
  const char* caption;  ///< tagged
  std::int16_t panel;   ///< index of the page in the control array "picTab"
};

/// Puts an empty page on the strip. It is hidden.
Control& AddPage(Control& strip, const TabPage& page);

/// Gives the strip its tabs, none selected: those of `pages` whose keys are not in `hidden`, with `padding` on
/// both sides of their captions. A strip may end up without any.
void BuildTabs(Run& run, Control& strip, std::span<const TabPage> pages, const std::vector<std::string>& hidden,
               std::string_view padding);

/// Shows the page of the selected tab and hides the others; for the strip's click event.
void ShowSelectedPage(Control& strip);

/// Selects the tab of that key, if it is there.
void SelectTab(Form& form, Control& strip, std::string_view key);

/// The keyboard's way through the tabs; for the form's keyDown event. Ctrl with Page Up and Page Down goes to
/// the neighbour, Ctrl with Tab around. True: the key is swallowed, as Page Up and Page Down always are.
bool HandleTabKey(Form& form, Control& strip, const KeyPress& press);

}  // namespace tessary
