// A Windows machine in memory, so that the exact paths, files and command lines of a run can be proven
// anywhere.
//
//   SimulatedMachine machine;
//   machine.files.Put(R"(C:\gs\gswin32c.exe)", "…c:/gs/gs8.54/lib…");
//   machine.registry.Set(R"(HKEY_LOCAL_MACHINE\SOFTWARE\GPL Ghostscript\8.54\GS_DLL)", R"(C:\gs\gsdll32.dll)");
//   machine.processes.Expect(R"(cmd /c ""C:\gs\gswin32c.exe" @"C:\Temp\x_params.gs")")
//       .Writes(R"(C:\Temp\x_params.out)", "%%[Page: 1]%%\r\n", 200)
//       .Exits(0, 1500);
//   machine.files.Hold(R"(D:\out.pdf)", 5000);     // another program has it for five seconds
//   machine.desktop.answers = {box::kAnswerRetry};
//   machine.host().commandLine = R"(ps="C:\jobs\a.ps" sessionid=x)";
//   Run run(machine.host());
//   …
//   EXPECT_EQ(machine.files.Text(R"(D:\out.pdf)"), "…");
//
// Nothing takes time but waiting: SleepFor, Process::Wait and machine.clock.Advance move the clock, and what a
// child or the test has planned for a moment happens when the clock passes it. A command that was not expected,
// an expected one that never came, a registry key, a printer or a file left open fail the test.
#pragma once

#include "host/Host.h"
#include "tests/support/Journal.h"
#include "tests/support/SimulatedClock.h"
#include "tests/support/SimulatedFiles.h"
#include "tests/support/SimulatedParts.h"
#include "tests/support/SimulatedProcesses.h"
#include "tests/support/SimulatedSpooler.h"
#include "tests/support/SimulatedTray.h"

namespace tessary {

class SimulatedMachine {
 public:
  /// Drives C and D, the program C:\Program Files\Tessary\gui.exe, the folders C:\Temp, C:\WINDOWS\Fonts and
  /// those of the user "ann" on the computer "PC".
  SimulatedMachine();
  ~SimulatedMachine();
  SimulatedMachine(const SimulatedMachine&) = delete;
  SimulatedMachine& operator=(const SimulatedMachine&) = delete;

  Host& host() { return host_; }

  Journal journal;
  SimulatedClock clock;
  SimulatedFiles files{clock, journal};
  SimulatedProcesses processes{clock, files, journal};
  SimulatedGhostscripts ghostscripts;
  SimulatedRegistry registry;
  SimulatedShell shell{journal};
  SimulatedDesktop desktop{journal};
  SimulatedNotificationArea notificationArea{clock};
  SimulatedWindows windows;
  SimulatedSpooler spooler;
  SimulatedSystem system;
  SimulatedComponents components;

 private:
  Host host_{files,
             processes,
             ghostscripts,
             registry,
             shell,
             desktop,
             notificationArea,
             windows,
             spooler,
             spooler,
             clock,
             system,
             components,
             PathStyle::Windows(),
             CodePage::Windows1252,
             false,
             R"(C:\Program Files\Tessary\gui.exe)",
             R"(C:\)",
             R"(C:\standard input)",
             ""};
};

}  // namespace tessary
