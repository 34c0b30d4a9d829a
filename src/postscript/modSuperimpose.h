// Lays the first pages of background PDFs, a letterhead say, under pages of the job.
//
// `superimpose` is a list of entries without a separator, each a file name and the place of its pages in angle
// brackets: `letter.pdf<1>follow.pdf<2->`. For each entry, counted from 1, a text is made that draws the
// background; the patcher pastes it behind the %%Page: comment of every page that the entry selects.
//
// How the text is made depends on the Ghostscript that is located:
//   - up to 9.13 by its device epswrite, at 14400 dpi, cut off before the first "showpage";
//   - from 9.14 to 9.56 by eps2write, at 600 dpi, whole, with an emptied `showpage`;
//   - from 10 on not at all: the job's own run draws the PDF (Underlay.h).
#pragma once

#include <cstdint>
#include <string>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// True if `superimpose` is not empty, blanks counting as well.
bool IsSuperimposeRequested(Dictionary& settings);

/// The entries of a value of `superimpose`: "0", "1" and so on to dictionaries with `filename` and `place`. The
/// place is empty where none is given. A "<" or ">" too many makes entries of what it parts and raises nothing.
Dictionary ParseSuperimposeValue(const std::string& value);

/// Makes the texts for all entries of `superimpose`. Each path is a pattern; every "#" in it stands for the
/// entry's number: the text, the whole page that it is made from, Ghostscript's parameters and what it says,
/// which is removed again unless the run is debugged. JobState::ProgressFile is left at the last of these.
/// From Ghostscript 10 on the text number 0 is written too and left to the next run in
/// GhostscriptState::nextRun.
/// Raises kBackgroundUnusable for a file that does not exist or, from Ghostscript 10 on, is no PDF; what
/// RunGhostscript raises, with the name of the background in front from Ghostscript 10 on; and the platform's
/// errors. Later entries are then not made.
void CreateSuperimposeEpsFiles(Run& run, Dictionary& settings, const std::string& epsFile,
                               const std::string& fullEpsFile, const std::string& parameterFile,
                               const std::string& outputFile);

/// Page number to the path of its text, `epsFile` with "#" replaced: one key for each page from 1 to
/// `pageCount`, empty where no entry selects the page; the last of several entries counts. Places beyond the
/// document add keys behind these. Raises kOverflow for a page above 32767.
///
/// A place is letters, a page and a range, in this order and all optional: `F` counts from the first page, `L`
/// from the last; `O` keeps odd counts, `E` even ones; `-` reaches to the page behind it or to the end. An
/// empty place is all pages. Only the first letter may be small. What follows is ignored.
Dictionary MakeSuperimposePageMap(Dictionary& settings, const std::string& epsFile, std::int16_t pageCount);

}  // namespace tessary
