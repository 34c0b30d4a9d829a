#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "config/modConfig.h"
#include "config/modMacros.h"
#include "job/modMain.h"
#include "system/Error.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

const std::string kMacros = R"(C:\Program Files\Tessary\macros\)";

/// An engine that remembers what it was given and answers what the test wants.
struct ScriptedEngine : MacroEngine {
  struct Talk {
    int engines = 0;
    std::vector<std::string> heard;  ///< objects, code and expressions in order
    std::shared_ptr<Dictionary> context;
    std::optional<MacroSourceError> sourceError;
    Result<std::string> value{"value"};
  };
  explicit ScriptedEngine(Talk& talk) : talk_(talk) { ++talk_.engines; }
  void AddObject(const std::string& name, std::shared_ptr<Dictionary> items) override {
    talk_.heard.push_back("object " + name);
    talk_.context = std::move(items);
  }
  std::optional<MacroSourceError> AddCode(const std::string& source) override {
    talk_.heard.push_back("code " + source);
    return talk_.sourceError;
  }
  Result<std::string> Evaluate(const std::string& expression) override {
    talk_.heard.push_back("eval " + expression);
    return talk_.value;
  }
  Talk& talk_;
};

struct MacrosTest : testing::Test {
  MacrosTest() {
    run.job.DocumentName = R"(C:\x\report.v1.doc)";
    run.job.DocumentProperties.Set("title", "a/b <vbs:Kill> <date>");
    run.macros.makeEngine = [this] { return std::make_unique<ScriptedEngine>(talk); };
  }
  std::string Expanded(const std::string& text, bool safe = true) { return ExpandMacros(run, text, safe); }
  template <class Call>
  std::string Raised(Call call) {
    try {
      call();
    } catch (const Error& error) {
      return std::to_string(error.number()) + " " + error.description();
    }
    return "nothing raised";
  }
  SimulatedMachine machine;
  ScriptedEngine::Talk talk;
  tessary::Run run{machine.host()};
};

