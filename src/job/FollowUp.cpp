#include "job/FollowUp.h"

#include "system/Conversions.h"
#include "system/modUtil.h"
#include "ui/modLocalize.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

// Codes of Shell::Open.
constexpr std::int32_t kFirstSuccess = 33;
constexpr std::int32_t kNoProgram = 31;

std::string OpenFailureText(Run& run, const std::string& file, std::int32_t result) {
  if (result != kNoProgram)
    return Translate(run, "[L126]Error opening the PDF Document.") + "\r\n\r\n" + ApiErrorText(run, result) +
           "\r\n" + Translate(run, "[L123]Error") + " " + std::to_string(result);
  if (ToLower(file).ends_with(".pdf"))
    return Translate(run,
                     "[L125]The printer was unable to open the PDF document.\r\n\r\nMake sure you have a PDF "
                     "document reader installed on your computer.\r\n\r\nFree PDF readers are available from "
                     "several vendors on the web.");
  const std::string text = Translate(run,
                                     "[L164]The program was unable to show the document. The extension of your "
                                     "document file name should be PDF. Please change that and try again."
                                     "\r\n\r\nFile name: %1");
  return ReplaceAll(text, "%1", file);
}

}  // namespace

void RunProgram(Run& run, const std::string& command, const std::string& folder, const std::string& file,
                std::int32_t pageCount, std::int32_t fileCount) {
  const Command started =
      run.host.processes.ShellCommand(command, {file, std::to_string(pageCount), std::to_string(fileCount)});
  LaunchProcess(run, started, 0, folder.empty() ? run.host.workingFolder : folder);
}

bool ShowDocument(Run& run, const std::string& file) {
  const std::int32_t result = run.host.shell.Open(file);
  if (result < kFirstSuccess) ShowMessage(run, OpenFailureText(run, file, result), box::kExclamation);
  return true;
}

}  // namespace tessary
