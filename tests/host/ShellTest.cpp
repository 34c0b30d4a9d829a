// Commands of people, and documents to open, on a real machine with hostile names.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/posix/PosixMachine.h"
#include "system/Conversions.h"
#include "tests/support/TempFolder.h"

namespace tessary {
namespace {

struct ShellTest : testing::Test {
  void SetUp() override { Program("say", R"(for a; do printf '<%s>' "$a"; done > said)"); }
  std::string Path(const std::string& name) { return folder.path() + "/" + name; }
  void Program(const std::string& name, const std::string& script) {
    std::ofstream(Path(name)) << "#!/bin/sh\n" << script << "\n";
    chmod(Path(name).c_str(), 0755);
  }
  std::string Text(const std::string& name) {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::int32_t Finish(const Command& command) {
    const auto child = host.processes.Start(command, folder.path(), Streams::Hidden);
    return child.ok() && child.value->Wait(10'000) ? child.value->ExitCode() : -1;
  }

  TempFolder folder;
  PosixMachine machine{0, nullptr};
  Host& host = machine.host();
};

/// A command, and what it says with the document's name in the place of "@".
struct SaidCase {
  const char *command, *said;
};

constexpr SaidCase kSaid[] = {
    {"./say %1", "<@>"},
    {R"sh(./say "%1" '%1' a%1b "a %1 b" 'a %1 b' "a"'b'%1)sh", "<@><@><a@b><a @ b><a @ b><ab@>"},
    {R"sh(./say %10 "%10" '%10' %2 "%3" %4 50% %%1)sh", "<@0><@0><@0><12><3><%4><50%><%@>"},
    {R"sh(./say \%1 "\%1" '\%1' \\%1 "\\%1" \"%1\" "\"%1\"")sh", R"(<@><\@><\@><\@><\@><"@"><"@">)"},
    {R"sh(./say $%1 "$%1" '$%1' ${#} "${3}%1")sh", "<$@><$@><$@><3><3@>"},
    {R"sh(./say "it's %1" 'say "%1"' "'%1'" '"'%1'"')sh", R"(<it's @><say "@"><'@'><"@">)"},
    {R"sh(./say "$(printf %s %1)" "$(printf %s "%1" '%1')" "a$( (printf %s \)%1) )b")sh", "<@><@@><a)@b>"},
    {R"sh(./say "`printf %s %1`" "`printf %s \"%1\"`" "`printf %s '%1' # it's %1`" "`printf x`")sh",
     "<@><@><@><x>"},
    {R"sh(./say "`printf %s \"\`printf %s \\\"%1\\\"\`\"`" `printf %s \\\\`%1)sh", R"(<@><\@>)"},
    {R"sh(./say ${no-%1} "${no-%1}" "${no-"%1"}" ${no-'%1'} ${no-"}%1"} "${no-}%1")sh", "<@><@><@><@><}@><@>"},
    {"./say $((%2+(%3*2)))%1 \"$((%2))%1\"", "<18@><12@>"},
    {"./say %1 # it's \"%1\n", "<@>"},
    {"# don't\n./say a#'%1' $(printf x)#'%1' \\ #'%1'", "<a#@><x#@>< #@>"},
    {"x=%1; [ -n %1 ] && (./say \"$x\") || ./say no", "<@>"},
    {"case %1 in '%1') ./say %1;; esac", "<@>"}};

TEST_F(ShellTest, ANameIsOnlyEverAName) {
  const std::string names[] = {R"(/home/me/$(touch ruined) ; "x" 'y'.pdf)",
                               "`touch ruined`",
                               "'; touch ruined; '",
                               "\"; touch ruined; \"",
                               "*  ? ~ [a-z] !x &",
                               "}$(touch ruined)) #",
                               R"(-e \c\n\\$1 ${2} \)",
                               "%2 %1",
                               "two\nlines; touch ruined",
                               "\xFF Ω"};
  for (const char* shell : {"/bin/sh", "/bin/bash"}) {
    if (access(shell, X_OK) != 0) continue;
    for (const auto& [command, said] : kSaid)
      for (const std::string& name : names) {
        Command started = host.processes.ShellCommand(command, {name, "12", "3"});
        started.arguments[0] = shell;
        EXPECT_EQ(Finish(started), 0) << started.arguments[2];
        EXPECT_EQ(Text("said"), ReplaceAll(said, "@", name)) << shell << " " << started.arguments[2];
        ASSERT_FALSE(std::filesystem::exists(Path("ruined"))) << shell << " " << started.arguments[2];
        std::filesystem::remove(Path("said"));
      }
  }
}

TEST_F(ShellTest, ACommandIsAwayFromTheTerminal) {
  const Command command = host.processes.ShellCommand("cut -d' ' -f6 /proc/$$/stat > %1; cat >&2", {"out"});
  EXPECT_EQ(command.line, "/bin/sh -c cut -d' ' -f6 /proc/$$/stat > out; cat >&2");
  EXPECT_EQ(Finish(command), 0) << "its streams lead nowhere";
  EXPECT_NE(std::stoi(Text("out")), getsid(0));
  EXPECT_FALSE(host.processes.Start(command, Path("missing"), Streams::Hidden).ok());
}

TEST_F(ShellTest, DocumentsAreOpenedByTheDesktop) {
  const std::string path = getenv("PATH");
  unsetenv("WAYLAND_DISPLAY");
  unsetenv("DISPLAY");
  setenv("PATH", (folder.path() + ":" + path).c_str(), 1);
  std::ofstream(Path("a.pdf")) << "x";
  Program("xdg-open", "exit 0");
  EXPECT_EQ(host.shell.Open(Path("a.pdf")), 31) << "no desktop session";
  setenv("WAYLAND_DISPLAY", "wayland-0", 1);
  const std::pair<const char*, std::int32_t> cases[] = {{"0", 33}, {"1", 31}, {"2", 2},
                                                        {"3", 31}, {"4", 31}, {"5", 13}};
  for (const auto& [code, result] : cases) {
    Program("xdg-open", std::string("exit ") + code);
    EXPECT_EQ(host.shell.Open(Path("a.pdf")), result) << code;
  }
  EXPECT_EQ(host.shell.Open(Path("missing.pdf")), 2);
  EXPECT_EQ(host.shell.Open("file:/missing"), 2) << "a relative path";

  Program("xdg-open", "printf %s \"$1\" > '" + Path("opened") + "'; exec sleep 3");
  const std::int64_t start = host.clock.Ticks();
  EXPECT_EQ(host.shell.Open("https://www.tessary.example/?a=b"), 33);
  EXPECT_LT(host.clock.Ticks() - start, 2900) << "the viewer is not waited for";
  EXPECT_EQ(Text("opened"), "https://www.tessary.example/?a=b");

  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  std::ofstream("-x:.pdf") << "x";
  Program("xdg-open", "printf %s \"$1\" > '" + Path("opened") + "'");
  EXPECT_EQ(host.shell.Open("-x:.pdf"), 33);
  EXPECT_EQ(Text("opened"), std::filesystem::current_path().string() + "/-x:.pdf");
  std::filesystem::current_path(before);
  unsetenv("WAYLAND_DISPLAY");
  setenv("PATH", path.c_str(), 1);
}

}  // namespace
}  // namespace tessary
