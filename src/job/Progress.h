// What a person sees of a job on its way: the turning icon with its tip, and the balloon at the end.
#pragma once

#include <string>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// Shows the icon, unless `showprogress` is "no", and notes whether `showprogressfinished` wants the balloon.
void BeginProgress(Run& run, Dictionary& config);

/// The tip tells of the merge from here on.
void ShowMergeProgress(Run& run, Dictionary& config);

/// Ends the progress with the balloon that names `output`, or with nothing where none is wanted or the delivery
/// failed.
void EndProgress(Run& run, const std::string& output, bool failed);

}  // namespace tessary
