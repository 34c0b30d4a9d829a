#include "job/Delivery.h"

#include <cstdio>

#include "job/PageNumbers.h"
#include "system/Conversions.h"
#include "system/FileHelpers.h"
#include "system/modLog.h"
#include "ui/modLocalize.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

constexpr std::int64_t kPatienceMilliseconds = 10000;
constexpr int kPauseMilliseconds = 100;

/// Tries for as long as a lock may pass.
Failure CopyPatiently(Run& run, const std::string& source, const std::string& destination,
                      const std::string& route) {
  const std::int64_t start = run.host.clock.Ticks();
  for (;;) {
    Failure failure = run.host.files.Copy(source, destination);
    if (failure.number != failures::kPathFileAccess || FolderExists(run, destination)) return failure;
    WriteLog(run, "Error copying PDF to destination. Possible file lock." + route +
                      Translate(run, "[L123]Error") + " " + std::to_string(failure.number) + ": " +
                      failure.text);
    run.host.clock.SleepFor(kPauseMilliseconds);
    if (run.host.clock.Ticks() - start > kPatienceMilliseconds) return failure;
  }
}

bool WantsRetry(Run& run, const std::string& destination) {
  const std::string text = Translate(run,
                                     "[L124]Error copying PDF document to destination file.\r\n\r\n"
                                     "Please close the file '%1' if it is open and try again.");
  return ShowMessage(run, ReplaceAll(text, "%1", destination), box::kRetryCancel + box::kExclamation) ==
         box::kAnswerRetry;
}

std::string ListEntry(std::int32_t number, const std::string& file) {
  return "  File" + std::to_string(number) + "=" + file;
}

std::string NameOfImage(const std::string& base, std::int32_t page, const std::string& extension) {
  char number[16];
  std::snprintf(number, sizeof number, "_%08d.", page);
  return base + number + extension;
}

}  // namespace

bool CopyToDestination(Run& run, const std::string& source, const std::string& destination,
                       bool suppressErrors) {
  const std::string route = " (" + source + " -> " + destination + "). ";
  do {
    const Failure failure = CopyPatiently(run, source, destination, route);
    if (!failure) return true;
    WriteLog(run, Translate(run, "[L122]Error copying PDF to destination") + route +
                      Translate(run, "[L123]Error") + " " + std::to_string(failure.number) + ": " +
                      failure.text);
  } while (!suppressErrors && WantsRetry(run, destination));
  return false;
}

Delivery DeliverFile(Run& run, const std::string& source, const std::string& output) {
  const bool delivered = CopyToDestination(run, source, output, run.job.SuppressErrors);
  return {!delivered, delivered ? 1 : 0, ListEntry(1, output)};
}

Delivery DeliverPages(Run& run, const std::string& base, const std::string& extension,
                      const std::string& output) {
  Delivery delivery;
  for (std::int32_t page = 1;; ++page) {
    const std::string image = NameOfImage(base, page, extension);
    if (!FileExists(run, image)) return delivery;
    const std::string target = SubstitutePageNo(output, page);
    delivery.failed = !CopyToDestination(run, image, target, run.job.SuppressErrors);
    if (delivery.failed) return delivery;
    delivery.fileCount = page;
    if (!delivery.fileList.empty()) delivery.fileList += "\r\n";
    delivery.fileList += ListEntry(page, target);
  }
}

}  // namespace tessary
