// What one run of Ghostscript is given beside its parameter file.
#pragma once

#include <string>
#include <vector>

namespace tessary {

struct GhostscriptAdditions {
  std::string pdfPassword;                 ///< opens the PDFs among the input files that want one
  std::string prelude;                     ///< a PostScript file that is read before all others; empty: none
  std::vector<std::string> readableFiles;  ///< what the job's PostScript may open besides
};

}  // namespace tessary
