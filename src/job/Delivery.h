// The last stretch of a job: the finished files reach their destinations.
#pragma once

#include <cstdint>
#include <string>

#include "system/Run.h"

namespace tessary {

/// Copies `source` to `destination`, in one step: an earlier file there stays whole until the new one is. A
/// destination that is locked (kPathFileAccess) is tried again every 100 milliseconds for 10 seconds. Then, or
/// at once after any other failure, a box asks whether to try again, unless `suppressErrors`. True on success;
/// every failed try is in the log. No folder is made; one that stands at `destination` is not waited for.
bool CopyToDestination(Run& run, const std::string& source, const std::string& destination,
                       bool suppressErrors);

/// What has been delivered.
struct Delivery {
  bool failed = false;
  std::int32_t fileCount = 0;
  std::string fileList;  ///< lines "  File1=…" of the status file, parted by CR LF
};

/// Copies the one file of a job to `output`. The list names it also when that failed.
Delivery DeliverFile(Run& run, const std::string& source, const std::string& output);

/// Copies the images `<base>_00000001.<extension>` and on to the names that `output` gives with their page
/// numbers (SubstitutePageNo), up to the first number that is missing or cannot be delivered. None at all is no
/// failure.
Delivery DeliverPages(Run& run, const std::string& base, const std::string& extension,
                      const std::string& output);

}  // namespace tessary
