// Printers, their queues and the instances among them, on the simulated machine.
#include <gtest/gtest.h>

#include "system/CPrinterInfo.h"
#include "system/Error.h"
#include "system/modInstances.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

JobRecord Job(std::uint32_t id, std::uint32_t size = 0, std::uint32_t pages = 0) {
  JobRecord record;
  record.jobId = id;
  record.size = size;
  record.totalPages = pages;
  return record;
}

struct PrinterTest : testing::Test {
  CPrinterInfo Printer(const std::string& name) {
    CPrinterInfo printer(run);
    printer.SetDeviceName(name);
    return printer;
  }
  std::string Ids(const CPrinterJobs& jobs) {
    std::string ids;
    for (const auto& job : jobs) ids += std::to_string(job->JobId()) + " ";
    return ids;
  }

  SimulatedMachine machine;
  SimulatedSpooler& spooler = machine.spooler;
  tessary::Run run{machine.host()};
};

TEST_F(PrinterTest, InstancesAreThoseOfTheSystemsPort) {
  EXPECT_TRUE(GetInstances(run).empty());
  for (const char* name : {"PDF Printer", "PDF Printer [Sales]", "Second [Sales]", "[a:b] [c]", "Broken [x"})
    spooler.Add(name, "TESSARY");
  spooler.Add("Other [Office]", "LPT1:");
  spooler.Add("Case [Small]", "Tessary");
  spooler.Add("Silent [Silent]", "TESSARY").unreadable = {1722, "The RPC server is unavailable."};
  spooler.Add("Once [Once]", "TESSARY");
  spooler.Add("Twice [Twice]", "TESSARY");
  spooler.unreadableNames = {{8, 1}, {9, 2}};
  std::string found;
  for (const auto& [key, value] : GetInstances(run)) found += key + "=" + *value.AsText() + "; ";
  EXPECT_EQ(found, "=; Sales=Sales; a_b=a_b; Once=Once; ");
}

TEST_F(PrinterTest, APrinterThatIsGoneHasAnEmptySnapshot) {
  SimulatedSpooler::Printer& known = spooler.Add("Known", "FILE:");
  known.record.devMode.emplace().copies = 3;
  known.jobs = {Job(1)};
  CPrinterInfo printer = Printer("Known");
  EXPECT_TRUE(printer.IsToFile());
  EXPECT_EQ(printer.DevMode().Copies(), 3);
  EXPECT_EQ(printer.Jobs().Count(), 1);

  known.unreadable = {5, "Access is denied."};
  printer.Refresh();
  EXPECT_EQ(printer.GetPrinterError(), 5);
  EXPECT_EQ(printer.StatusText(), "Access is denied.");
  known.unreadable.number = 9999;
  machine.system.errorTexts[9999] = "";
  printer.Refresh();
  EXPECT_EQ(printer.StatusText(), "Error (9999) not defined.");

  spooler.printers.clear();
  printer.Refresh();
  EXPECT_EQ(printer.PortName(), "");
  EXPECT_EQ(printer.DevMode().Copies(), 0);
  EXPECT_EQ(printer.GetPrinterError(), 0);
  EXPECT_EQ(printer.StatusText(), "Ready");
  EXPECT_EQ(printer.Jobs().Count(), 0);
  EXPECT_FALSE(printer.CanAdminister());
  EXPECT_FALSE(printer.ControlPause());
  EXPECT_FALSE(printer.Jobs().ControlPause(1));
  EXPECT_FALSE(printer.Jobs().PositionMoveUp(1));
}

TEST_F(PrinterTest, StatusTextTakesWholeValues) {
  SimulatedSpooler::Printer& known = spooler.Add("Known", "lower file: FILE");
  const std::pair<std::uint32_t, const char*> cases[] = {
      {0, "Ready"},
      {1, "Paused"},
      {2, "Error"},
      {4, "Deleting..."},
      {8, "Paper Jam"},
      {16, "Paper Out"},
      {32, "Manual Feed Required"},
      {64, "Paper Problem"},
      {128, "Offline"},
      {256, "Downloading Job"},
      {512, "Busy"},
      {1024, "Printing"},
      {2048, "Output Bill Full"},
      {4096, "Not Available"},
      {8192, "Waiting"},
      {16384, "Processing Job"},
      {65536, "Warming Up"},
      {131072, "Toner Low"},
      {262144, "Toner Out"},
      {524288, "Page too Complex"},
      {1048576, "User Intervention Required"},
      {2097152, "Out of Memory"},
      {4194304, "Door Open"},
      {8388608, "Unable to connect"},
      {16777216, "Power Save Mode"},
      {0xFFFF8000, "Initializing"},
      {32768, "8000"},
      {3, "3"},
      {0x80000001, "80000001"},
  };
  for (const auto& [status, text] : cases) {
    known.record.status = status;
    EXPECT_EQ(Printer("Known").StatusText(), text) << status;
  }
  EXPECT_FALSE(Printer("Known").IsToFile());
}

