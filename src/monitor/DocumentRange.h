// Where the document stands in a file that a program prints, and what it is: printer languages around it and
// the preview of an EPS file are not part of it.
#pragma once

#include <cstdint>
#include <string>

#include "host/Files.h"

namespace tessary {

struct DocumentRange {
  std::uint64_t begin = 0;  ///< position of the document's first byte
  std::uint64_t end = 0;    ///< position behind its last
  std::string problem;      ///< why there is no document, such as "is empty"; empty when there is one
  bool isPdf = false;       ///< otherwise it is taken for PostScript
};

/// Finds the document in `file`, which must be able to seek. In front of it end-of-file marks, blank lines and
/// PJL are passed over, and a binary EPS header is followed to its PostScript; behind it end-of-file marks and
/// PJL are cut off. A PDF is known by its header within the first KB, unless PostScript begins before it. What
/// is known to be neither is a problem.
DocumentRange FindDocument(File& file);

}  // namespace tessary
