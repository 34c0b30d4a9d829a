// A machine, as the logic sees it: one small interface for each kind of outside thing.
//
// The logic gets a Host through its Run and reaches the outside in no other way. Failures come back as values;
// no method throws. Whoever makes the interfaces keeps them alive as long as the Host.
#pragma once

#include <string>

#include "host/Clock.h"
#include "host/CodePage.h"
#include "host/Components.h"
#include "host/Desktop.h"
#include "host/Files.h"
#include "host/MachineSettings.h"
#include "host/NotificationArea.h"
#include "host/PathStyle.h"
#include "host/PrintSpooler.h"
#include "host/Processes.h"
#include "host/Shell.h"
#include "host/System.h"
#include "host/WindowManager.h"

namespace tessary {

struct Host {
  Files& files;
  Processes& processes;
  Ghostscripts& ghostscripts;
  MachineSettings& machineSettings;
  Shell& shell;
  Desktop& desktop;
  NotificationArea& notificationArea;
  WindowManager& windowManager;
  PrintSpooler& spooler;
  DefaultPrinter& defaultPrinter;
  Clock& clock;
  System& system;
  Components& components;

  PathStyle paths;
  CodePage codePage = CodePage::Utf8;
  bool lfEndsLines = true;    ///< lines of text files end in LF alone or in CR LF; false: in CR LF only
  std::string programFile;    ///< full path of the running program
  std::string workingFolder;  ///< the folder that the process was started in, full path
  std::string standardInput;  ///< the path by which the standard input of the process is opened
  std::string commandLine;    ///< its raw command line, without the program itself
};

}  // namespace tessary