TEST_F(PrinterTest, APrinterOfAnotherMachineIsDisplayedWithIt) {
  const struct {
    std::uint32_t attributes;
    const char *server, *name, *display;
  } cases[] = {
      {0x10, R"(\\PRINTS)", R"(\\PRINTS\Laser)", R"(Laser on PRINTS)"},
      {0x50, R"(\\S)", R"(x \ y\z)", R"( y\z on S)"},
      {0x40, R"(\\PRINTS)", R"(\\PRINTS\Laser)", R"(\\PRINTS\Laser)"},
      {0x10, R"(\\)", R"(\\PRINTS\Laser)", R"(\\PRINTS\Laser)"},
      {0x10, R"(PRINTS)", R"(\\PRINTS\Laser)", R"(\\PRINTS\Laser)"},
      {0x10, R"(\\PRINTS)", R"(\\Laser)", R"(\\Laser)"},
      {0x10, R"(\\PRINTS)", R"(\)", R"(\)"},
  };
  for (const auto& each : cases) {
    spooler.printers.clear();
    PrinterRecord& record = spooler.Add(each.name, "IP_1").record;
    record.attributes = each.attributes;
    record.serverName = each.server;
    EXPECT_EQ(Printer(each.name).DisplayName(), each.display) << each.server << " " << each.name;
  }
}

TEST_F(PrinterTest, CommandsNeedAccessAndReadThePrinterAnew) {
  spooler.Add("P", "TESSARY").jobs = {Job(1), Job(2)};
  CPrinterInfo printer = Printer("P");
  EXPECT_TRUE(printer.ControlPause());
  EXPECT_TRUE(printer.IsPaused());
  EXPECT_TRUE(printer.ControlResume());
  EXPECT_FALSE(printer.IsPaused());
  EXPECT_TRUE(printer.ControlPurge());
  EXPECT_EQ(Ids(printer.Jobs()), "");
  spooler.refused = {"pause P"};
  EXPECT_FALSE(printer.ControlPause());
  spooler.calls.clear();
  spooler.refused = {"open 4 P", "open 983052 P"};
  EXPECT_FALSE(printer.CanAdminister());
  EXPECT_FALSE(printer.ControlPause());
  printer.ShowPropertiesDialog(77);
  EXPECT_EQ(spooler.calls, "open 4 P; open 4 P; open 983052 P; open 983048 P; properties P 77; ");
}

TEST_F(PrinterTest, TheDefaultPrinterIsKeptByThePlatform) {
  const struct {
    std::uint32_t platform, version;
    const char* calls;
  } cases[] = {
      {1, 4, "write Laser; broadcast 26 500; "},
      {2, 4, "profile Windows/device; broadcast 26 500; "},
      {2, 5, "default Laser; "},
      {2, 10, "default Laser; "},
      {0, 6, "default Laser; "},
  };
  for (const auto& each : cases) {
    SimulatedMachine older;
    older.system.version.platformId = each.platform;
    older.system.version.majorVersion = each.version;
    older.spooler.Add("Laser", "LPT1:");
    older.spooler.profile["PrinterPorts/Laser"] = "driver,LPT1:,15,45";
    tessary::Run olderRun(older.host());
    CPrinterInfo printer(olderRun);
    printer.SetDeviceName("laser");
    EXPECT_FALSE(printer.IsDefault());
    printer.SetDeviceName("Laser");
    printer.SetIsDefault(false);
    EXPECT_EQ(older.spooler.calls, "") << each.calls;
    printer.SetIsDefault(true);
    EXPECT_EQ(older.spooler.calls, each.calls);
    EXPECT_TRUE(printer.IsDefault()) << each.calls;
    older.spooler.defaultName = "LASER";
    EXPECT_TRUE(printer.IsDefault()) << each.calls;
    const bool inProfile = each.platform == 2 && each.version == 4;
    EXPECT_EQ(older.spooler.profile["Windows/device"], inProfile ? "Laser,driver,LPT1:" : "");
  }
}

TEST_F(PrinterTest, APrinterWithoutPortIsNoDefault) {
  spooler.Add("Laser", "LPT1:");
  machine.system.version.majorVersion = 4;
  for (const char* ports : {"", "driver", "driver,LPT1:"}) {
    spooler.profile["PrinterPorts/Laser"] = ports;
    Printer("Laser").SetIsDefault(true);
  }
  EXPECT_EQ(spooler.calls, "");
  spooler.profile["PrinterPorts/Laser"] = "driver,LPT1:,15";
  spooler.refused = {"profile Windows/device"};
  Printer("Laser").SetIsDefault(true);
  EXPECT_EQ(spooler.calls, "profile Windows/device; broadcast 26 500; ");
}

