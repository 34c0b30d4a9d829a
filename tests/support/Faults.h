// Forwarding wrappers that let the n-th call of a kind fail, for any machine:
//
//   for (int n = 1, last = 1; n <= last; ++n) {
//     SimulatedMachine machine;
//     FaultyFiles files(machine.files, n);
//     Host host = WithFiles(machine.host(), files);
//     …run…
//     last = files.calls();
//   }
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/Host.h"

namespace tessary {

/// Counts calls and picks the one that fails.
class Fault {
 public:
  /// The `failing`-th call, counted from 1, fails; 0: none does.
  Fault(int failing, Failure failure) : failing_(failing), failure_(std::move(failure)) {}
  /// To be asked once a call.
  Failure Next() { return ++calls_ == failing_ ? failure_ : Failure{}; }
  [[nodiscard]] int calls() const { return calls_; }

 private:
  int failing_;
  Failure failure_;
  int calls_ = 0;
};

/// The n-th call that writes fails and does nothing: Open for Create or Append, Replace, Copy, MakeFolder, and
/// Write, Truncate and the early Close of a file opened to be written.
class FaultyFiles : public Files {
 public:
  explicit FaultyFiles(Files& inner, int failing = 0, Failure failure = {failures::kDiskFull, "Disk full"})
      : inner_(inner), fault_(failing, std::move(failure)) {}

  /// How many such calls there were.
  [[nodiscard]] int calls() const { return fault_.calls(); }

  std::optional<FileInfo> Find(const std::string& path) override { return inner_.Find(path); }
  Result<std::vector<FileInfo>> List(const std::string& folder) override { return inner_.List(folder); }
  Result<std::unique_ptr<File>> Open(const std::string& path, OpenMode mode) override {
    if (mode == OpenMode::Read) return inner_.Open(path, mode);
    if (Failure failure = fault_.Next()) return failure;
    auto opened = inner_.Open(path, mode);
    if (!opened.ok()) return std::move(opened.failure);
    return std::unique_ptr<File>(std::make_unique<FaultyFile>(std::move(opened.value), fault_));
  }
  Failure Replace(const std::string& path, std::string_view bytes) override {
    Failure failure = fault_.Next();
    return failure ? failure : inner_.Replace(path, bytes);
  }
  Failure Copy(const std::string& source, const std::string& destination) override {
    Failure failure = fault_.Next();
    return failure ? failure : inner_.Copy(source, destination);
  }
  Failure Remove(const std::string& path) override { return inner_.Remove(path); }
  Failure RemoveFolder(const std::string& path) override { return inner_.RemoveFolder(path); }
  Failure MakeFolder(const std::string& path) override {
    Failure failure = fault_.Next();
    return failure ? failure : inner_.MakeFolder(path);
  }
  Result<std::unique_ptr<FileLock>> Lock(const std::string& path) override { return inner_.Lock(path); }
  std::vector<std::string> Drives() override { return inner_.Drives(); }

 private:
  class FaultyFile : public File {
   public:
    FaultyFile(std::unique_ptr<File> inner, Fault& fault) : inner_(std::move(inner)), fault_(fault) {}
    Result<std::size_t> Read(char* buffer, std::size_t size) override { return inner_->Read(buffer, size); }
    Failure Write(std::string_view bytes) override {
      Failure failure = fault_.Next();
      return failure ? failure : inner_->Write(bytes);
    }
    Failure Seek(std::uint64_t position) override { return inner_->Seek(position); }
    Failure Truncate() override {
      Failure failure = fault_.Next();
      return failure ? failure : inner_->Truncate();
    }
    Result<std::uint64_t> Size() override { return inner_->Size(); }
    Failure Close() override {
      const Failure closed = inner_->Close();
      Failure failure = fault_.Next();
      return failure ? failure : closed;
    }

   private:
    std::unique_ptr<File> inner_;
    Fault& fault_;
  };

  Files& inner_;
  Fault fault_;
};

/// The n-th start of a child fails.
class FaultyProcesses : public Processes {
 public:
  FaultyProcesses(Processes& inner, int failing)
      : inner_(inner), fault_(failing, {failures::kFileNotFound, "File not found"}) {}

  Command ProgramCommand(const std::string& program, const std::vector<std::string>& parameters) override {
    return inner_.ProgramCommand(program, parameters);
  }
  Command ShellCommand(const std::string& text, const std::vector<std::string>& values) override {
    return inner_.ShellCommand(text, values);
  }
  Result<std::unique_ptr<Process>> Start(const Command& command, const std::string& folder,
                                         Streams streams) override {
    if (Failure failure = fault_.Next()) return failure;
    return inner_.Start(command, folder, streams);
  }

 private:
  Processes& inner_;
  Fault fault_;
};

/// `host` with another interface for its files, or its processes.
inline Host WithParts(const Host& host, Files& files, Processes& processes) {
  return {files,
          processes,
          host.ghostscripts,
          host.machineSettings,
          host.shell,
          host.desktop,
          host.notificationArea,
          host.windowManager,
          host.spooler,
          host.defaultPrinter,
          host.clock,
          host.system,
          host.components,
          host.paths,
          host.codePage,
          host.lfEndsLines,
          host.programFile,
          host.workingFolder,
          host.standardInput,
          host.commandLine};
}
inline Host WithFiles(const Host& host, Files& files) { return WithParts(host, files, host.processes); }
inline Host WithProcesses(const Host& host, Processes& processes) {
  return WithParts(host, host.files, processes);
}

}  // namespace tessary
