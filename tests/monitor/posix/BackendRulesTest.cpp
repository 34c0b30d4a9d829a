// Whose job it is, what the print server is told, and what a document is called in a common folder.
#include <gtest/gtest.h>

#include "monitor/posix/BackendOutput.h"
#include "monitor/posix/JobReport.h"
#include "monitor/posix/JobUser.h"

namespace tessary {
namespace {

std::optional<Account> FindTestAccount(const std::string& name) {
  for (const Account& account : std::vector<Account>{{"root", 0, 0, "/root", ""},
                                                     {"toor", 0, 1000, "/root", ""},
                                                     {"lp", 7, 7, "/var/spool/lpd", ""},
                                                     {"last", 999, 999, "/", ""},
                                                     {"ann", 1000, 1000, "/home/ann", ""},
                                                     {"nobody", 65534, 65534, "/", ""},
                                                     {"domain", 1800000001, 100, "/", ""},
                                                     {"none", 4294967295, 100, "/", ""},
                                                     {"wheel", 900, 0, "/", ""}})
    if (account.name == name) return account;
  return std::nullopt;
}

/// "ann", "lp in /srv/pdf", or why not.
std::string Choose(const JobOrigin& origin, const RemoteRule& remote, unsigned self = 0) {
  const JobUser chosen = ChooseUser(origin, remote, {self, 1000, FindTestAccount});
  if (!chosen.refusal.empty()) return chosen.refusal;
  return chosen.account.name + (chosen.remoteFolder.empty() ? "" : " in " + chosen.remoteFolder);
}

TEST(JobUser, IsAPersonOrRefused) {
  for (const auto& [user, chosen] :
       std::vector<std::pair<std::string, std::string>>{{"ann", "ann"},
                                                        {"domain", "domain"},
                                                        {"root", "root does not print to this printer"},
                                                        {"toor", "root does not print to this printer"},
                                                        {"lp", "'lp' is an account of the system"},
                                                        {"last", "'last' is an account of the system"},
                                                        {"nobody", "'nobody' is an account of the system"},
                                                        {"none", "'none' is an account of the system"},
                                                        {"", "there is no user '' on this machine"},
                                                        {"ANN", "there is no user 'ANN' on this machine"}}) {
    EXPECT_EQ(Choose({user}, {}), chosen);
    EXPECT_EQ(Choose({user}, {"ann", ""}), chosen) << "half a rule is none";
  }
  EXPECT_EQ(Choose({"ann"}, {}, 1000), "ann");
  EXPECT_EQ(Choose({"domain"}, {}, 1000),
            "the print server does not run this program as root, so it cannot print for 'domain'");
}

TEST(JobUser, OfARemoteJobIsTheOneOfItsRule) {
  const RemoteRule rule{"lp", "/srv/pdf"};
  EXPECT_EQ(Choose({"ann"}, rule), "ann") << "who it is was proven, wherever the job comes from";
  for (const std::string user : {"ann", "root", "stranger", "lp"})
    EXPECT_EQ(Choose({user, true}, rule), "lp in /srv/pdf") << user;
  EXPECT_EQ(Choose({"root"}, rule), "lp in /srv/pdf");
  const std::string notRoot = "the machine setting RemoteUser must not name root";
  for (const auto& [user, refusal] : std::vector<std::pair<std::string, std::string>>{
           {"root", notRoot},
           {"toor", notRoot},
           {"wheel", notRoot},
           {"gone", "there is no user 'gone', whom the machine setting RemoteUser names"}})
    EXPECT_EQ(Choose({"ann", true}, {user, "/srv/pdf"}), refusal);
  EXPECT_EQ(Choose({"ann", true}, {"lp", "pdf"}), "the machine setting RemoteFolder is no full path");
  EXPECT_TRUE(Choose({"ann", true}, {"lp", ""}).starts_with("the printer is for all"));
}

TEST(JobUser, FirstUserOfTheMachine) {
  EXPECT_EQ(FirstUserOf(""), 1000u);
  EXPECT_EQ(FirstUserOf("# UID_MIN 1\nSYS_UID_MIN 100\nUID_MIN\t\t\t  500\nUID_MAX 60000\n"), 500u);
  for (const std::string odd : {"UID_MIN", "UID_MIN x", "UID_MIN 0", "UID_MIN -5", "UID_MIN 99999999999"})
    EXPECT_EQ(FirstUserOf(odd), 1000u) << odd;
}

TEST(JobReport, LinesCannotBeTakenForOthers) {
  EXPECT_EQ(ReportLines("ERROR:", "one"), "ERROR: one\n");
  EXPECT_EQ(ReportLines("DEBUG:", "a\r\n\n\rPPD: x=y\n\tATTR: b\x7F\0"),
            "DEBUG: a\nDEBUG: PPD: x=y\nDEBUG:  ATTR: b \n");
  EXPECT_EQ(ReportLines("INFO:", ""), "");
  EXPECT_EQ(ReportLines("INFO:", "\xE9"), "INFO: é\n");
  const std::string lines = ReportLines("E:", std::string(999, 'x') + "é" + std::string(20000, 'y'));
  EXPECT_EQ(lines, "E: " + std::string(999, 'x') + "\n");
  EXPECT_EQ(CutText("aé", 2), "a");
  EXPECT_EQ(CutText("aé", 3), "aé");
}

TEST(BackendOutput, NamesAreFileNames) {
  for (const auto& [title, name] :
       std::vector<std::pair<std::string, std::string>>{{"Report", "Report"},
                                                        {"../../etc/passwd", "_._.._etc_passwd"},
                                                        {R"(a\b<title>|*?")", "a_b_title_____"},
                                                        {"..", "Document"},
                                                        {" \n ", "Document"},
                                                        {".bashrc", "_bashrc"},
                                                        {"a\nb\x1b", "a b"},
                                                        {std::string(300, 'x'), std::string(200, 'x')}})
    EXPECT_EQ(DocumentFileName(title), name) << title;
}

}  // namespace
}  // namespace tessary
