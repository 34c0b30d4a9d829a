// The form model: what a dialog is made of, without a screen. The logic of the dialogs works on it, and a
// renderer shows it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessary {

enum class ControlKind {
  Form,
  Frame,    ///< a group with a caption
  Picture,  ///< a panel without one
  TabStrip,
  Label,
  Button,
  TextField,
  CheckBox,
  Option,     ///< one choice of a group
  DropDown,   ///< a list that offers its entries alone
  EntryList,  ///< a drop-down list with free entry
  ListBox,
  ListView,
  Shape,
};

/// Character sets of a font, in the numbering of Windows.
namespace charsets {
inline constexpr std::int16_t kDefault = 0;
inline constexpr std::int16_t kJapanese = 128;
inline constexpr std::int16_t kKorean = 130;
}  // namespace charsets

struct Font {
  std::string name;  ///< empty: the renderer's own
  std::int16_t charset = charsets::kDefault;
};

/// A control, or a whole form. A text that a kind does not have stays empty.
struct Control {
  ControlKind kind = ControlKind::Form;
  std::string name{};
  std::string caption{};
  std::string toolTip{};
  Font font{};
  bool visible = true;
  bool enabled = true;
  std::vector<Control> children{};  ///< in the order in which they were put on the form
};

}  // namespace tessary
