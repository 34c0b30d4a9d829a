#include <algorithm>

#include "ghostscript/modGhostScript.h"
#include "system/Conversions.h"
#include "system/FileHelpers.h"
#include "system/modLog.h"

namespace tessary {

namespace {

constexpr std::size_t kTailBytes = 1000;
constexpr std::string_view kMarker = "%%[Page:", kMarkerEnd = "]%%";
constexpr double kLargestPage = 2147483647;

void LogUnreadableMarker(Run& run) {
  if (run.ghostscript.unreadableMarkerLogged) return;
  run.ghostscript.unreadableMarkerLogged = true;
  WriteLog(run, "The document prints page markers without a page number. They are not counted.");
}

}  // namespace

std::int32_t GetLastOutputPage(Run& run, const std::string& outputFile) {
  std::string tail = ReadTail(run, outputFile, kTailBytes);
  for (std::size_t marker; (marker = tail.rfind(kMarker)) != std::string::npos; tail.resize(marker)) {
    const std::size_t end = tail.find(kMarkerEnd, marker);
    if (end == std::string::npos) continue;  // cut off by the end of a line still being written
    // One blank is taken to stand behind the marker; without it the first digit is lost, and this is meant.
    const std::size_t start = std::min(marker + kMarker.size() + 1, end);
    const double page = RoundHalfEven(LeadingNumber(std::string_view(tail).substr(start, end - start)));
    if (page > 0 && page <= kLargestPage) return static_cast<std::int32_t>(page);
    LogUnreadableMarker(run);
  }
  return 0;
}

}  // namespace tessary
