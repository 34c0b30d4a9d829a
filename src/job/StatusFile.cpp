#include "job/StatusFile.h"

#include <string_view>

#include "host/CodePage.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/FileHelpers.h"
#include "system/modLog.h"

namespace tessary {

namespace {

std::string LittleEndianUnits(std::string_view text) {
  std::string bytes;
  for (const char16_t unit : ToUtf16(text)) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

}  // namespace

void WriteStatusFile(Run& run, bool success, const Settings& config, std::int32_t pageCount,
                     std::int32_t fileCount, const std::string& fileList) {
  const std::string file = TrimBlanks(config->Text("statusfile"));
  if (file.empty()) return;
  try {
    WriteLog(run, "Create status file " + file);
    const std::string text = std::string("[Status]\r\n  Errors=") + (success ? "0" : "1") +
                             "\r\n  PageCount=" + std::to_string(pageCount) +
                             "\r\n  FileCount=" + std::to_string(fileCount) + "\r\n\r\n[Files]\r\n" + fileList +
                             "\r\n\r\n" + GetConfigContent(config);
    // An older one may be open to others, and would keep its rights; this one can hold passwords.
    if (const auto old = run.host.files.Find(file); old && old->kind == FileKind::Plain)
      run.host.files.Remove(file);
    WriteBinaryFile(run, file, LittleEndianUnits(text));
  } catch (const Error& error) {
    throw Error(error.number(),
                "Error writing status file '" + file + "'. Error " + std::to_string(error.number()) + ": " +
                    error.description(),
                "WriteStatusFile");
  }
}

}  // namespace tessary
