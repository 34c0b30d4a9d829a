// The last stretch of a job: the finished file reaches its destination.
#pragma once

#include <string>

#include "system/Run.h"

namespace tessary {

/// Copies `source` to `destination`, in one step: an earlier file there stays whole until the new one is. A
/// destination that is locked (kPathFileAccess) is tried again every 100 milliseconds for 10 seconds. Then, or
/// at once after any other failure, a box asks whether to try again, unless `suppressErrors`. True on success;
/// every failed try is in the log. No folder is made.
bool CopyToDestination(Run& run, const std::string& source, const std::string& destination,
                       bool suppressErrors);

}  // namespace tessary
