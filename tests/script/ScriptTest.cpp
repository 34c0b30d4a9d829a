// The macro language. What the language does stands in scripts, a folder for each feature, with the expected
// result beside the line: `Check 5 \ 2, 2`. This program runs them all, and what a script cannot say of itself.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "host/posix/PosixMachine.h"
#include "script/Compiler.h"
#include "script/Conversions.h"
#include "script/Engine.h"
#include "script/NativeFunction.h"
#include "script/WScript.h"
#include "system/MachineServices.h"
#include "tests/support/TempFolder.h"

namespace tessary::script {
namespace {

namespace fs = std::filesystem;

std::string ReadAll(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// Type and value, as in "Integer 5".
std::string Show(const Value& value) {
  static constexpr const char* kTypes[] = {"Empty",  "Null",   "Boolean",  "Byte", "Integer", "Long",
                                           "Single", "Double", "Currency", "Date", "Error"};
  if (value.Is(Type::Object)) return value.IsNothing() ? "Nothing" : value.object()->ClassName();
  if (value.Is(Type::String)) return "String \"" + value.string() + '"';
  if (value.Is(Type::Array)) {
    std::string text = "Array(";
    for (const Value& element : value.array().elements()) text += Show(element) + ", ";
    return text + ')';
  }
  const std::string type = kTypes[static_cast<std::size_t>(value.type())];
  return value.Is(Type::Null) || value.Is(Type::Error) ? type : type + ' ' + ToText(value);
}

// What a line `Check actual, expected` calls, with its line number in front.
class Checker final : public NativeObject {
 public:
  int checks = 0;
  std::string failures;
  std::string ClassName() const override { return "Checker"; }

 protected:
  std::span<const script::Member> Members() const override {
    static constexpr script::Member kMembers[] = {{"Check", 3, 3, Check, nullptr}};
    return kMembers;
  }

 private:
  static Value Check(Object& self, Context&, std::span<Value> arguments) {
    auto& checker = static_cast<Checker&>(self);
    ++checker.checks;
    std::string actual = Show(arguments[1]);
    // Whole numbers beside the line are written without CLng and CByte.
    const bool isWhole = arguments[1].Is(Type::Long) || arguments[1].Is(Type::Byte);
    if (isWhole && arguments[2].Is(Type::Integer)) actual.replace(0, 4, "Integer");
    const std::string expected = Show(arguments[2]);
    if (actual != expected) {
      checker.failures += "line " + ToText(arguments[0]) + ": " + actual + ", expected " + expected + '\n';
    }
    return {};
  }
};

constexpr char kHelpers[] =
    "Function ErrorOf(statements)\n"  // the number of the error that the statements end in
    "  On Error Resume Next\n"
    "  Execute statements\n"
    "  ErrorOf = Err.Number\n"
    "End Function\n"
    "Function ErrorIn(expression)\n"
    "  Dim ignored\n"
    "  On Error Resume Next\n"
    "  ignored = Eval(expression)\n"
    "  ErrorIn = Err.Number\n"
    "End Function\n";

class Script {
 public:
  Script() : services_(machine_.host()), engine_(MakeServices()) { engine_.SetLanguage("VBScript"); }
  Engine& engine() { return engine_; }
  std::string output;

 private:
  Services MakeServices() {
    Services services = services_.services();
    services.now = [] { return LocalTime{2024, 2, 29, 14, 5, 9}; };
    services.echo = [this](std::string_view line) { output += std::string(line) + '\n'; };
    return services;
  }

  PosixMachine machine_{0, nullptr};
  MachineServices services_;
  Engine engine_;
};

class LanguageTest : public testing::TestWithParam<fs::path> {};

TEST_P(LanguageTest, Script) {
  const TempFolder folder;
  const auto checker = Make<Checker>();
  Script script;
  script.engine().AddObject("Checker", checker);
  script.engine().AddCode(kHelpers);
  script.engine().AddCode("Const TestFolder = \"" + folder.path() + "\"");
  std::istringstream lines(ReadAll(GetParam()));
  std::string source;
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    static const std::regex kCheck("(^ *|: *|Then )Check ");
    source += std::regex_replace(line, kCheck, "$1Checker.Check " + std::to_string(number) + ", ") + '\n';
  }
  try {
    script.engine().AddCode(source, GetParam().string());
  } catch (const ScriptError& error) {
    FAIL() << error.line << ':' << error.column << ": " << error.Message() << " (" << error.number << ")\n"
           << error.text;
  }
  EXPECT_GT(checker->checks, 0);
  EXPECT_EQ(checker->failures, "");
}

std::vector<fs::path> Files(const char* folder, const char* extension) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file() && (!*extension || entry.path().extension() == extension)) {
      files.push_back(entry.path());
    }
  }
  std::ranges::sort(files);
  return files;
}

