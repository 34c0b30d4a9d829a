#include "monitor/posix/Backend.h"

#include <algorithm>
#include <fcntl.h>
#include <ostream>
#include <sys/stat.h>
#include <unistd.h>

#include "config/modFolders.h"
#include "host/posix/PosixFailure.h"
#include "host/posix/PosixFile.h"
#include "host/posix/UserFolders.h"
#include "monitor/posix/BackendDocument.h"
#include "monitor/posix/BackendPrivileges.h"
#include "monitor/posix/Devices.h"
#include "monitor/posix/JobUser.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/Paths.h"
#include "system/modInstances.h"

namespace tessary {

namespace {

constexpr int kPrinted = 0;
/// The document, the user or the delivery is at fault, whatever it is: the server takes other codes for a
/// reason to stop the queue, or to try the same job again and again.
constexpr int kCancelJob = 5;

constexpr std::size_t kJob = 0, kUser = 1, kTitle = 2, kCopies = 3, kFiles = 5;  // the arguments
constexpr std::size_t kMaxTitle = 255;                                           // bytes

/// Where the other programs lie. The backend itself lies in a folder of the server's.
std::string ProgramFolder() {
  const std::string named = EnvironmentValue("TESSARY_PROGRAMS");
  return named.starts_with('/') ? named : TESSARY_PROGRAM_FOLDER;
}

/// The printer that the user sees: its description where that names an instance, otherwise its name.
std::string PrinterName() {
  const std::string description = EnvironmentValue("PRINTER_INFO"), queue = EnvironmentValue("PRINTER");
  if (!GetInstanceFromPrinterName(description).empty()) return CutText(description, kMaxTitle);
  return queue.empty() ? "PDF Printer" : CutText(queue, kMaxTitle);
}

/// Opens the files that the server names, which are its own. Nothing is read from them here.
std::vector<UniqueFd> OpenFiles(const std::vector<std::string>& arguments) {
  std::vector<UniqueFd> files;
  for (std::size_t i = kFiles; i < arguments.size(); ++i) {
    Result<UniqueFd> file = OpenDescriptor(arguments[i], O_RDONLY | O_NOFOLLOW, 0);
    RaiseIf(file.failure);
    struct stat status {};
    if (fstat(file.value.Get(), &status) != 0 || !S_ISREG(status.st_mode))
      throw Error(errors::kCommon, "The server's file is no plain file");
    files.push_back(std::move(file.value));
  }
  return files;
}

/// True for a printer that takes jobs from anybody in some networks: nobody has proven whose they are. The
/// administrator says so by its device. Raises kCommon for devices that were added by other means: there the
/// server may let anybody print in anybody's name.
bool IsForAll() {
  const std::string device = EnvironmentValue("DEVICE_URI");
  if (device != kOwnDevice && device != kCommonDevice)
    throw Error(errors::kCommon, "The job is refused: the printer was not added with tessary-printer.");
  return device == kCommonDevice;
}

/// Becomes the user of the job. Raises kCommon with the reason when nobody may have it.
JobUser BecomeJobUser(Run& run, const std::vector<std::string>& arguments) {
  const RemoteRule remote{GetMachineSetting(run, "RemoteUser"), GetMachineSetting(run, "RemoteFolder")};
  const JobOrigin origin{arguments[kUser], IsForAll()};
  JobUser user = ChooseUser(origin, remote, MachineAccounts());
  if (!user.refusal.empty()) throw Error(errors::kCommon, "The job is refused: " + user.refusal + ".");
  if (Failure failure = BecomeUser(user.account, !user.remoteFolder.empty()))
    throw Error(errors::kCommon, "Unable to become the user '" + user.account.name + "': " + failure.text);
  return user;
}

/// The documents of one job, one after the other.
class Documents {
 public:
  Documents(Run& run, JobReport& report, const BackendCancel& cancel, const BackendTicket& ticket,
            std::string title)
      : report_(report), cancel_(cancel), document_(run, report, cancel, ticket), title_(std::move(title)) {}

