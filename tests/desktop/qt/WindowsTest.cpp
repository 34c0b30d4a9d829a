// The windows of the helper, driven by key and mouse, with gui's side at the other end of the line.
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <QTreeView>
#include <gtest/gtest.h>
#include <set>
#include <thread>

#include "desktop/ScreenDesktop.h"
#include "desktop/qt/FormWindow.h"
#include "desktop/qt/MessageBoxes.h"
#include "desktop/qt/Style.h"
#include "host/posix/PosixDesktop.h"
#include "tests/desktop/SampleForm.h"

namespace tessary {
namespace {

/// Gui's side runs on a thread of its own. A form may be looked at while the windows have the turn.
class WindowsTest : public testing::Test {
 protected:
  WindowsTest() {
    Channel one, other;
    Channel::MakePair(one, other);
    helper_ = std::make_unique<Helper>(std::move(one));
    desktop_ = std::make_unique<ScreenDesktop>(*helper_, terminal_);
    server_ = std::make_unique<Server>(std::move(other));
    boxes_ = std::make_unique<MessageBoxes>(*server_);
    forms_ = std::make_unique<FormWindows>(*server_);
  }
  ~WindowsTest() override {
    if (gui_.joinable()) gui_.join();
    server_.reset();  // before the line, whose end would end the process
  }

  /// Starts `work` on gui's side and waits for a window with this title.
  QWidget* Show(const QString& title, std::function<void()> work) {
    gui_ = std::thread([this, work = std::move(work)] {
      work();
      done_ = true;
    });
    return Await(title);
  }
  static QWidget* Await(const QString& title) {
    const auto isUp = [&title] {
      QWidget* window = QApplication::activeModalWidget();
      if (window == nullptr || window->windowTitle() != title) return false;
      window->activateWindow();  // no window manager does it
      return window->isActiveWindow();
    };
    EXPECT_TRUE(QTest::qWaitFor(isUp, 20000)) << title.toStdString();
    QTest::qWait(0);
    return QApplication::activeWindow();
  }
  QWidget* ShowSample() {
    return Show("Sample", [this] { shown_ = desktop_->ShowForm(form_); });
  }
  void AwaitDone() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return done_.load(); }, 20000));
  }

  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    QTest::qWait(0);
  }
  static void Type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
  static std::string FocusName() {
    QWidget* widget = QApplication::focusWidget();
    return widget == nullptr ? "" : widget->objectName().toStdString();
  }
  template <class Widget>
  static Widget* Find(const char* name) {
    return QApplication::activeWindow()->findChild<Widget*>(QString::fromLatin1(name));
  }

  Form form_;
  bool shown_ = false;
  std::unique_ptr<ScreenDesktop> desktop_;

 private:
  PosixDesktop terminal_;
  std::unique_ptr<Helper> helper_;
  std::unique_ptr<Server> server_;
  std::unique_ptr<MessageBoxes> boxes_;
  std::unique_ptr<FormWindows> forms_;
  std::thread gui_;
  std::atomic<bool> done_ = false;
};

