// Brings a document into the form in which a printer driver hands its jobs over: lines of clean text that end
// in CR LF, a marker on standard output for every page, and nothing around the document.
//
// Programs write PostScript with any line ends, and some write raw binary data into it. Whoever reads a job
// line by line turns each CR into a line end, which is harmless in text and ruins binary data. So the document
// is taken in sections: the part before the first page, and each page with its "%%Page:" line. A section of
// clean text is written as lines. Any other section is written as ASCII85 behind its "%%Page:" line and run
// through a filter, so that its program reads exactly the bytes that it was written with, and the page can
// still be found by its comment.
#pragma once

#include <cstdint>
#include <string>

#include "host/Files.h"
#include "monitor/DocumentRange.h"

namespace tessary {

/// Spools the PostScript in `range` of `input`, which must be able to seek, to the empty file `output`. Its
/// program comes `copies` times, once at least, each time within a save and a restore: every copy is a document
/// of its own, except that one which quits Ghostscript is the last. Returns why that failed, as the end of a
/// sentence about the input, or an empty text. Memory is constant; text is read once a copy, a section that
/// turns out to hold binary data once more. `pages` receives how many page comments were written.
std::string SpoolDocument(File& input, const DocumentRange& range, File& output, int copies,
                          std::int32_t& pages);

}  // namespace tessary
