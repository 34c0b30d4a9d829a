// The form model: what a dialog is made of, and what happens to it, without a screen. The logic of a dialog
// works on it alone; a renderer shows any form and reports what the user does through the same functions that a
// test calls.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessary {

enum class ControlKind {
  Form,
  Frame,    ///< a group with a caption
  Picture,  ///< a panel without one; the pages of a tab strip are its children
  TabStrip,
  Label,
  Button,
  TextField,
  CheckBox,
  Option,     ///< one choice among its siblings of the same name
  DropDown,   ///< a list that offers its entries alone
  EntryList,  ///< a drop-down list with free entry
  ListBox,
  ListView,
  Shape,  ///< a filled rectangle
};

/// Character sets of a font, in the numbering of Windows.
namespace charsets {
inline constexpr std::int16_t kDefault = 0;
inline constexpr std::int16_t kJapanese = 128;
inline constexpr std::int16_t kKorean = 130;
}  // namespace charsets

struct Font {
  std::string name{};  ///< empty: the renderer's own
  std::int16_t charset = charsets::kDefault;
  bool bold = false;
};

/// The cells of the container's grid that a control takes. Columns without a field are as wide as they need.
struct Place {
  std::int16_t row = 0;
  std::int16_t column = 0;
  std::int16_t columns = 1;
};

/// Pixels at 96 dpi, counted from the container's top left corner.
struct Box {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t width = 0;   ///< 0: the renderer's own size
  std::int32_t height = 0;  ///< 0: the renderer's own size
};

/// A control, or a whole form. What a kind does not have stays as it is here. Caption, visibility and the like
/// are plain fields; what raises events is changed through the Form.
struct Control {
  ControlKind kind = ControlKind::Form;
  std::string name{};      ///< shared by the members of a control array
  std::int16_t index = 0;  ///< the member of the control array
  std::string caption{};   ///< "&" stands before the letter that reaches the control with Alt
  std::string toolTip{};
  std::string tag{};  ///< of a tab strip's page: the key of its tab
  Font font{};
  bool visible = true;
  bool enabled = true;
  bool tabStop = true;
  std::int16_t tabIndex = 0;  ///< the Tab key goes by these
  Place place{};
  Box box{};  ///< of a Shape, and the size of its Picture; a Picture with a mere height scrolls within it

  std::string text{};          ///< TextField, EntryList
  std::int32_t maxLength = 0;  ///< characters; 0: no limit
  std::int32_t selStart = 0;   ///< the selection of a TextField, in characters
  std::int32_t selLength = 0;
  bool multiLine = false;           ///< a Label that wraps
  bool checked = false;             ///< CheckBox, Option
  std::vector<std::string> list{};  ///< the entries of a list, the captions of a tab strip
  std::vector<std::string> keys{};  ///< the keys of a tab strip's tabs, the values of a list
  std::int32_t listIndex = -1;      ///< -1: none, or free text
  std::int32_t fillColor = 0;       ///< of a Shape: red + 256 green + 65536 blue
  std::string picture{};  ///< of a Picture or a ListView's entries: one of the program's; may be empty

  std::function<void()> change{};  ///< the text has changed
  std::function<void()> click{};   ///< pressed, checked, or another entry or tab selected
  std::function<void()> doubleClick{};
  std::function<void()> gotFocus{};
  std::function<void()> lostFocus{};

  std::vector<std::unique_ptr<Control>> children{};  ///< in the order in which they were put on the form

  /// Puts a new control at the end of the children.
  Control& Add(ControlKind childKind, std::string childName, std::string childCaption = {},
               Place childPlace = {});
};

enum class Key {
  Other,  ///< a renderer may keep these to itself
  Tab,
  Enter,
  Escape,
  PageUp,
  PageDown
};

struct KeyPress {
  Key key = Key::Other;
  bool shift = false;
  bool control = false;
  bool alt = false;
};

/// A form and its events. All its controls are there before it is shown. Functions that the logic calls act
/// whether or not the control is enabled; those of the user do nothing on a control that is disabled or not on
/// display.
class Form {
 public:
  Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  Control root{};  ///< its caption is the title of the window

  Control* okButton = nullptr;                     ///< answers the Enter key; null: none does
  Control* cancelButton = nullptr;                 ///< answers the Escape key; null: none does
  std::function<bool(const KeyPress&)> keyDown{};  ///< sees every key first; true swallows it
  std::function<void()> shown{};                   ///< once, when the form has come onto the screen
  std::int64_t window = 0;    ///< set by the renderer while it shows the form; 0: not shown
  bool toForeground = false;  ///< ask the window system for a place on the task bar

  /// The control of that name and index anywhere on the form, or null.
  [[nodiscard]] Control* Find(std::string_view name, std::int16_t index = 0);
  /// The same for a control that is known to be there.
  [[nodiscard]] Control& operator[](std::string_view name) { return *Find(name); }
  /// Calls `visit` for the form's controls, containers before their children; not for the root.
  void ForEach(const std::function<void(Control&)>& visit);

  // The logic's: each raises the event where the value changes.
  void SetText(Control& control, const std::string& text);      ///< change; of an EntryList also no entry
  void SetChecked(Control& control, bool checked);              ///< click; its siblings of the name go off
  void SetListIndex(Control& control, std::int32_t listIndex);  ///< click; an EntryList takes its text
  void SetFocus(Control& control);                              ///< lostFocus there, gotFocus here
  void Unload() { loaded_ = false; }                            ///< ends the form
  [[nodiscard]] bool IsLoaded() const { return loaded_; }
  [[nodiscard]] Control* Focused() const { return focused_; }

  // The user's.
  void Type(Control& control, const std::string& text);   ///< focus, then the whole text is this
  void Press(Control& control);                           ///< focus, then click; a check box turns
  void Choose(Control& control, std::int32_t listIndex);  ///< focus, then an entry, or a tab
  bool PressKey(const KeyPress& press);  ///< keyDown, then the buttons of Enter and Escape; true: swallowed
  void CloseBox() { Unload(); }          ///< the window's own close button

  /// True if `control` and all its containers are visible; UserCanReach: and enabled.
  [[nodiscard]] bool IsOnDisplay(const Control& control) const;
  [[nodiscard]] bool UserCanReach(const Control& control) const;

 private:
  bool loaded_ = true;
  Control* focused_ = nullptr;
};

}  // namespace tessary