TEST_F(WindowsTest, EverythingIsReachedAndFilledInFromTheKeyboard) {
  MakeSampleForm(form_);
  std::vector<std::string> events;
  form_.ForEach([&events](Control& control) {
    control.lostFocus = [&events, &control] { events.push_back("left " + control.name); };
  });
  Control& name = form_["txtName"];
  name.gotFocus = [&name] { name.selLength = static_cast<std::int32_t>(name.text.size()); };
  form_.keyDown = [this](const KeyPress& press) {
    if (press.key == Key::PageDown && press.control) form_.SetListIndex(form_["tc"], 1);
    return press.key == Key::PageDown;
  };
  form_["cmdOK"].click = [this] { form_.Unload(); };
  ShowSample();

  EXPECT_EQ(FocusName(), "txtName") << "the first field, not the tab strip";
  Type("new & <b>");  // all was selected
  EXPECT_EQ(name.text, "new & <b>");
  Press(Qt::Key_Tab);
  EXPECT_EQ(FocusName(), "cmdBrowse");
  Press(Qt::Key_Tab);
  Type("E");
  EXPECT_EQ(form_["cbQuality"].listIndex, 2);
  Press(Qt::Key_Tab);
  Type("125");
  EXPECT_EQ(form_["cbZoom"].text, "125");
  EXPECT_EQ(form_["cbZoom"].listIndex, -1);
  Press(Qt::Key_Down);
  EXPECT_EQ(form_["cbZoom"].text, "Fit all");
  Press(Qt::Key_Tab);
  Type("12345");
  EXPECT_EQ(form_["txtSize"].text, "123");
  Press(Qt::Key_Tab);
  Press(Qt::Key_Space);
  EXPECT_TRUE(form_["chkShow"].checked);
  EXPECT_EQ(events, (std::vector<std::string>{"left txtName", "left cmdBrowse", "left cbQuality", "left cbZoom",
                                              "left txtSize"}));

  Press(Qt::Key_PageDown);  // swallowed
  EXPECT_EQ(form_["tc"].listIndex, 0);
  Press(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_TRUE(Find<QWidget>("lstMacros")->isVisible());
  EXPECT_FALSE(Find<QWidget>("txtName")->isVisible());
  Find<QWidget>("lstMacros")->setFocus();
  Press(Qt::Key_Down);
  EXPECT_GE(form_["lstMacros"].listIndex, 0);
  Find<QAbstractButton>("optAsk")->setFocus();
  Press(Qt::Key_Down);
  EXPECT_TRUE(form_.Find("optAsk", 1)->checked);
  EXPECT_FALSE(form_.Find("optAsk", 0)->checked);

  Press(Qt::Key_Return);
  AwaitDone();
  EXPECT_TRUE(shown_);
}

TEST_F(WindowsTest, ShowsWhatTheLogicChangesAndTellsNothingOfIt) {
  MakeSampleForm(form_);
  int changes = 0;
  form_["txtName"].change = [&] {
    if (++changes > 1) return;
    form_["txtSize"].enabled = false;
    form_["cbQuality"].visible = false;
    form_["chkShow"].caption = "Other";
    form_["lblName"].toolTip = "<b>/home";
    form_["cbZoom"].list = std::vector<std::string>(10000, "An entry as long as the names of fonts");
    form_.SetListIndex(form_["cbZoom"], 9999);
    form_.SetText(form_["txtName"], "changed");
    form_.SetFocus(form_["cbZoom"]);
  };
  form_["cbZoom"].gotFocus = [&] { form_["tc"].caption = "focus came"; };
  QWidget* window = ShowSample();
  Type("x");
  QTest::qWait(0);
  EXPECT_EQ(Find<QLineEdit>("txtName")->text(), "changed");
  EXPECT_EQ(changes, 2);
  EXPECT_FALSE(Find<QWidget>("txtSize")->isEnabled());
  EXPECT_TRUE(Find<QWidget>("cbQuality")->isHidden());
  EXPECT_EQ(Find<QAbstractButton>("chkShow")->text(), "Other");
  EXPECT_TRUE(Find<QWidget>("lblName")->toolTip().contains("&lt;b&gt;"));
  EXPECT_EQ(Find<QComboBox>("cbZoom")->count(), 10000);
  EXPECT_EQ(FocusName(), "cbZoom");
  EXPECT_EQ(form_.Focused(), &form_["cbZoom"]);

  window->close();  // the window's own close button
  AwaitDone();
  EXPECT_FALSE(form_.IsLoaded());
}

TEST_F(WindowsTest, ABoxOfAFormStandsAboveIt) {
  MakeSampleForm(form_);
  std::vector<std::int32_t> answers;
  form_["cmdOK"].click = [&] {
    answers.push_back(desktop_->ShowBox("Overwrite?", "Box", box::kExclamation + box::kYesNoCancel).button);
    if (answers.back() == box::kAnswerYes) return form_.Unload();
    form_.SetFocus(form_["txtSize"]);
  };
  ShowSample();
  Press(Qt::Key_Return);
  Await("Box");
  EXPECT_EQ(QApplication::activeModalWidget(), QApplication::activeWindow());
  Press(Qt::Key_Escape);
  Await("Sample");
  EXPECT_EQ(FocusName(), "txtSize");
  Type("7");
  EXPECT_EQ(form_["txtSize"].text, "7");
  Press(Qt::Key_Return);
  Await("Box");
  QTest::keyClick(QApplication::activeWindow(), Qt::Key_Y, Qt::AltModifier);
  AwaitDone();
  EXPECT_EQ(answers, (std::vector{box::kAnswerCancel, box::kAnswerYes}));
}

/// A window with a list alone, whose Enter key and double click choose. Gives the entry; -1 after Escape.
std::int32_t ChooseFromList(Desktop& desktop) {
  Form form;
  form.root.caption = "List";
  Control& list = form.root.Add(ControlKind::ListBox, "lstMacros");
  list.list = {"<i>   \tfirst", "<a long key> \tsecond", "<w>\tthird"};
  list.listIndex = 0;
  std::int32_t chosen = -1;
  list.doubleClick = [&] {
    chosen = list.listIndex;
    form.Unload();
  };
  form.keyDown = [&](const KeyPress& press) {
    if (press.key == Key::Enter) list.doubleClick();
    if (press.key == Key::Escape) form.Unload();
    return true;
  };
  EXPECT_TRUE(desktop.ShowForm(form));
  return chosen;
}

TEST_F(WindowsTest, AListOfAFormIsWorkedFromKeyboardAndMouse) {
  MakeSampleForm(form_);
  std::vector<std::int32_t> chosen;
  form_["cmdBrowse"].click = [&] {
    chosen.push_back(ChooseFromList(*desktop_));
    form_.SetText(form_["txtName"], std::to_string(chosen.back()));
  };
  form_.cancelButton->click = [this] { form_.Unload(); };
  ShowSample();
  Press(Qt::Key_Tab);
  for (const char* way : {"keys", "mouse", "escape"}) {
    Press(Qt::Key_Space);
    QWidget* window = Await("List");
    auto* list = Find<QTreeView>("lstMacros");
    EXPECT_EQ(QApplication::focusWidget(), list);
    EXPECT_EQ(list->size(), window->size()) << "nothing stands around it";
    const auto cell = [list](int row, int column) {
      return list->visualRect(list->model()->index(row, column));
    };
    EXPECT_EQ(cell(0, 1).left(), cell(1, 1).left());
    EXPECT_EQ(list->model()->index(1, 0).data().toString(), "<a long key>");
    EXPECT_GE(cell(1, 0).width(), list->fontMetrics().horizontalAdvance("<a long key>"));
    if (*way == 'm') {
      QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, cell(2, 1).center());
      QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, cell(2, 1).center());
    } else {
      Press(Qt::Key_Down);
      Press(*way == 'k' ? Qt::Key_Return : Qt::Key_Escape);
    }
    Await("Sample");
    EXPECT_EQ(FocusName(), "cmdBrowse");
    EXPECT_EQ(Find<QLineEdit>("txtName")->text().toStdString(), std::to_string(chosen.back()));
  }
  EXPECT_EQ(chosen, (std::vector<std::int32_t>{1, 2, -1}));
  Press(Qt::Key_Escape);
  AwaitDone();
}

