// A PDF as a print job: a small PostScript program that has Ghostscript's PDF interpreter draw its pages, one
// page comment and one drawing line each. Nothing of the PDF becomes PostScript, so text stays text, fonts stay
// fonts, and pages keep their sizes, their rotation and what is transparent; links and bookmarks come along.
//
// The program reads the PDF beside it and names it by its full path. What the PDF contains is data to the
// interpreter: it can neither act as a part of the program nor read another file.
#pragma once

#include <string>

#include "monitor/SpoolJob.h"
#include "system/Run.h"

namespace tessary {

/// Writes the program for the PDF in `job.DocumentPath()` to `job.path()`. Ghostscript counts the pages first,
/// and so opens the PDF as the job will do it. Returns why there can be no job, as the end of a sentence about
/// the document ("needs a password"), or an empty text. A PDF with faults that Ghostscript can mend is printed;
/// one that was cut off is not. Raises the errors of RunGhostscript.
std::string SpoolDrawing(Run& run, SpooledJob& job, const DocumentTicket& ticket);

}  // namespace tessary
