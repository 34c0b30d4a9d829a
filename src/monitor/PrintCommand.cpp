#include "monitor/PrintCommand.h"

#include <ostream>

#include "config/SettingsTable.h"
#include "monitor/PrintArguments.h"
#include "monitor/PrintJob.h"
#include "system/Error.h"
#include "system/modInstances.h"

namespace tessary {

namespace {

constexpr const char* kUsage =
    "usage: tessary-print [--printer NAME] [--title TEXT] [--set KEY=VALUE]... FILE...\n";

constexpr const char* kHelp =
    "\n"
    "Prints PostScript and PDF files to PDF. The settings of the printer say where the PDF\n"
    "goes.\n"
    "\n"
    "  --printer NAME   the printer to print to; \"PDF Printer [Sales]\" has settings of\n"
    "                   its own (default: PDF Printer)\n"
    "  --title TEXT     the name of the document (default: the name of the file)\n"
    "  --set KEY=VALUE  a setting for these jobs alone, such as output=/tmp/report.pdf\n"
    "  --help           this text\n"
    "  FILE             a PostScript or PDF file, or - for the standard input\n"
    "\n"
    "Exit code: 0 when every file became a PDF, 1 when one did not, 2 for a wrong call.\n";

void WarnOfUnknownKeys(const PrintArguments& arguments, std::ostream& errors) {
  for (const auto& [key, value] : arguments.settings)
    if (!FindSettingKey(key)) errors << "tessary-print: warning: there is no setting named '" << key << "'\n";
}

/// Why the file did not become a PDF; empty when it did.
std::string Print(Run& run, const PrintArguments& arguments, const std::string& file) {
  try {
    return PrintFile(run, arguments, file);
  } catch (const Error& error) {
    return error.description();
  }
}

}  // namespace

std::int32_t PrintCommand(Run& run, const std::vector<std::string>& arguments, std::ostream& output,
                          std::ostream& errors) {
  const PrintArguments parsed = ParsePrintArguments(arguments);
  if (!parsed.problem.empty()) {
    errors << "tessary-print: " << parsed.problem << "\n" << kUsage;
    return 2;
  }
  if (parsed.help) {
    output << kUsage << kHelp;
    return 0;
  }
  run.job.InstanceName = GetInstanceFromPrinterName(parsed.printer);
  WarnOfUnknownKeys(parsed, errors);
  bool allPrinted = true;
  for (const std::string& file : parsed.files) {
    const std::string problem = Print(run, parsed, file);
    if (problem.empty()) continue;
    errors << "tessary-print: " << file << ": " << problem << std::endl;
    allPrinted = false;
  }
  return allPrinted ? 0 : 1;
}

}  // namespace tessary
