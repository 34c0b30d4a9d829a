#include "system/modLog.h"

#include "config/modFolders.h"
#include "system/Error.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/modUtil.h"

namespace tessary {

namespace {

constexpr std::int64_t kPatienceSeconds = 20;
constexpr int kPauseMilliseconds = 100;

Result<std::unique_ptr<File>> OpenPatiently(Run& run, const std::string& path) {
  const auto seconds = [&run] { return run.host.clock.Ticks() / 1000; };
  const std::int64_t start = seconds();
  for (;;) {
    auto file = run.host.files.Open(path, OpenMode::Append);
    if (file.failure.number == failures::kTooManyFiles) return file;
    if (!file.ok() && run.log.outOfPatience) return file;
    if (!file.ok()) run.host.clock.SleepFor(kPauseMilliseconds);
    run.host.desktop.PumpMessages();
    if (file.ok()) return file;
    run.log.outOfPatience = seconds() - start > kPatienceSeconds;
  }
}

}  // namespace

std::string GetLogFileName(Run& run) {
  if (run.log.fileName.empty())
    run.log.fileName = JoinPath(run.host.paths, GetTemporaryFolder(run), run.job.SessionId + "_printer.log");
  return run.log.fileName;
}

void RemoveOldLogFile(Run& run) {
  const std::string path = GetLogFileName(run);
  if (!FileExists(run, path)) return;
  if (const Failure failure = run.host.files.Remove(path))
    throw Error(failure.number,
                "Error removing old log file. Error " + std::to_string(failure.number) + ": " + failure.text);
}

void WriteLog(Run& run, const std::string& message) {
  std::string path;
  try {
    path = GetLogFileName(run);
  } catch (const Error&) {
    return;  // whoever needs the folder itself hears of it
  }
  const std::string stamp = DateTimeStamp(run.host.clock.LocalTime());
  const auto file = OpenPatiently(run, path);
  if (file.failure.number == failures::kTooManyFiles)
    return;  // no file handle: the record is lost, and meant to be
  if (!file.ok())
    throw Error(file.failure.number,
                "Unable to open and append to the log file '" + path + "'. " + file.failure.text);
  const std::string record = stamp + ", " + ComputerName(run) + ", " + UserName(run) + ": " + message + "\r\n";
  file.value->Write(EncodeText(run.host.codePage, record));
}

void LogQuietly(Run& run, const std::string& message) {
  try {
    WriteLog(run, message);
  } catch (const Error&) {
  }
}

}  // namespace tessary
