// What tessary-printer makes of its call before it asks the server, and what it writes into its configuration.
#include <gtest/gtest.h>

#include "host/posix/cups/ServerPolicies.h"
#include "monitor/posix/PrinterArguments.h"
#include "monitor/posix/QueueName.h"

namespace tessary {
namespace {

TEST(QueueName, IsOneThatServersAndShellsTake) {
  const struct {
    std::string name, queue;
  } cases[] = {
      {"PDF Printer [Sales]", "PDF_Printer_Sales"},
      {"a/b#c'd\"e\\f?g<h>i|j", "a_b_c_d_e_f_g_h_i_j"},
      {"Büro – 報告", "Büro_–_報告"},
      {"--option", "option"},
      {"../../etc", "etc"},
      {"[ ]", "Printer"},
      {"user@host $(id)", "user_host_id"},
      {std::string(126, 'x') + "é", std::string(120, 'x')},
      {std::string(119, 'x') + "é", std::string(119, 'x')},
  };
  for (const auto& each : cases) EXPECT_EQ(QueueName(each.name, {}), each.queue) << each.name;
  EXPECT_EQ(QueueName("PDF [a]", {"pdf_A", "PDF_a_2"}), "PDF_a_3");
}

TEST(PrinterArguments, AreReadOrRefused) {
  const PrinterArguments add =
      ParsePrinterArguments({"add", "--location=2nd floor", "--default", "--", "--x [y]"});
  EXPECT_EQ(add.problem + "|" + add.command + "|" + add.name + "|" + add.location, "|add|--x [y]|2nd floor");
  EXPECT_TRUE(add.makeDefault);
  const PrinterArguments share =
      ParsePrinterArguments({"share", "P", "on", "--from", "10.0.0.0/8", "--from=@LOCAL"});
  EXPECT_EQ(share.problem, "");
  EXPECT_TRUE(share.on);
  EXPECT_EQ(share.networks, (std::vector<std::string>{"10.0.0.0/8", "@LOCAL"}));
  for (const std::vector<std::string>& wrong :
       std::vector<std::vector<std::string>>{{},
                                             {"rename", "a"},
                                             {"add"},
                                             {"add", "two", "words"},
                                             {"add", " "},
                                             {"add", "a\nb"},
                                             {"add", "\xff"},
                                             {"add", std::string(128, 'x')},
                                             {"add", "a", "--paper", "A99"},
                                             {"add", "a", "--from", "10.0.0.0/8"},
                                             {"add", "a", "--default=yes"},
                                             {"list", "a"},
                                             {"share", "a"},
                                             {"share", "a", "maybe"},
                                             {"share", "a", "off", "--from", "10.0.0.0/8"},
                                             {"share", "a", "on", "--from"}})
    EXPECT_NE(ParsePrinterArguments(wrong).problem, "") << (wrong.empty() ? "" : wrong.back());
}

TEST(ServerPolicies, NetworksAreNothingButNetworks) {
  for (const char* good :
       {"192.168.1.7", "192.168.0.0/16", "10.0.0.0/255.0.0.0", "[fd00::1]", "[fd00::]/64", "@LOCAL"})
    EXPECT_TRUE(IsNetwork(good)) << good;
  for (const char* bad : {"", "10.0.0.0/", "10.0.0.0/33", "10.0.0.0/8\nAllow all", "10.0.0.0/8 all", "all",
                          "*.example.org", "fd00::1", "[fd00::]/129", "[10.0.0.1]", "10.0.0", "@IF(eth0)",
                          "10.0.0.0/-1", "0.0.0.0/0", "0.0.0.0/0.0.0.0", "[::]/0"})
    EXPECT_FALSE(IsNetwork(bad)) << bad;
}

TEST(ServerPolicies, NothingElseOfTheConfigurationChanges) {
  const std::string before = "Listen 631\n<Policy default>\n  <Limit All>\n  </Limit>\n</Policy>\n";
  const std::string behind = "# the end, without a line end";
  const std::string first = SharedPolicyText({"10.0.0.0/8"}), second = SharedPolicyText({"@LOCAL"});
  EXPECT_EQ(WithPolicy(before + behind, kSharedPolicy, first), before + behind + "\n" + first);
  EXPECT_EQ(WithPolicy(before + first + behind, kSharedPolicy, second), before + second + behind);
  EXPECT_EQ(WithPolicy(before + first + behind, kSharedPolicy, first), before + first + behind);
  EXPECT_EQ(WithPolicy("", kOwnPolicy, OwnPolicyText()), OwnPolicyText());

  EXPECT_TRUE(HasPolicy(before + "  <policy   Tessary>\r\n</policy>", kOwnPolicy));
  EXPECT_FALSE(HasPolicy(before + first + "#<Policy tessary>\n", kOwnPolicy));
  EXPECT_EQ(WithPolicy(before + "<Policy tessary>\n", kOwnPolicy, OwnPolicyText()), std::nullopt);
}

TEST(ServerPolicies, LetNobodyPrintInAnothersName) {
  // A job comes in by being made, by getting its document, or by a move from a printer that asks for less.
  const std::string text = OwnPolicyText();
  for (const char* operation :
       {"Create-Job", "Print-Job", "Print-URI", "Send-Document", "Send-URI", "CUPS-Move-Job"}) {
    const std::size_t at = text.find(operation);
    ASSERT_NE(at, std::string::npos) << operation;
    const std::size_t rules = text.find('\n', at);
    EXPECT_EQ(text.compare(rules, 21, "\n    AuthType Default\n", 0, 21), 0) << operation;
  }
  EXPECT_EQ(text.find("Satisfy"), std::string::npos) << "it lets every user of this machine in without a proof";
}

}  // namespace
}  // namespace tessary
