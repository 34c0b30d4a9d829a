#include "system/CPrinterJobInfo.h"

#include <algorithm>

#include "system/modUtil.h"

namespace tessary {

namespace {

struct StatusWord {
  std::uint32_t bit;
  const char* text;
};

/// Of these the last one that is set stands first in the text…
constexpr StatusWord kStates[] = {
    {printing::kJobPaused, "Paused"},
    {printing::kJobError, "Error"},
    {printing::kJobUserIntervention, "User Intervention Required"},
};

/// …and of these all that are set follow, in this order.
constexpr StatusWord kActivities[] = {
    {printing::kJobOffline, "Offline"},      {printing::kJobPaperOut, "Paper Out"},
    {printing::kJobDeleting, "Deleting..."}, {printing::kJobSpooling, "Spooling..."},
    {printing::kJobPrinting, "Printing..."}, {printing::kJobRestarting, "Restarting..."},
    {printing::kJobPrinted, "Printed"},      {printing::kJobDeleted, "Deleted"},
    {printing::kJobBlocked, "Cannot Print"},
};

}  // namespace

CPrinterJobInfo::CPrinterJobInfo(Run& run, const JobRecord& record)
    : record_(record),
      submitted_(LocalDateTime(run.host, record.submitted)),
      sizeMax_(record.size),
      totalPagesMax_(record.totalPages) {
  if (record.devMode) devMode_.Load(&*record.devMode);
}

void CPrinterJobInfo::CarryOver(const CPrinterJobInfo& older) {
  sizeMax_ = std::max(sizeMax_, older.sizeMax_);
  totalPagesMax_ = std::max(totalPagesMax_, older.totalPagesMax_);
}

std::string CPrinterJobInfo::StatusText() const {
  if (!record_.statusText.empty()) return record_.statusText;
  std::string text;
  for (const StatusWord& state : kStates)
    if ((record_.status & state.bit) != 0) text = state.text;
  for (const StatusWord& activity : kActivities) {
    if ((record_.status & activity.bit) == 0) continue;
    if (!text.empty()) text += " - ";
    text += activity.text;
  }
  return text;
}

}  // namespace tessary
