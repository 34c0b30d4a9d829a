#include "host/posix/PosixMachine.h"

#include <climits>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include "host/CommandLine.h"
#include "host/posix/PosixClock.h"
#include "host/posix/PosixComponents.h"
#include "host/posix/PosixDesktop.h"
#include "host/posix/PosixFiles.h"
#include "host/posix/PosixGhostscripts.h"
#include "host/posix/PosixMachineSettings.h"
#include "host/posix/PosixNotificationArea.h"
#include "host/posix/PosixProcesses.h"
#include "host/posix/PosixShell.h"
#include "host/posix/PosixSystem.h"
#include "host/posix/PosixWindowManager.h"
#include "host/posix/cups/PosixSpooler.h"

namespace tessary {

namespace {

/// Makes the process independent of what its parent left it with.
void SettleProcess() {
  // A write that fails is a failure of that write and no end of the program.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  // Where this one is ignored the exit codes of children are lost.
  std::signal(SIGCHLD, SIG_DFL);
  // Without standard streams a file of the job could become the standard error, and messages would go into it.
  int fd = 0;
  do {
    fd = open("/dev/null", O_RDWR);
  } while (fd >= 0 && fd <= STDERR_FILENO);
  if (fd > STDERR_FILENO) close(fd);
}

std::string ProgramFile() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  return length < 0 ? std::string() : std::string(path, static_cast<std::size_t>(length));
}

std::string WorkingFolder() {
  char path[PATH_MAX];
  return getcwd(path, sizeof path) ? path : "";
}

}  // namespace

struct PosixMachine::Parts {
  PosixFiles files;
  PosixProcesses processes;
  PosixGhostscripts ghostscripts;
  PosixMachineSettings machineSettings;
  PosixShell shell;
  PosixDesktop desktop{[this] { notificationArea.RunQueue(); }};
  PosixNotificationArea notificationArea{desktop.terminal()};
  PosixWindowManager windowManager;
  CupsClient printServer;
  PosixSpooler spooler{printServer};
  PosixDefaultPrinter defaultPrinter{printServer};
  PosixClock clock;
  PosixSystem system;
  PosixComponents components;
  Host host;

  Parts(std::string commandLine, const Display* display)
      : host{files,
             processes,
             ghostscripts,
             machineSettings,
             shell,
             display != nullptr ? display->desktop : desktop,
             display != nullptr ? display->notificationArea : notificationArea,
             display != nullptr ? display->windowManager : windowManager,
             spooler,
             defaultPrinter,
             clock,
             system,
             components,
             PathStyle::Posix(),
             CodePage::Utf8,
             true,
             ProgramFile(),
             WorkingFolder(),
             "/dev/stdin",
             std::move(commandLine)} {}
};

PosixMachine::PosixMachine(int argc, const char* const* argv, const Display* display) {
  SettleProcess();
  std::vector<std::string> arguments;
  if (argc > 1) arguments.assign(argv + 1, argv + argc);
  parts_ = std::make_unique<Parts>(JoinParameters(arguments), display);
}

PosixMachine::~PosixMachine() = default;

Host& PosixMachine::host() { return parts_->host; }

}  // namespace tessary
