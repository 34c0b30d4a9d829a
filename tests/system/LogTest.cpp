#include <gtest/gtest.h>

#include "system/Error.h"
#include "system/modLog.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

const std::string kLog = R"(C:\Temp\Tessary\PDF Printer\x_printer.log)";

struct LogTest : testing::Test {
  LogTest() { run.job.SessionId = "x"; }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
};

TEST_F(LogTest, RecordsAreLinesOfTheirMoment) {
  WriteLog(run, "one");
  machine.clock.Advance(61'000);
  WriteLog(run, "zwei \xC3\xA4\r\nthree");
  EXPECT_EQ(machine.files.Text(kLog),
            "2026-03-02 10:00:00, PC, ann: one\r\n2026-03-02 10:01:01, PC, ann: zwei \xE4\r\nthree\r\n");
  EXPECT_EQ(machine.system.namesAsked, 2);
  RemoveOldLogFile(run);
  EXPECT_FALSE(machine.files.Exists(kLog));
}

TEST_F(LogTest, WaitsForAnotherHolder) {
  WriteLog(run, "first");
  machine.files.Hold(kLog, 5000);
  WriteLog(run, "second");
  EXPECT_NE(machine.files.Text(kLog).find("10:00:00, PC, ann: second"), std::string::npos)
      << "the record carries the time of the call";
  EXPECT_GE(machine.clock.Ticks(), 5000);
  EXPECT_LE(machine.clock.Ticks(), 5200);
}

TEST_F(LogTest, GivesUpAfterTwentySeconds) {
  WriteLog(run, "first");
  machine.files.Hold(kLog);
  try {
    WriteLog(run, "second");
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.number(), failures::kPermissionDenied);
    EXPECT_TRUE(error.description().starts_with("Unable to open and append to the log file '" + kLog + "'. "));
  }
  EXPECT_NEAR(static_cast<double>(machine.clock.Ticks()), 20'600, 700);
  const std::int64_t start = machine.clock.Ticks();
  EXPECT_THROW(WriteLog(run, "third"), Error);
  EXPECT_EQ(machine.clock.Ticks(), start) << "waited for once a run";
  EXPECT_THROW(RemoveOldLogFile(run), Error);
}

TEST_F(LogTest, LosesARecordQuietlyWithoutAHandleOrSpace) {
  machine.files.handles = 0;
  EXPECT_NO_THROW(WriteLog(run, "lost"));
  EXPECT_EQ(machine.clock.Ticks(), 0);
  machine.files.handles = 10;
  WriteLog(run, "kept");
  machine.files.freeBytes = 0;
  EXPECT_NO_THROW(WriteLog(run, "lost"));
  EXPECT_EQ(machine.files.Text(kLog), "2026-03-02 10:00:00, PC, ann: kept\r\n");
}

}  // namespace
}  // namespace tessary
