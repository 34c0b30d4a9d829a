// The line between gui and its helper, and what becomes of gui when the helper goes.
#include <gtest/gtest.h>
#include <thread>

#include "desktop/FormMirror.h"
#include "desktop/ScreenDesktop.h"
#include "desktop/Wire.h"
#include "tests/desktop/SampleForm.h"
#include "tests/support/Journal.h"
#include "tests/support/SimulatedParts.h"

namespace tessary {
namespace {

TEST(Wire, EveryBeginningOfAMessageIsRead) {
  Form form;
  MakeSampleForm(form);
  FormMirror mirror(form);
  const std::string whole = mirror.Changes();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    FormState state;
    std::vector<ControlState> controls;
    wire::Reader reader(std::string_view(whole).substr(0, size));
    reader(state, controls);
    ASSERT_LE(controls.size(), whole.size());
  }
  FormState state;
  std::vector<ControlState> controls;
  wire::Reader reader(whole);
  reader(state, controls);
  ASSERT_EQ(controls.size(), 23u);
  EXPECT_EQ(controls[3].control.text, "/home/ann/out.pdf");
  EXPECT_EQ(controls[state.okButton].control.name, "cmdOK");
}

TEST(FormMirror, TellsWhatHasChangedAndWhatTheUserSeesOtherwise) {
  Form form;
  MakeSampleForm(form);
  FormMirror mirror(form);
  std::int32_t name = 0;
  while (mirror.At(name) != &form["txtName"]) ++name;
  EXPECT_FALSE(mirror.Changes().empty());
  EXPECT_TRUE(mirror.Changes().empty());

  // A field that takes no text: the user sees what was typed, until the old text comes back.
  form["txtName"].enabled = false;
  mirror.Changes();
  mirror.Apply({UserEvent::What::Typed, name, "typed", -1, {}});
  EXPECT_EQ(form["txtName"].text, "/home/ann/out.pdf");
  EXPECT_NE(mirror.Changes().find("/home/ann/out.pdf"), std::string::npos);

  // The selection is told when the focus comes, and not again.
  form["txtName"].enabled = true;
  form["txtName"].gotFocus = [&] { form["txtName"].selLength = 4; };
  const auto selects = [&mirror] { return wire::Decode<FormState>(mirror.Changes()).selects; };
  mirror.Apply({UserEvent::What::Focused, name, "", -1, {}});
  EXPECT_TRUE(selects());
  mirror.Apply({UserEvent::What::Typed, name, "typed", -1, {}});
  EXPECT_FALSE(selects());

  for (const std::int32_t nobody : {-1, 1000}) mirror.Apply({UserEvent::What::Pressed, nobody, "", -1, {}});
}

/// A helper that goes when it has got a number of messages.
class LostHelperTest : public testing::Test {
 protected:
  LostHelperTest() { Channel::MakePair(gui_, other_); }
  ~LostHelperTest() override { thread_.join(); }

  Channel GuiEnd(int messages, const std::string& said = {}, MessageKind kind = MessageKind::None) {
    thread_ = std::thread([this, messages, said, kind] {
      for (int i = 0; i < messages; ++i) other_.Receive();
      if (kind != MessageKind::None) other_.Send(kind, said);
      if (kind != MessageKind::None) other_.Receive();
      other_.Close();
    });
    return std::move(gui_);
  }

  Journal journal_;
  SimulatedDesktop terminal_{journal_};

 private:
  Channel gui_, other_;
  std::thread thread_;
};

TEST_F(LostHelperTest, ABoxThenGoesToTheTerminal) {
  Helper helper(GuiEnd(1));
  ScreenDesktop desktop(helper, terminal_);
  terminal_.attended = false;
  EXPECT_EQ(desktop.ShowBox("Sure?", "Title", box::kYesNo).button, box::kAnswerNo);
  EXPECT_FALSE(desktop.ShowBox("Still?", "Title", box::kOk).shown);
  EXPECT_EQ(terminal_.boxes.size(), 2u);
  EXPECT_EQ(desktop.PickFile({}).failure.number, failures::kCancelled);
  EXPECT_EQ(desktop.PickColor("Color", 77), 77);
}

TEST_F(LostHelperTest, AFormThatNobodySawIsNotShown) {
  Helper helper(GuiEnd(2));
  ScreenDesktop desktop(helper, terminal_);
  Form form;
  MakeSampleForm(form);
  EXPECT_FALSE(desktop.ShowForm(form));
  EXPECT_TRUE(form.IsLoaded());
}

TEST_F(LostHelperTest, AFormOnTheScreenCountsAsClosed) {
  Helper helper(GuiEnd(2, wire::Encode<std::int64_t>(42), MessageKind::FormShown));
  ScreenDesktop desktop(helper, terminal_);
  Form form;
  MakeSampleForm(form);
  std::int64_t window = 0;
  form.shown = [&] { window = form.window; };
  EXPECT_TRUE(desktop.ShowForm(form));
  EXPECT_EQ(window, 42);
  EXPECT_FALSE(form.IsLoaded());
}

}  // namespace
}  // namespace tessary