  /// Prints the documents of the stream `fd`. True if there were some and all became PDFs.
  bool PrintFrames(int fd) {
    FrameReader reader(SourceOf(fd));
    const ByteSource document = [&](char* buffer, std::size_t size) { return reader.Read(buffer, size); };
    for (;;) {
      const auto header = reader.Next();
      if (header.failure.number == failures::kCancelled) throw Error(header.failure);
      if (!header.ok()) return Damaged(header.failure.text);
      if (!header.value) return number_ > 0 ? allPrinted_ : Damaged("holds no document");
      Print(document, header.value->copies);
    }
  }

  bool PrintFiles(const std::vector<UniqueFd>& files, int copies) {
    for (const UniqueFd& file : files) Print(SourceOf(file.Get()), copies);
    return allPrinted_;
  }

 private:
  ByteSource SourceOf(int fd) {
    return [this, fd](char* buffer, std::size_t size) -> Result<std::size_t> {
      if (Failure failure = cancel_.AwaitReadable(fd)) return failure;
      const ssize_t count = Restarted([&] { return read(fd, buffer, size); });
      if (count < 0) return FailureOf(errno);
      return static_cast<std::size_t>(count);
    };
  }

  void Print(const ByteSource& source, int copies) {
    ++number_;
    const std::string title = number_ > 1 ? title_ + " (" + std::to_string(number_) + ")" : title_;
    allPrinted_ = document_.Print(source, title, copies) && allPrinted_;
  }

  /// A document that the damage has cut off has said so itself.
  bool Damaged(const std::string& problem) {
    const std::string words = "What came from the filters " + problem + ".";
    allPrinted_ ? report_.Error(words) : report_.Debug(words);
    return false;
  }

  JobReport& report_;
  const BackendCancel& cancel_;
  BackendDocument document_;
  std::string title_;
  int number_ = 0;
  bool allPrinted_ = true;
};

bool PrintJob(Run& run, const std::vector<std::string>& arguments, JobReport& report) {
  const std::vector<UniqueFd> files = OpenFiles(arguments);
  const std::string printer = PrinterName(), folder = ProgramFolder();
  const JobUser user = BecomeJobUser(run, arguments);
  const BackendCancel cancel;
  run.host.programFile = JoinPath(run.host.paths, folder, "tessary-backend");
  run.job.PrinterName = printer;
  run.job.InstanceName = GetInstanceFromPrinterName(printer);
  const BackendTicket ticket{arguments[kJob], CutText(arguments[kUser], kMaxTitle), printer, user.remoteFolder};
  Documents documents(run, report, cancel, ticket, CutText(arguments[kTitle], kMaxTitle));
  if (files.empty()) return documents.PrintFrames(STDIN_FILENO);
  const int copies = std::clamp(SafeLong(arguments[kCopies]), 1, frames::kMaxCopies);
  return documents.PrintFiles(files, copies);
}

}  // namespace

int RunBackend(Run& run, const std::vector<std::string>& arguments, std::ostream& output, JobReport& report) {
  closefrom(STDERR_FILENO + 1);  // a server leaves pipes of its own open, and more
  if (arguments.empty()) {
    output << "direct " << kDeviceScheme
           << "/ \"Tessary PDF Printer\" \"Tessary PDF Printer\" "
              "\"MFG:Tessary;MDL:PDF Printer;CMD:PDF,POSTSCRIPT;\" \"\"\n";
    return kPrinted;
  }
  if (arguments.size() < kFiles) {
    report.Error("usage: tessary JOB USER TITLE COPIES OPTIONS [FILE]...");
    return kCancelJob;
  }
  try {
    return PrintJob(run, arguments, report) ? kPrinted : kCancelJob;
  } catch (const Error& error) {
    if (error.number() == failures::kCancelled)
      report.Info("The job was cancelled.");
    else
      report.Error(error.description());
    return kCancelJob;
  }
}

}  // namespace tessary
