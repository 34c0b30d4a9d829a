// The picker of the printer instance.
#include <gtest/gtest.h>

#include "system/frmInstances.h"
#include "tests/support/SimulatedMachine.h"
#include "ui/modLocalize.h"

namespace tessary {
namespace {

struct InstancesTest : testing::Test {
  std::string Select(std::initializer_list<const char*> names, const std::function<void(Form&)>& user = {}) {
    machine.desktop.user = [this, user](Form& form) {
      ++windows;
      if (user) user(form);
    };
    Dictionary instances;
    for (const char* name : names) instances.Set(name, name);
    return SelectInstance(run, instances);
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  int windows = 0;
};

TEST_F(InstancesTest, LessThanTwoAreNotAskedFor) {
  EXPECT_EQ(Select({}), "");
  EXPECT_EQ(Select({"Sales"}), "Sales");
  EXPECT_EQ(windows, 0);
}

TEST_F(InstancesTest, ThePickersAnswers) {
  machine.files.Put(R"(C:\Program Files\Tessary\labels.txt)", "L157=Instanz\r\n");
  LoadLabels(run);
  struct Case {
    std::function<void(Form&)> user;
    const char* selected;
  };
  const Case cases[] = {
      {[](Form& form) { EXPECT_TRUE(form.PressKey({.key = Key::Enter})); }, ""},
      {[](Form& form) {
         EXPECT_EQ(form.root.caption, "Instanz");
         EXPECT_EQ(form["lv"].list, (std::vector<std::string>{"[default]", "accounts", "Legal", "sales"}));
         form.Choose(form["lv"], 2);
         form.PressKey({.key = Key::Enter});
         EXPECT_FALSE(form.IsLoaded());
       },
       "Legal"},
      {[](Form& form) {
         form.Choose(form["lv"], 3);
         form["lv"].doubleClick();
       },
       "sales"},
      {[](Form& form) {
         form.Choose(form["lv"], 3);
         EXPECT_TRUE(form.PressKey({.key = Key::Escape}));
       },
       ""},
      {[](Form& form) {
         form.Choose(form["lv"], 3);
         EXPECT_FALSE(form.PressKey({.key = Key::PageDown}));
         form.CloseBox();
       },
       ""},
  };
  for (const Case& c : cases) EXPECT_EQ(Select({"sales", "Legal", "", "accounts"}, c.user), c.selected);
  EXPECT_EQ(windows, 5);
}

}  // namespace
}  // namespace tessary
