#include "job/Delivery.h"

#include "system/Conversions.h"
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
    if (failure.number != failures::kPathFileAccess) return failure;
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

}  // namespace tessary
