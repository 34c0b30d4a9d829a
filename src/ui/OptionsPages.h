// What stands where in the dialog "Options".
#pragma once

#include <span>

#include "ui/Form.h"
#include "ui/Tabs.h"

namespace tessary {

/// The pages, in the order of their tabs.
std::span<const TabPage> OptionsTabs();

/// Puts all controls on an empty form, with tagged captions and without values. The tab strip "tc" holds the
/// pages and has no tabs yet. The tag of a macro button names its field.
void LayOutOptions(Form& form);

}  // namespace tessary
