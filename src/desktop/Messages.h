// What gui and its helper say to each other. The helper is a program of its own that shows what gui wants
// shown: the window system, its toolkit and their faults are its alone, and gui outlives them.
//
// They take turns. gui says what is to be seen, then gives the turn away and waits; the helper shows it, waits
// for the user, tells what the user did and stands still until the turn comes back. So what a user does meets
// the logic as if both were one program.
#pragma once

#include <cstdint>
#include <string>

#include "host/Desktop.h"
#include "ui/Form.h"

namespace tessary {

enum class MessageKind : std::uint16_t {
  None,
  // To the helper. These give the turn away:
  ShowBox,    ///< BoxRequest; answered with BoxAnswered
  PickFile,   ///< FilePicker; answered with FilePicked
  PickColor,  ///< ColorRequest; answered with ColorPicked
  Resume,     ///< KeyAnswer; the last event has been handled
  // and these do not:
  ShowForm,     ///< a form as FormMirror writes it; above the former ones
  UpdateForm,   ///< what has changed on the topmost form, as FormMirror writes it
  CloseForm,    ///< the topmost one
  RaiseWindow,  ///< int64, a window; brings it to the front
  ShowTray,     ///< TrayIconRequest; shows the icon or changes it
  HideTray,     ///< takes the icon away
  ShowBalloon,  ///< BalloonRequest; TrayEvent tells what becomes of it

  // From the helper. These give the turn back:
  BoxAnswered,  ///< int32, a value of namespace box
  FilePicked,   ///< FileAnswer
  ColorPicked,  ///< int32
  FormShown,    ///< int64, its window
  FormEvent,    ///< UserEvent
  // Those behind this one do not, and may come at any time.
  Notices = 100,
  Ready,      ///< the first one: the helper has reached a display and listens
  TrayEvent,  ///< TrayEvent
};

struct Message {
  MessageKind kind = MessageKind::None;  ///< None: nothing came, and nothing will
  std::string content{};
};

struct BoxRequest {
  std::string text{};
  std::string caption{};
  std::int32_t flags = 0;
};

struct ColorRequest {
  std::string title{};
  std::int32_t color = 0;
};

struct FileAnswer {
  std::int32_t failure = 0;  ///< a value of namespace failures
  std::string path{};
};

struct TrayIconRequest {
  std::string picture{};  ///< a name of NotificationArea::IconNamed
  std::string tip{};
};

struct BalloonRequest {
  std::string title{};
  std::string text{};
};

/// What happened to the icon or its balloon.
struct TrayEvent {
  std::uint32_t what = 0;  ///< low parameter of the callback message, see namespace notify
  std::int32_t x = 0;      ///< the cursor
  std::int32_t y = 0;
};

/// What the user did on the topmost form.
struct UserEvent {
  enum class What : std::uint8_t { Focused, Typed, Pressed, Chosen, DoubleClicked, Key, Closed };

  What what = What::Closed;
  std::int32_t control = -1;  ///< counted from 0 in the order of Form::ForEach
  std::string text{};         ///< typed
  std::int32_t index = -1;    ///< chosen
  KeyPress key{};
};

struct KeyAnswer {
  bool swallowed = false;
};

/// What a form is besides its controls. The numbers are those of UserEvent::control.
struct FormState {
  std::string caption{};
  std::int32_t okButton = -1;
  std::int32_t cancelButton = -1;
  std::int32_t focused = -1;
  bool toForeground = false;
  bool selects = false;  ///< the focused field takes over its selection
};

/// A control of a form as it is to be shown.
struct ControlState {
  std::int32_t number = 0;   ///< that of UserEvent::control
  std::int32_t parent = -1;  ///< the same of its container; -1: the form itself
  Control control{};         ///< without events and children
};

void Fields(auto& archive, BoxRequest& request) { archive(request.text, request.caption, request.flags); }
void Fields(auto& archive, ColorRequest& request) { archive(request.title, request.color); }
void Fields(auto& archive, FileAnswer& answer) { archive(answer.failure, answer.path); }
void Fields(auto& archive, TrayIconRequest& request) { archive(request.picture, request.tip); }
void Fields(auto& archive, BalloonRequest& request) { archive(request.title, request.text); }
void Fields(auto& archive, TrayEvent& event) { archive(event.what, event.x, event.y); }
void Fields(auto& archive, KeyAnswer& answer) { archive(answer.swallowed); }
void Fields(auto& archive, KeyPress& press) { archive(press.key, press.shift, press.control, press.alt); }
void Fields(auto& archive, UserEvent& event) {
  archive(event.what, event.control, event.text, event.index, event.key);
}
void Fields(auto& archive, FilePicker& picker) {
  archive(picker.saves, picker.title, picker.filter, picker.folder, picker.fileName, picker.mustExist);
}
void Fields(auto& archive, FormState& form) {
  archive(form.caption, form.okButton, form.cancelButton, form.focused, form.toForeground, form.selects);
}
void Fields(auto& archive, Font& font) { archive(font.name, font.charset, font.bold); }
void Fields(auto& archive, Place& place) { archive(place.row, place.column, place.columns); }
void Fields(auto& archive, Box& area) { archive(area.left, area.top, area.width, area.height); }
void Fields(auto& archive, Control& control) {
  archive(control.kind, control.name, control.index, control.caption, control.toolTip, control.tag,
          control.font, control.visible, control.enabled, control.tabStop, control.tabIndex, control.place,
          control.box, control.text, control.maxLength, control.selStart, control.selLength, control.multiLine,
          control.checked, control.list, control.keys, control.listIndex, control.fillColor, control.picture);
}
void Fields(auto& archive, ControlState& state) { archive(state.number, state.parent, state.control); }

}  // namespace tessary
