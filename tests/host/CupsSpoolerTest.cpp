// The printers of a CUPS server: as plain records, and on a server of the test's own.
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "host/posix/PosixMachine.h"
#include "host/posix/cups/CupsRecords.h"
#include "system/CPrinterInfo.h"
#include "system/modInstances.h"
#include "tests/support/TempFolder.h"

namespace tessary {
namespace {

CupsAttributes Printer(const char* name, const char* description) {
  return {{"printer-name", {{name}}}, {"printer-info", {{description}}}};
}

TEST(CupsRecords, DevicesAreNamedByWhatPeopleSee) {
  const struct {
    const char *queue, *description, *device;
  } cases[] = {
      {"sales", "PDF Printer [Sales]", "PDF Printer [Sales]"},
      {"sales2", "PDF Printer [Sales]", "PDF Printer [Sales] (sales2)"},
      {"plain", "", "plain"},
      {"PDF[Home]", "At home", "PDF[Home]"},
      {"both[a]", "Both [b]", "Both [b]"},
      {"open[a]", "Open [", "open[a]"},
      {"umlaut", "Drucker für Büro [報告]", "Drucker für Büro [報告]"},
      {"office", "Office printer", "Office printer"},
      {"a", "P (y)", "P (y)"},
      {"b", "P", "P"},
      {"y", "P", "P (y) (y)"},
  };
  std::vector<CupsAttributes> printers;
  for (const auto& each : cases) printers.push_back(Printer(each.queue, each.description));
  const std::vector<Queue> queues = QueuesOf(printers);
  for (std::size_t i = 0; i < queues.size(); ++i) EXPECT_EQ(queues[i].device, cases[i].device);
  EXPECT_EQ(QueuesOf({{{"printer-name", {{"bare"}}}}}).front().device, "bare");
}

TEST(CupsRecords, StatesAndReasonsAreStatusBits) {
  const struct {
    std::int32_t state;
    std::vector<std::string> reasons;
    std::uint32_t status;
  } printers[] = {
      {3, {"none"}, 0},
      {4, {"none"}, printing::kPrinting},
      {5, {"paused"}, printing::kPaused},
      {3, {"offline-report"}, printing::kOffline},
      {5,
       {"media-empty-error", "toner-low-warning", "com.example.odd"},
       printing::kPaused | printing::kPaperOut | printing::kTonerLow},
  };
  for (const auto& each : printers) {
    CupsAttributes printer = Printer("p", "");
    printer["printer-state"].number = each.state;
    printer["printer-state-reasons"].texts = each.reasons;
    EXPECT_EQ(PrinterOf("p", printer).status, each.status) << each.reasons.front();
    printer["printer-is-accepting-jobs"].number = 0;
    EXPECT_EQ(PrinterOf("p", printer).status, each.status | printing::kNotAvailable);
  }
  const std::pair<std::int32_t, std::uint32_t> jobs[] = {{3, 0},
                                                         {4, printing::kJobPaused},
                                                         {5, printing::kJobPrinting},
                                                         {6, printing::kJobError},
                                                         {7, printing::kJobDeleted},
                                                         {8, printing::kJobError},
                                                         {9, printing::kJobPrinted}};
  for (const auto& [state, status] : jobs) {
    CupsAttributes job{{"job-state", {{}, state}}, {"job-state-reasons", {{"job-incoming"}}}};
    EXPECT_EQ(JobOf("p", job, 1, 0).status, status | printing::kJobSpooling);
  }
}

TEST(CupsRecords, OddNumbersAndAddressesAreTaken) {
  const CupsAttributes huge{
      {"job-k-octets", {{}, 2147483647}}, {"job-media-sheets", {{}, -1}}, {"time-at-processing", {{}, 100}}};
  EXPECT_EQ(JobOf("p", huge, 1, 99).time, 0u) << "begun after now";
  EXPECT_EQ(JobOf("p", huge, 1, 102).time, 2000u);
  EXPECT_EQ(JobOf("p", huge, 1, 99).size, 4294967295u);
  EXPECT_EQ(JobOf("p", huge, 1, 99).totalPages, 0u);
  for (const auto& [uri, port] : {std::pair{"tessary:/", "TESSARY"}, std::pair{"tessary:", "TESSARY"},
                                  std::pair{"tessaryx:/", "tessaryx:/"}, std::pair{"", ""}})
    EXPECT_EQ(PrinterOf("p", {{"device-uri", {{uri}}}}).portName, port);
}

/// Runs `work` with a server in the environment, on a thread of its own: libcups looks there once a thread.
template <class Work>
void WithServer(const std::string& socket, const Work& work) {
  setenv("CUPS_SERVER", socket.c_str(), 1);
  std::thread(work).join();
  unsetenv("CUPS_SERVER");
}

TEST(CupsSpooler, AServerThatDoesNotAnswerHasNoPrinters) {
  const TempFolder folder;
  const std::string path = folder.path() + "/cups.sock";
  sockaddr_un address{AF_UNIX, ""};
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(listener, 8), 0);
  const auto ask = [] {
    PosixMachine machine(0, nullptr);
    tessary::Run run(machine.host());
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(GetInstances(run).empty());
    CPrinterInfo printer(run);
    printer.SetDeviceName("PDF Printer");
    EXPECT_FALSE(printer.ControlPause());
    printer.SetIsDefault(true);
    EXPECT_EQ(run.host.defaultPrinter.Name(), "");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5))
        << "for all questions together";
  };
  WithServer(path, ask);
  close(listener);
  WithServer(path, ask);  // nobody listens any more
  WithServer(folder.path() + "/missing", ask);
}

