// One run of the program: the machine and every process-wide field, grouped by the module that owns the group.
//
// main() makes one, every test makes its own. A function that needs the machine or a process-wide field takes
// the Run as its first parameter; nothing is reached in any other way.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "config/Dictionary.h"
#include "config/MacroEngine.h"
#include "ghostscript/Additions.h"
#include "host/Host.h"
#include "system/COpSysInfo.h"

namespace tessary {

class frmMain;

/// What the run was started for and what became of it; written by modMain, GetJobConfig and MakePDF.
struct JobState {
  Dictionary CommandLineParameters;
  std::string SessionId;  ///< prefix of all temporary files and of the log; empty when not given
  std::string DocumentName;
  std::string PrinterName;
  std::string InstanceName;               ///< selects the settings files; empty for the plain printer
  Dictionary DocumentProperties;          ///< at most `title`, `author` and `creationdate`
  bool SuppressErrors = false;            ///< error boxes are not shown; false until the settings are loaded
  bool DebugSetting = false;              ///< the temporary files of the job stay
  std::int32_t PageCount = 0;             ///< pages reported by Ghostscript
  std::int32_t FileCount = 0;             ///< files delivered
  std::string RunOnErrorProgram;          ///< the setting `runonerror`
  std::string RunOnErrorFolder;           ///< the setting `runonerrordir`
  bool RunOnErrorDone = false;            ///< the program has been started in this run
  bool AfterPrintDone = false;            ///< the same for the setting `afterprintprogram`
  std::string ProgressFile;               ///< what Ghostscript is saying; its page markers tell the progress
  std::string OutputFile;                 ///< the expanded `output`
  std::shared_ptr<Dictionary> JobConfig;  ///< null: no settings had been resolved
};

struct LogState {
  std::string fileName;        ///< empty: not worked out yet
  bool outOfPatience = false;  ///< a record has waited in vain for the file; later ones try once
};

struct FolderState {
  std::string temporary;  ///< empty: nothing found yet
  std::string userData;
};

struct UtilState {
  std::string computerName;  ///< empty: not read yet
  std::string userName;
  std::unique_ptr<COpSysInfo> opSysInfo;  ///< null: not made yet
  std::optional<std::int64_t> queueRan;   ///< Clock::Ticks when DoEvents last ran the queue; nothing: never
};

struct LabelState {
  Dictionary texts;          ///< label key to text
  std::int16_t charset = 0;  ///< forced on the fonts of all controls: a value of ui/Form.h; 0 forces none
};

struct MacroState {
  std::string guid;                     ///< empty: not used yet
  MacroEngineFactory makeEngine;        ///< empty: this machine has no macro language
  std::unique_ptr<MacroEngine> engine;  ///< null: no macro has needed it yet
};

struct GhostscriptState {
  std::string askedExecutable;  ///< the program that was asked for its version; empty: none yet
  std::string answeredVersion;
  GhostscriptAdditions nextRun;         ///< taken by the next run, and empty again
  bool unreadableMarkerLogged = false;  ///< the log says already that a page marker had no page number
};

/// Written by GetJobConfig and the dialogs.
struct UiState {
  std::string ConfirmedOutputFile;  ///< chosen in a save dialog, which has asked about overwriting; empty: none
};

struct TrayState {
  bool ShowProgressFinished = false;         ///< the balloon of the finished document is wanted
  std::optional<std::int64_t> FinishedTime;  ///< Clock::Ticks when it was asked for; empty: never
  bool BalloonClosed = false;                ///< it is gone
  std::uint32_t taskbarCreatedMessage = 0;   ///< number of the message; 0: not asked for yet
  std::shared_ptr<frmMain> mainForm;         ///< null: nothing has been told of yet
};

struct Run {
  explicit Run(Host& machine) : host(machine) {}

  Host& host;
  JobState job;
  LogState log;
  FolderState folders;
  UtilState util;
  LabelState labels;
  MacroState macros;
  GhostscriptState ghostscript;
  UiState ui;
  TrayState tray;  ///< the last member: its icon goes first
};

}  // namespace tessary
