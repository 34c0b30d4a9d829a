// The names of a job's temporary files. All lie in the temporary folder and begin with the session's id, by
// which the end of the run finds and removes them.
#pragma once

#include <string>

#include "system/Run.h"

namespace tessary {

/// One run of Ghostscript: its parameters, and what it says.
struct GhostscriptFiles {
  std::string parameters;
  std::string standardOutput;
};

struct JobFiles {
  std::string patched;      ///< the job's PostScript with its edits
  std::string header;       ///< document information and stamp, read before the job
  std::string mergeHeader;  ///< the same for the merge, without the stamp
  std::string document;     ///< the PDF of the job
  std::string merged;       ///< the PDF of the job and the merge file
  std::string pages;        ///< images, without number and extension
  GhostscriptFiles conversion;
  GhostscriptFiles merge;
  GhostscriptFiles device;

  // Patterns: "#" stands for the number of the background.
  std::string superimposeEps;
  std::string superimposeFullEps;
  GhostscriptFiles superimpose;
};

/// Raises the errors of GetTemporaryFolder.
JobFiles NameJobFiles(Run& run);

}  // namespace tessary
