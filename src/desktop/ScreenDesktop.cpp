#include "desktop/ScreenDesktop.h"

#include "desktop/FormMirror.h"
#include "desktop/Wire.h"
#include "host/posix/ChildProcess.h"

namespace tessary {

namespace {

/// The queue has run only just when it ran within this time.
constexpr std::int64_t kPumpMilliseconds = 10;

/// Takes the form off the screen again, also when one of its events fails.
class OnScreen {
 public:
  OnScreen(Helper& helper, Form& form) : helper_(helper), form_(form) {}
  OnScreen(const OnScreen&) = delete;
  OnScreen& operator=(const OnScreen&) = delete;
  ~OnScreen() {
    helper_.Send(MessageKind::CloseForm);
    form_.window = 0;
  }

 private:
  Helper& helper_;
  Form& form_;
};

}  // namespace

BoxAnswer ScreenDesktop::ShowBox(const std::string& text, const std::string& caption, std::int32_t flags) {
  if (helper_.Start()) {
    const Message answer =
        helper_.SendAndWait(MessageKind::ShowBox, wire::Encode(BoxRequest{text, caption, flags}));
    if (answer.kind == MessageKind::BoxAnswered) return {wire::Decode<std::int32_t>(answer.content), true};
  }
  return terminal_.ShowBox(text, caption, flags);
}

bool ScreenDesktop::ShowForm(Form& form) {
  if (!helper_.Start()) return false;
  FormMirror mirror(form);
  const OnScreen onScreen(helper_, form);
  helper_.Send(MessageKind::ShowForm, mirror.Changes());
  Message message = helper_.SendAndWait(MessageKind::Resume, wire::Encode(KeyAnswer{}));
  while (message.kind != MessageKind::None) {
    bool swallowed = true;
    if (message.kind == MessageKind::FormShown) {
      form.window = wire::Decode<std::int64_t>(message.content);
      if (form.shown) form.shown();
    } else {
      swallowed = mirror.Apply(wire::Decode<UserEvent>(message.content));
    }
    if (!form.IsLoaded()) break;
    if (const std::string changes = mirror.Changes(); !changes.empty())
      helper_.Send(MessageKind::UpdateForm, changes);
    message = helper_.SendAndWait(MessageKind::Resume, wire::Encode(KeyAnswer{swallowed}));
  }
  if (message.kind == MessageKind::None) {
    if (form.window == 0) return terminal_.ShowForm(form);
    form.CloseBox();
  }
  return true;
}

Result<std::string> ScreenDesktop::PickFile(const FilePicker& picker) {
  if (!helper_.Start()) return terminal_.PickFile(picker);
  const Message answer = helper_.SendAndWait(MessageKind::PickFile, wire::Encode(picker));
  if (answer.kind != MessageKind::FilePicked) return terminal_.PickFile(picker);
  const auto picked = wire::Decode<FileAnswer>(answer.content);
  if (picked.failure == 0) return picked.path;
  return Failure{picked.failure,
                 picked.failure == failures::kCancelled ? "Cancelled" : "No possible file name"};
}

std::int32_t ScreenDesktop::PickColor(const std::string& title, std::int32_t color) {
  if (!helper_.Start()) return terminal_.PickColor(title, color);
  const Message answer = helper_.SendAndWait(MessageKind::PickColor, wire::Encode(ColorRequest{title, color}));
  if (answer.kind != MessageKind::ColorPicked) return terminal_.PickColor(title, color);
  return wire::Decode<std::int32_t>(answer.content);
}

void ScreenDesktop::PumpMessages() {
  const std::int64_t now = MonotonicMilliseconds();
  if (now - lastPump_ < kPumpMilliseconds) return;
  lastPump_ = now;
  helper_.Pump();
  terminal_.PumpMessages();
}

}  // namespace tessary
