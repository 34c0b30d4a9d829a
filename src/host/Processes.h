// Child programs. A child is never started through a command interpreter with data in its line, except where a
// machine knows no other way (ShellCommand).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/Failure.h"

namespace tessary {

/// A command in both forms that machines want, made by the host from the same parts.
struct Command {
  std::string line;                    ///< what a Windows machine executes; what messages and logs show
  std::vector<std::string> arguments;  ///< what a POSIX machine executes; the program comes first
  std::string errorFile;               ///< where a hidden child's standard error is kept; empty: it is dropped
  bool outlives = false;               ///< the signals of this program's terminal do not reach the child
};

enum class Streams {
  Hidden,     ///< nothing to read, and what the child says is dropped but for Command::errorFile
  Inherited,  ///< the child has the standard streams of this process
};

/// A child that was started. The object may go while the child runs: the child runs on.
class Process {
 public:
  virtual ~Process() = default;
  [[nodiscard]] virtual std::int64_t Id() const = 0;
  /// Waits at most `milliseconds` (0: just looks) and returns at once when the child ends. True if it has
  /// ended.
  virtual bool Wait(int milliseconds) = 0;
  /// The exit code of a child that has ended; 128 + the signal's number where a signal ended it.
  virtual std::int32_t ExitCode() = 0;
};

class Processes {
 public:
  virtual ~Processes() = default;

  /// The command that runs `program` with `parameters`, each `name=value` or a plain word. The line has the
  /// quoting that this program's own command line has (QuoteParameter in host/CommandLine.h).
  virtual Command ProgramCommand(const std::string& program, const std::vector<std::string>& parameters) = 0;

  /// The command by which the machine's command interpreter does what `text` says, a child that outlives this
  /// program. The placeholders in it, "%1" for the first of `values` (at most nine) and on, stand for the
  /// values. On a POSIX machine a value is one word wherever its placeholder stands, and never read as a
  /// command; on a Windows machine it is put into the line as it is (FillPlaceholders in host/CommandLine.h),
  /// and the quotes around it are up to `text`.
  virtual Command ShellCommand(const std::string& text, const std::vector<std::string>& values) = 0;

  /// Starts a child in `folder` (empty: the folder of this process). A program that is missing or may not be
  /// run is a failure; nothing is left running then.
  virtual Result<std::unique_ptr<Process>> Start(const Command& command, const std::string& folder,
                                                 Streams streams) = 0;
};

/// How the Ghostscript of this machine is named, asked for its version and called.
class Ghostscripts {
 public:
  virtual ~Ghostscripts() = default;
  /// The file name of its console program: "gswin32c.exe", "gs".
  virtual std::string ExecutableName() = 0;
  /// What `executable` answers when it is asked for its version, such as "10.00.0": without a line end, empty
  /// if it answers nothing within 10 seconds or fails. `failure` is set where a program is not to be asked and
  /// the version has to be read from its bytes instead.
  virtual Result<std::string> AskVersion(const std::string& executable) = 0;
  /// The command that runs it with the one argument "@" + `parameterFile`. Where a program has a standard error
  /// of its own it is kept in `parameterFile` + ".err", emptied at the start, and the files that the program
  /// makes are for their owner alone.
  virtual Command RunCommand(const std::string& executable, const std::string& parameterFile) = 0;
};

}  // namespace tessary
