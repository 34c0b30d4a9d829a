// What the notification area tells of a job, where its settings `showprogress` and `showprogressfinished` do
// not say "no".
#pragma once

#include <string>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// The icon begins to turn. Sets `run.tray.ShowProgressFinished`.
void BeginProgress(Run& run, Dictionary& config);

/// The tip tells of the merge, until pages are counted again.
void TellOfMerge(Run& run, Dictionary& config);

/// The document lies at `output`, or `failed` to get there: the balloon tells of it and `run.tray.FinishedTime`
/// is set, or the icon goes.
void EndProgress(Run& run, const std::string& output, bool failed);

}  // namespace tessary