TEST_F(WindowsTest, APaneScrollsAndTheWindowStaysAsItIs) {
  MakeSampleForm(form_);
  Control& pane = form_.root.Add(ControlKind::Picture, "pbHelp", "", {2, 0, 3});
  pane.box.height = 80;
  Control& drawing = pane.Add(ControlKind::Picture, "picHelp");
  drawing.picture = "help";
  drawing.box = {0, 0, 32, 32};
  Control& text = pane.Add(ControlKind::Label, "lblHelp", "Short", {0, 1});
  text.multiLine = text.font.bold = true;
  form_["txtName"].change = [&text] {
    for (int i = 0; i < 200; ++i) text.caption += " and more";
  };
  form_["cbZoom"].gotFocus = [this] { form_["cbZoom"].selLength = 2; };
  form_.SetListIndex(form_["cbZoom"], 1);
  form_.cancelButton->click = [this] { form_.Unload(); };
  QWidget* window = ShowSample();
  const QSize size = window->size();
  EXPECT_TRUE(Find<QLabel>("lblHelp")->font().bold());
  EXPECT_EQ(Find<QWidget>("picHelp")->grab().toImage().pixelColor(20, 15), QColor(0xf0, 0xa0, 0x30));
  EXPECT_EQ(Find<QComboBox>("cbZoom")->lineEdit()->cursorPosition(), 0) << "the beginning is seen";
  Type("x");
  const QScrollBar* bar = Find<QScrollArea>("pbHelp")->verticalScrollBar();
  EXPECT_TRUE(QTest::qWaitFor([bar] { return bar->maximum() > 0; }));
  EXPECT_EQ(window->size(), size);
  EXPECT_EQ(Find<QWidget>("pbHelp")->height(), 80);
  for (int i = 0; i < 3; ++i) Press(Qt::Key_Tab);
  EXPECT_EQ(Find<QComboBox>("cbZoom")->lineEdit()->selectedText(), "Fi");
  Press(Qt::Key_Escape);
  AwaitDone();
}

