#include <gtest/gtest.h>

#include "job/modProject.h"
#include "system/Error.h"

namespace tessary {
namespace {

TEST(CommandLine, Parameters) {
  struct Case {
    const char *line, *parsed;
  };
  for (const Case& c : {Case{"", ""},
                        {"   ", ""},
                        {R"(ps="C:\a b\c.ps" sessionid=x)", R"(ps|C:\a b\c.ps;sessionid|x;)"},
                        {R"(/ps=c:\x.ps)", R"(ps|c:\x.ps;)"},
                        {R"(-ps=c:\x.ps)", R"(ps|c:\x.ps;)"},
                        {"--a=1", "-a|1;"},
                        {R"(ps=c:\x.ps,doc=y)", R"(ps|c:\x.ps;doc|y;)"},
                        {R"(doc="say ""hi""")", R"(doc|say "hi";)"},
                        {R"(doc="open end)", "doc|open end;"},
                        {R"(doc=" a ")", "doc|a;"},
                        {"a b=", "a|;b|;"},
                        {"a=1=2", "a|1=2;"},
                        {"a=\tb", "a|\tb;"},
                        {"a = 1", "a|;|;1|;"},
                        {R"("x"=1)", "|;x\"|1;"},
                        {R"(""x"=1 b=2)", R"("x|1;b|2;)"},
                        {R"(a="1"b=2)", "a|1;b|2;"},
                        {"PS=1 ps=2", "PS|1;ps|2;"}}) {
    std::string parsed;
    try {
      for (const auto& [name, value] : ParseCommandLine(c.line)) parsed += name + "|" + *value.AsText() + ";";
    } catch (const Error& error) {
      parsed = error.description();
    }
    EXPECT_EQ(parsed, c.parsed) << c.line;
  }
  for (const char* line : {"a=1 a=2", "=1 =2", ",,"}) EXPECT_THROW(ParseCommandLine(line), Error) << line;
}

TEST(CommandLine, MessageEscapes) { EXPECT_EQ(UnescapeMessage(R"(a\tb\nc\rd\\e\xf\)"), "a\tb\rc\nd\\exf"); }

}  // namespace
}  // namespace tessary