std::string TestName(const testing::TestParamInfo<fs::path>& info) {
  std::string name = info.param.parent_path().filename().string() + '_' + info.param.stem().string();
  std::ranges::replace_if(
      name, [](unsigned char c) { return !std::isalnum(c); }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Scripts, LanguageTest, testing::ValuesIn(Files(TESSARY_SCRIPT_TESTS_DIR, ".vbs")),
                         TestName);

// Whatever a text holds, reading it ends in code or in an error.
TEST(ScriptFuzzSeeds, EndInCodeOrAnError) {
  for (const fs::path& seed : Files(TESSARY_SCRIPT_SEEDS_DIR, "")) {
    SCOPED_TRACE(seed);
    Names names;
    const auto source = Make<Source>(ReadAll(seed), "seed");
    try {
      Compiler(names, source, CompileMode::Global, false).CompileScript();
    } catch (const ScriptError& error) {
      EXPECT_GE(error.number, 1001);
      EXPECT_GT(error.line, 0);
    }
  }
}

struct Misplaced {
  const char* source;
  int number;
  int line;
  int column;
  const char* text;
};

TEST(ScriptErrors, NameTheirPlace) {
  constexpr Misplaced kCases[] = {
      {"x = 1\nx = (1\ny = 2", 1006, 2, 6, "x = (1"},
      {"x = 1\r\n  If x Then\r\n", 1014, 3, 0, ""},
      {"Dim a\rx = \"open\r", 1033, 2, 4, "x = \"open"},
      {"x = 1 _\n  + )", 1002, 2, 4, "  + )"},
      {"\xEF\xBB\xBFx = ?", 1032, 1, 4, "x = ?"},
      {"x = 1: y = 1 / 0: z = 2", 11, 1, 7, "x = 1: y = 1 / 0: z = 2"},
      {"Sub s\n  Err.Raise 5000\nEnd Sub\ns", 5000, 2, 2, "  Err.Raise 5000"},
      {"Execute \"x = 1\" & vbLf & \" y = CInt(\"\"a\"\")\"", 13, 2, 1, " y = CInt(\"a\")"},
  };
  for (const Misplaced& expected : kCases) {
    SCOPED_TRACE(expected.source);
    Script script;
    try {
      script.engine().AddCode(expected.source, "macro.vbs");
      ADD_FAILURE() << "no error";
    } catch (const ScriptError& error) {
      EXPECT_EQ(error.number, expected.number);
      EXPECT_EQ(error.line, expected.line);
      EXPECT_EQ(error.column, expected.column);
      EXPECT_EQ(error.text, expected.text);
      EXPECT_EQ(error.origin, "macro.vbs");
    }
  }
}

TEST(ScriptEngine, KeepsItsStateBetweenCallsAndAfterErrors) {
  Script script;
  Engine& engine = script.engine();
  engine.AddCode("Dim n: n = 1\nFunction Twice(x): Twice = 2 * x: End Function");
  EXPECT_THROW(engine.AddCode("n = 2: n = Twice(1, 2): n = 3"), ScriptError);
  EXPECT_EQ(engine.TextOf(engine.Evaluate("Twice(n)")), "4");
  EXPECT_THROW(engine.AddCode("n = 5\nSub"), ScriptError) << "nothing of it has run";
  engine.AddCode("m = n");
  EXPECT_EQ(engine.TextOf(engine.Evaluate("m & Twice(m)")), "24");
  EXPECT_EQ(engine.TextOf(engine.Evaluate("Array(1)")), "");
  EXPECT_EQ(engine.TextOf(engine.Evaluate("CreateObject(\"Scripting.Dictionary\")")), "");
}

TEST(ScriptEngine, KnowsOneLanguage) {
  Engine engine{Services()};
  EXPECT_THROW(engine.AddCode("x = 1"), ScriptError);
  EXPECT_THROW(engine.SetLanguage("JScript"), ScriptError);
  engine.SetLanguage("vbscript");
  EXPECT_EQ(engine.TextOf(engine.Evaluate("\"a\" & 1")), "a1");
}

TEST(ScriptEngine, WritesAndQuits) {
  Script script;
  script.engine().AddObject("WScript", Make<WScriptObject>("/macros/a.vbs"));
  try {
    script.engine().AddCode(
        "Sub Deep(n): On Error Resume Next: If n = 0 Then WScript.Quit 3 Else Deep n - 1: End If: End Sub\n"
        "WScript.Echo \"a\", 1.5, Null, WScript.ScriptName\nDeep 5\nWScript.Echo \"never\"");
    ADD_FAILURE() << "went on";
  } catch (const Quit& quit) {
    EXPECT_EQ(quit.code, 3);
  }
  EXPECT_EQ(script.output, "a 1.5  a.vbs\n");
}

}  // namespace
}  // namespace tessary::script