TEST_F(MacrosTest, Expansion) {
  struct Case {
    const char *text, *safe, *plain;
  };
  machine.system.environment["NAME"] = "<date>\\a:b.";
  machine.system.userName = "DOM\\ann";
  for (const Case& c :
       {Case{"<date>_<time>", "2026-03-02_10.00.00", "2026-03-02_10.00.00"},
        {"<docname>", "C__x_report.v1.doc", R"(C:\x\report.v1.doc)"},
        {"<basedocname>", "report.v1", "report.v1"},
        {"<username>@<computername>", "DOM_ann@PC", R"(DOM\ann@PC)"},
        {"[<title>]", "[a_b _vbs_Kill_ _date_]", "[a/b <vbs:Kill> <date>]"},
        {"[<author>]", "[]", "[]"},
        {"<desktop>|<personal>",
         R"(C:\Documents and Settings\ann\Desktop|C:\Documents and Settings\ann\My Documents)",
         R"(C:\Documents and Settings\ann\Desktop|C:\Documents and Settings\ann\My Documents)"},
        {"<env:NAME><ENV:NAME><env:NOSUCHVAR>", "<date>\\a:b.<date>\\a:b.", "<date>\\a:b.<date>\\a:b."},
        {"<guid> <guid>", "00000001-0002-0003-0405-060708090A0B 00000001-0002-0003-0405-060708090A0B",
         "00000001-0002-0003-0405-060708090A0B 00000001-0002-0003-0405-060708090A0B"},
        {"<DATE><><a<date>>x<pageno>", "<DATE><><a<date>>x<pageno>", "<DATE><><a<date>>x<pageno>"},
        {"a>b<date", "a>b<date", "a>b<date"},
        {"", "", ""}}) {
    EXPECT_EQ(Expanded(c.text, true), c.safe);
    EXPECT_EQ(Expanded(c.text, false), c.plain);
  }
  EXPECT_EQ(talk.engines, 0) << "nothing but an expression starts the macro language";
  machine.shell.specialFolders.clear();
  EXPECT_EQ(Expanded("<desktop>"), "");
  const std::string brackets(100'000, '<');
  EXPECT_EQ(Expanded(brackets + ">" + brackets), brackets + ">" + brackets);
}

TEST_F(MacrosTest, ListForPeople) {
  run.labels.texts.Set("L97", "Datum");
  run.labels.texts.Set("L130", "jjjj-mm-tt");
  Dictionary list = GetMacroList(run);
  std::string keys;
  for (const auto& [key, label] : list) keys += key + " ";
  EXPECT_EQ(keys,
            "date time docname basedocname username computername author title guid personal desktop env:TEMP ");
  EXPECT_EQ(list.Text("date"), "Datum (jjjj-mm-tt)");
  EXPECT_EQ(list.Text("time"), "Time (hh.mm.ss)");
  EXPECT_EQ(list.Text("guid"), "System generated GUID");
}

TEST_F(MacrosTest, FilesReachTheEngineOnce) {
  machine.files.Put(kMacros + "b.vbs", "above\r\n  rem -- Macro Region Begins here\r\nbelow\r\n\xE4");
  machine.files.Put(kMacros + "C.VBS", "rem -- macro region begins\nall");
  machine.files.Put(kMacros + "a.vbs", "one");
  machine.files.Put(kMacros + "a.vbs.txt", "not this");
  machine.files.PutFolder(kMacros + "d.vbs");
  EXPECT_EQ(Expanded("<VBS:Name(\"X\", 7\\2)><vbs:>"), "valuevalue");
  EXPECT_EQ(talk.heard, (std::vector<std::string>{"object context", "code one", "code below\r\n\xC3\xA4",
                                                  "code rem -- macro region begins\nall",
                                                  "eval Name(\"X\", 7\\2)", "eval "}));
  EXPECT_EQ(talk.context->Text("DocumentTitle"), "a/b <vbs:Kill> <date>");
  talk.value = std::string("../<date>:x.");
  EXPECT_EQ(Expanded("<vbs:1>"), "../<date>:x.") << "what a script gives is its own affair";
  EXPECT_EQ(talk.engines, 1);
}

TEST_F(MacrosTest, FailuresSayWhere) {
  machine.files.Put(kMacros + "a.vbs", "bad");
  machine.files.Put(kMacros + "b.vbs", "never read");
  talk.sourceError = MacroSourceError{1002, "Syntax error", 3, 4, "x = = 1"};
  EXPECT_EQ(Raised([&] { Expanded("<vbs:1>"); }),
            "1002 Error adding macro source code from file '" + kMacros +
                "a.vbs'.\r\n\r\nSyntax error\r\nLine 3 position 5\r\nx = = 1");
  EXPECT_EQ(Expanded("<vbs:2>"), "value") << "the engine stays with the files so far";
  EXPECT_EQ(talk.heard, (std::vector<std::string>{"object context", "code bad", "eval 2"}));
  talk.value = Failure{13, "Type mismatch: 'Foo'"};
  EXPECT_EQ(Raised([&] { Expanded("<vbs:Foo>"); }), "13 Type mismatch: 'Foo'");

  tessary::Run without(machine.host());
  EXPECT_EQ(Raised([&] { ExpandMacros(without, "<vbs:1>", false); }),
            "429 Error creating object: MSScriptControl.ScriptControl");
}

TEST_F(MacrosTest, SettingsOfAJob) {
  run.job.DocumentProperties.Set("author", "<vbs:Kill>");
  Dictionary config;
  for (const char* key : {"mergefile", "superimpose", "watermarktext", "subject", "keywords"})
    config.Set(key, "<title>");
  config.Set("output", R"( <desktop>\\<title>.pdf )");
  config.Set("author", "");
  config.Set("title", "<docname>");
  ExpandConfigValues(run, config);
  std::string values;
  for (const auto& [key, value] : config) values += key + "=" + config.Text(key) + "\n";
  EXPECT_EQ(values,
            "mergefile=a_b _vbs_Kill_ _date_\nsuperimpose=a_b _vbs_Kill_ _date_\n"
            "watermarktext=a/b <vbs:Kill> <date>\nsubject=a/b <vbs:Kill> <date>\n"
            "keywords=a/b <vbs:Kill> <date>\n"
            "output=C:\\Documents and Settings\\ann\\Desktop\\a_b _vbs_Kill_ _date_.pdf\n"
            "author=<vbs:Kill>\ntitle=C:\\x\\report.v1.doc\nusedefaultauthor=\nusedefaulttitle=\n");
  EXPECT_EQ(talk.engines, 0) << "text of the document is never evaluated";

  const auto settled = [this](const std::string& author, const std::string& title) {
    Dictionary own;
    own.Set("author", author);
    own.Set("title", title);
    own.Set("usedefaultauthor", "yes");
    own.Set("usedefaulttitle", "Yes");
    ExpandConfigValues(run, own);
    return own.Text("author") + "|" + own.Text("title");
  };
  EXPECT_EQ(settled("<username>", "by <username>"), "<vbs:Kill>|a/b <vbs:Kill> <date>");
  run.job.DocumentProperties = Dictionary();
  EXPECT_EQ(settled("<username>", "by <username>"), "ann|by ann") << "the job has none";
  EXPECT_EQ(talk.engines, 0);
}

TEST_F(MacrosTest, SeparatorsOfAnotherMachine) {
  machine.host().paths = PathStyle::Posix();
  EXPECT_EQ(NativeOutsideMacros(PathStyle::Posix(), R"(<desktop>\a\<vbs:7\2>\<env:A\B>\x<y\z)"),
            R"(<desktop>/a/<vbs:7\2>/<env:A\B>/x<y/z)");
  Dictionary config;
  config.Set("output", R"(/home/<title>\<vbs:Folder>)");
  config.Set("subject", R"(a\b)");
  talk.value = std::string(R"(2026\03\x.pdf)");
  ExpandConfigValues(run, config);
  EXPECT_EQ(config.Text("output"), "/home/a_b _vbs_Kill_ _date_/2026/03/x.pdf");
  EXPECT_EQ(config.Text("subject"), R"(a\b)");
}

TEST_F(MacrosTest, AFailedMacroEndsTheJobBeforeItsConversion) {
  machine.files.Put(R"(C:\jobs\a.ps)", "%!PS");
  machine.files.Put(R"(C:\Documents and Settings\ann\Application Data\Tessary\PDF Printer\settings.ini)",
                    "[PDF Printer]\r\noutput=D:\\<vbs:Name()>.pdf\r\n");
  machine.host().commandLine = R"(sessionid=x ps=C:\jobs\a.ps)";
  talk.value = Failure{13, "Type mismatch: 'Name'"};
  EXPECT_EQ(Main(run), exitcodes::kError);
  ASSERT_EQ(machine.desktop.boxes.size(), 1u);
  EXPECT_EQ(machine.desktop.boxes[0].text,
            "An error occured.\r\n\r\nError 13: Type mismatch: 'Name'\r\n\r\nMake PDF");
  EXPECT_EQ(machine.files.Text(R"(C:\jobs\a.ps)"), "%!PS");
  EXPECT_EQ(machine.files.Names(R"(C:\Temp\Tessary\PDF Printer)"), std::vector<std::string>{"x_printer.log"});
}

// What the fuzzer begins with and has found.
TEST_F(MacrosTest, AnyTextIsExpandedOrRefused) {
  for (const auto& entry : std::filesystem::directory_iterator(TESSARY_ROOT_DIR "/fuzz/seeds/macros")) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    run.job.DocumentProperties.Set("title", text);
    const std::string expanded = ExpandMacros(run, "<title>", false);
    EXPECT_EQ(expanded, text) << entry.path() << ": a title is data";
    EXPECT_NO_THROW(ExpandMacros(run, text, true)) << entry.path();
  }
}

}  // namespace
}  // namespace tessary