TEST_F(WindowsTest, ATextTenTimesAsLongStaysOnTheScreen) {
  MakeSampleForm(form_);
  const std::string oneWord(400, 'W');
  std::string words;
  for (int i = 0; i < 80; ++i) words += "word ";
  form_.root.caption = "Sample";
  form_.ForEach([&](Control& control) {
    if (!control.caption.empty()) control.caption = control.kind == ControlKind::Label ? oneWord : words;
    for (std::string& entry : control.list) entry += words;
    control.text += oneWord;
  });
  form_.cancelButton->click = [this] { form_.Unload(); };
  QWidget* window = ShowSample();
  const QSize room = window->screen()->availableSize();
  EXPECT_LE(window->frameGeometry().width(), room.width());
  EXPECT_LE(window->frameGeometry().height(), room.height());
  Press(Qt::Key_Escape);
  AwaitDone();
}

struct BoxCase {
  std::int32_t flags;
  std::set<std::string> buttons;
  const char* preset;
  std::int32_t closed;
};

/// Names a case in the list of tests.
void PrintTo(const BoxCase& boxCase, std::ostream* out) { *out << boxCase.flags; }

class BoxesTest : public WindowsTest, public testing::WithParamInterface<BoxCase> {};

TEST_P(BoxesTest, HasTheButtonsOfThePlatform) {
  BoxAnswer answer;
  const std::string text = "<h1>Text</h1>\r\n" + std::string(20000, 'x');
  QWidget* window = Show("Box", [&] { answer = desktop_->ShowBox(text, "Box", GetParam().flags); });
  std::set<std::string> buttons;  // their order is that of the desktop
  std::string preset;
  for (const QAbstractButton* button : window->findChild<QDialogButtonBox*>()->buttons()) {
    buttons.insert(button->text().remove('&').toStdString());
    if (static_cast<const QPushButton*>(button)->isDefault()) preset = button->text().remove('&').toStdString();
  }
  EXPECT_EQ(buttons, GetParam().buttons);
  EXPECT_EQ(preset, GetParam().preset);
  EXPECT_EQ(window->findChild<QTextEdit*>()->toPlainText().left(13), "<h1>Text</h1>");
  EXPECT_LE(window->height(), window->screen()->availableSize().height());
  window->close();
  AwaitDone();
  EXPECT_EQ(answer.button, GetParam().closed);
  EXPECT_TRUE(answer.shown);
}

INSTANTIATE_TEST_SUITE_P(
    Flags, BoxesTest,
    testing::Values(
        BoxCase{box::kOk, {"OK"}, "OK", box::kAnswerOk},
        BoxCase{box::kExclamation + box::kYesNoCancel, {"Yes", "No", "Cancel"}, "Yes", box::kAnswerCancel},
        BoxCase{box::kQuestion + box::kYesNo + 256, {"Yes", "No"}, "No", box::kAnswerNo},
        BoxCase{box::kCritical + box::kRetryCancel + box::kForeground,
                {"Retry", "Cancel"},
                "Retry",
                box::kAnswerCancel}));

}  // namespace
}  // namespace tessary

/// What the toolkit never gives back is not ours to find.
extern "C" const char* __asan_default_options() { return "detect_leaks=0"; }

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setStyle(new tessary::Style);
  return RUN_ALL_TESTS();
}