/// A server with queues of scheme tessary and others, for the tests that need one.
class PrivateCups : public testing::Test {
 protected:
  void SetUp() override {
    if (access("/usr/sbin/cupsd", X_OK) != 0 || !Shell("command -v lpadmin && command -v lp")) {
      ASSERT_EQ(getenv("CI"), nullptr) << "CUPS is missing";
      GTEST_SKIP() << "no CUPS on this machine";
    }
    chmod(folder_.path().c_str(), 0711);
    std::ofstream(document_) << "A letter.\n";
    const std::string backend = folder_.path() + "/additions/backend";
    ASSERT_TRUE(Shell("mkdir -p '" + backend + "'"));
    // It takes any document and drops it.
    std::ofstream(backend + "/other") << "#!/bin/sh\n";
    chmod((backend + "/other").c_str(), 0755);
    std::ofstream(backend + "/tessary") << "#!/bin/sh\n[ $# = 0 ] || cat ${6:--} >/dev/null\n";
    chmod((backend + "/tessary").c_str(), 0755);
    ASSERT_TRUE(Shell("PRIVATE_CUPSD_ADDITIONS='" + folder_.path() + "/additions' " + server_ + " start '" +
                      root_ + "' >'" + folder_.path() + "/started' 2>&1"));
    running_ = true;
  }
  void TearDown() override {
    if (running_) {
      EXPECT_TRUE(Shell(server_ + " stop '" + root_ + "'"));
    }
  }

  static bool Shell(const std::string& command) { return std::system((command + " >&2").c_str()) == 0; }
  /// Runs a command of CUPS against the server.
  bool Cups(const std::string& command) {
    return Shell("CUPS_SERVER='" + socket_ + "' " + command + " 2>>'" + folder_.path() + "/commands'");
  }
  void Ask(const std::function<void(tessary::Run&)>& work) {
    WithServer(socket_, [&] {
      PosixMachine machine(0, nullptr);
      tessary::Run run(machine.host());
      work(run);
    });
  }

  const std::string server_ = std::string("'") + TESSARY_ROOT_DIR + "/tests/support/private-cupsd'";
  TempFolder folder_;
  const std::string root_ = folder_.path() + "/server";
  const std::string socket_ = root_ + "/run/cups.sock";
  const std::string document_ = folder_.path() + "/letter";
  bool running_ = false;
};

TEST_F(PrivateCups, QueuesArePrintersAndObeyTheirCommands) {
  Ask([](tessary::Run& run) { EXPECT_EQ(run.host.spooler.CountPrinters(), 0) << "none yet"; });
  ASSERT_TRUE(
      Cups("lpadmin -p sales -E -v tessary:/ -D 'PDF Drücker [Sales & Söhne]' -L Upstairs -o "
           "printer-is-shared=true"));
  ASSERT_TRUE(Cups("lpadmin -p 'Plain[Queue]' -E -v tessary:/"));
  ASSERT_TRUE(Cups("lpadmin -p other -E -v other://somewhere -D 'Laser [Office]'"));
  const std::string name = "PDF Drücker [Sales & Söhne]";

  Ask([&](tessary::Run& run) {
    std::string found;
    for (const auto& [key, value] : GetInstances(run)) found += key + "; ";
    EXPECT_EQ(found, "Queue; Sales & Söhne; ");
    CPrinterInfo printer(run);
    printer.SetDeviceName("Laser [Office]");
    EXPECT_EQ(printer.PortName(), "other://somewhere");
    printer.SetDeviceName(name);
    EXPECT_EQ(printer.PortName() + ", " + printer.Location() + ", " + printer.ShareName(),
              "TESSARY, Upstairs, sales");
    EXPECT_TRUE(printer.IsLocal() && printer.IsShared() && !printer.IsNetwork());
    EXPECT_FALSE(printer.IsDefault());
    printer.SetIsDefault(true);
    EXPECT_TRUE(printer.IsDefault());
    EXPECT_TRUE(printer.CanAdminister());
    EXPECT_TRUE(printer.ControlPause());
    EXPECT_EQ(printer.StatusText(), "Paused");
    EXPECT_TRUE(printer.ControlResume());
    EXPECT_EQ(printer.StatusText(), "Ready");
    printer.SetDeviceName("sales");
    EXPECT_EQ(printer.PortName(), "") << "a queue goes by its description";
  });

  ASSERT_TRUE(Cups("lp -d sales -t 'Brief \"1\"' -H hold " + document_));
  ASSERT_TRUE(Cups("lp -d sales -H hold " + document_ + " " + document_));
  Ask([&](tessary::Run& run) {
    CPrinterInfo printer(run);
    printer.SetDeviceName(name);
    CPrinterJobs& jobs = printer.Jobs();
    ASSERT_EQ(jobs.Count(), 2);
    const auto job = jobs.Item(1);
    EXPECT_EQ(job->Document(), "Brief \"1\"");
    EXPECT_EQ(job->StatusText(), "Paused");
    EXPECT_EQ(job->UserName(), run.host.system.UserName());
    EXPECT_EQ(job->PrinterName(), name);
    EXPECT_EQ(job->Submitted().year, run.host.clock.LocalTime().year);
    EXPECT_GE(job->Size(), 1024u);
    EXPECT_EQ(jobs.Item(2)->Position(), 2u);
    EXPECT_FALSE(jobs.PositionMoveUp(jobs.Item(2)->JobId()));
    EXPECT_FALSE(jobs.ControlRestart(job->JobId())) << "it was not printed yet";
    EXPECT_FALSE(jobs.ControlPause(4711));

    EXPECT_TRUE(printer.ControlPause());
    EXPECT_TRUE(jobs.ControlResume(job->JobId()));
    EXPECT_FALSE(jobs.Item(1)->IsPaused());
    EXPECT_TRUE(jobs.ControlPause(job->JobId()));
    EXPECT_TRUE(jobs.Item(1)->IsPaused());
    EXPECT_TRUE(jobs.ControlCancel(job->JobId()));
    EXPECT_EQ(jobs.Count(), 1);
    EXPECT_FALSE(jobs.ControlCancel(job->JobId()));
    EXPECT_TRUE(printer.ControlPurge());
    EXPECT_EQ(jobs.Count(), 0);
  });
}