TEST_F(PrinterTest, TheQueueFollowsTheSpooler) {
  SimulatedSpooler::Printer& printer = spooler.Add("P", "TESSARY");
  printer.jobs = {Job(9, 700, 5), Job(26), Job(27)};
  CPrinterJobs jobs(run);
  jobs.SetDeviceName("P");
  EXPECT_EQ(jobs.Item(2)->JobId(), 26u);
  EXPECT_EQ(jobs.Item("1A")->JobId(), 26u);

  printer.jobs = {Job(27), Job(9, 300, 8)};
  EXPECT_EQ(jobs.Count(), 2);
  EXPECT_EQ(Ids(jobs), "27 9 ");
  EXPECT_EQ(jobs.Item("9")->Size(), 300u);
  EXPECT_EQ(jobs.Item("9")->SizeMax(), 700u);
  EXPECT_EQ(jobs.Item("9")->TotalPagesMax(), 8u);
  EXPECT_THROW((void)jobs.Item("1A"), Error) << "gone";
  EXPECT_THROW((void)jobs.Item("1a"), Error);
  EXPECT_THROW((void)jobs.Item(0), Error);
  EXPECT_THROW((void)jobs.Item(3), Error);

  printer.jobs = {Job(9, 100)};
  printer.jobsUnreadable = {5, ""};
  EXPECT_EQ(jobs.Count(), 1);
  EXPECT_EQ(Ids(jobs), "");
  printer.jobsUnreadable = {};
  printer.unreadable = {6, ""};
  EXPECT_EQ(jobs.Count(), 0);
  EXPECT_EQ(jobs.GetPrinterError(), 6);
  printer.unreadable = {};
  jobs.Refresh();
  EXPECT_EQ(jobs.Item(1)->SizeMax(), 100u) << "a job that had left the queue begins anew";
}

TEST_F(PrinterTest, JobCommandsReachTheSpooler) {
  const auto Fill = [this] {
    auto& queue = spooler.Get("P").jobs;
    queue = {Job(1), Job(2)};
    queue[1].position = 2;
  };
  spooler.Add("P", "TESSARY");
  Fill();
  CPrinterJobs jobs(run);
  jobs.SetDeviceName("P");
  EXPECT_TRUE(jobs.ControlPause(2));
  EXPECT_TRUE(jobs.Item(2)->IsPaused());
  EXPECT_TRUE(jobs.ControlResume(2));
  EXPECT_TRUE(jobs.ControlRestart(1));
  EXPECT_EQ(jobs.Item(1)->StatusText(), "Restarting...");
  EXPECT_TRUE(jobs.ControlCancel(1));
  EXPECT_EQ(Ids(jobs), "2 ");
  EXPECT_FALSE(jobs.ControlCancel(1));
  EXPECT_TRUE(jobs.PositionMoveUp(2));
  EXPECT_TRUE(jobs.PositionMoveDown(2));
  EXPECT_FALSE(jobs.PositionMoveDown(1));
  spooler.refused = {"open 4 P"};
  EXPECT_FALSE(jobs.PositionMoveUp(2));
  EXPECT_EQ(spooler.calls,
            "job 2 1; job 2 2; job 1 4; job 1 5; job 1 5; open 4 P; job 2 0 at 1; open 4 P; job 2 0 at 2; "
            "open 4 P; open 4 P; ");

  machine.system.version.majorVersion = 3;
  run.util.opSysInfo.reset();
  spooler.calls.clear();
  Fill();
  EXPECT_TRUE(jobs.ControlCancel(1));
  EXPECT_EQ(spooler.calls, "job 1 3; ");
}

TEST_F(PrinterTest, JobStatusAndTimeAreForPeople) {
  const std::pair<std::uint32_t, const char*> cases[] = {
      {0, ""},
      {1 + 2 + 8, "Error - Spooling..."},
      {1 + 2 + 1024 + 512, "User Intervention Required - Cannot Print"},
      {0x3FC,
       "Offline - Paper Out - Deleting... - Spooling... - Printing... - Printed - Deleted - Cannot Print"},
      {0x800 + 0x80, "Restarting... - Printed"},
  };
  JobRecord record;
  for (const auto& [status, text] : cases) {
    record.status = status;
    EXPECT_EQ(CPrinterJobInfo(run, record).StatusText(), text);
  }
  record.statusText = "Waiting for paper";
  EXPECT_EQ(CPrinterJobInfo(run, record).StatusText(), "Waiting for paper");
  record.submitted = machine.clock.startTime - 3600;
  EXPECT_EQ(CPrinterJobInfo(run, record).Submitted().hour, 9);
}

TEST_F(PrinterTest, NamesOfDeviceSettingsAreFixedFields) {
  DeviceMode record;
  record.deviceName = std::string("PDF Printer\0 [Sales] and", 24);
  record.formName = "  " + std::string(28, 'A') + "  ";
  CDevMode devMode;
  devMode.Load(&record);
  devMode.Load(nullptr);
  EXPECT_EQ(devMode.DeviceName(), "PDF Printer");
  EXPECT_EQ(devMode.FormName(), std::string(28, 'A'));
}

}  // namespace
}  // namespace tessary
