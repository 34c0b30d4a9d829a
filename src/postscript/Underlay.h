// Backgrounds drawn by Ghostscript's own PDF interpreter, from version 10 on.
//
// A background goes two steps. A run of its own converts its first page to a PDF of one page that stands
// upright at 0 0 in real size, whatever box, rotation, unit, damage or encryption without a password it has;
// text, transparency and pictures stay what they are. The job's run then makes a form of that page when it is
// first needed and shows the form under each page: the PDF of the job holds it once.
//
// The prelude, read before the job, defines all that; what is pasted into a page is one line. A page that sets
// its paper size afterwards is painted white by that, so the prelude hooks into BeginPage and shows the form
// again. Nothing that a job redefines, saves or restores can get between: the procedures are bound, and what
// they remember lies in global memory.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "system/Run.h"

namespace tessary {

/// True if the head of the file says that it is a PDF. Raises the platform's error.
bool IsPdf(Run& run, const std::string& file);

/// Writes the parameters for converting the first page of `inputFile` to `pageFile`. Ghostscript then fails
/// with its own words when there is no page that it can read, for a missing password or damage.
void WriteUnderlayParameterFile(Run& run, const std::string& parameterFile, const std::string& inputFile,
                                const std::string& pageFile, const std::string& stdoutFile);

/// Takes the transparency group off the page of a PDF that Ghostscript has just written, in place: in a form it
/// would end a group that it did not begin, and Ghostscript crashes. What is transparent on the page stays so.
void RemovePageGroup(Run& run, const std::string& pageFile);

/// The PostScript that makes UnderlayCall work with these one-page files, numbered from 1.
std::string UnderlayPrelude(const std::vector<std::string>& pageFiles);

/// The PostScript that lays the background `number` under the page that it stands in, lower left corner on
/// lower left corner. The graphics state of the job stays as it is. A page gets one background: a second call
/// on the same page, from a comment in an embedded document, does nothing.
std::string UnderlayCall(std::size_t number);

}  // namespace tessary