TEST_F(PrivateCups, AQueueThatVanishesIsAnErrorOfItsReader) {
  ASSERT_TRUE(Cups("lpadmin -p gone -E -v tessary:/ -D 'Gone [x]'"));
  Ask([&](tessary::Run& run) {
    PrintSpooler& spooler = run.host.spooler;
    ASSERT_EQ(spooler.CountPrinters(), 1);
    const PrinterHandle printer = spooler.Open("Gone [x]", 0);
    ASSERT_TRUE(Cups("lpadmin -x gone"));
    EXPECT_EQ(spooler.NameOfPrinter(0).value, "Gone [x]");
    EXPECT_EQ(spooler.ReadPrinter(printer).failure.number, ENOENT);
    EXPECT_EQ(spooler.ReadJobs(printer, 9).failure.number, ENOENT);
    EXPECT_TRUE(spooler.ChangePrinter(printer, printing::kPausePrinter, nullptr));
    spooler.Close(printer);
    EXPECT_EQ(spooler.ReadPrinter(printer).failure.number, EBADF);
    EXPECT_EQ(spooler.Open("Gone [x]", 0), 0u);
  });
}

TEST_F(PrivateCups, WhoMayNotAdministerIsRefused) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root to be somebody else";
  ASSERT_TRUE(Cups("lpadmin -p sales -E -v tessary:/"));
  ASSERT_TRUE(Cups("lp -d sales -H hold " + document_));
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    // The one who may do everything is nobody now; failures of expectations count for its exit code.
    if (setgid(65534) != 0 || setuid(65534) != 0) _exit(9);
    Ask([&](tessary::Run& run) {
      CPrinterInfo printer(run);
      printer.SetDeviceName("sales");
      EXPECT_EQ(printer.PortName(), "TESSARY");
      EXPECT_FALSE(printer.CanAdminister());
      EXPECT_FALSE(printer.ControlPause());
      printer.SetIsDefault(true);
      EXPECT_FALSE(printer.IsDefault());
      EXPECT_EQ(printer.Jobs().Count(), 1);
      EXPECT_FALSE(printer.Jobs().ControlCancel(printer.Jobs().Item(1)->JobId()));
    });
    _exit(HasFailure() ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, 0);
}

TEST_F(PrivateCups, AServerThatStopsIsNotWaitedForTwice) {
  ASSERT_TRUE(Cups("lpadmin -p sales -E -v tessary:/"));
  Ask([&](tessary::Run& run) {
    ASSERT_EQ(run.host.spooler.CountPrinters(), 1);
    ASSERT_TRUE(Shell("kill -STOP $(cat '" + root_ + "/server.pid')"));
    const auto start = std::chrono::steady_clock::now();
    CPrinterInfo printer(run);
    printer.SetDeviceName("sales");
    EXPECT_EQ(printer.PortName(), "");
    EXPECT_TRUE(GetInstances(run).empty());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    ASSERT_TRUE(Shell("kill -CONT $(cat '" + root_ + "/server.pid')"));
  });
}

}  // namespace
}  // namespace tessary
