#include <gtest/gtest.h>

#include "postscript/modPostScript.h"
#include "system/Error.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

TEST(DocumentProperties, AreReadFromTheHead) {
  SimulatedMachine machine;
  tessary::Run run(machine.host());
  std::string lines;
  for (int i = 0; i < 999; ++i) lines += "% line\r";
  struct Case {
    std::string text, properties;
  };
  for (const Case& c : {Case{"", ""},
                        {"%!PS\r\n%%Title: (A \xC3\xBC)\r\n%%For:Ann \r\n%%CreationDate: today\r\n",
                         "title=(A \xC3\xBC);author=Ann;creationdate=today;"},
                        {"%!PS\n%%title: \xFC\n%%FOR: b\n", "title=\xC3\xBC;author=b;"},
                        {"%%Title: one\r%%Title: two", "title=two;"},
                        {" %%Title: x\r\n%%Titles: y\r\n%%Title", ""},
                        {lines + "%%Title: in time", "title=in time;"},
                        {lines + "\r%%Title: too late", ""},
                        {"%" + std::string(2'000'000, '.') + "\n%%Title: too far", ""}}) {
    machine.files.Put(R"(C:\a.ps)", c.text);
    std::string read;
    for (const auto& [key, value] : GetDocumentProperties(run, R"(C:\a.ps)"))
      read += key + "=" + *value.AsText() + ";";
    EXPECT_EQ(read, c.properties) << c.text.substr(0, 40);
  }
  EXPECT_THROW(GetDocumentProperties(run, R"(C:\none.ps)"), Error);
}

}  // namespace
}  // namespace tessary
