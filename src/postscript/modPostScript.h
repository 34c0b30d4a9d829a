// What the job's PostScript says of itself, in its document structuring comments (DSC 3.0), and what is put
// into it at these comments. A line ends at CR or CR LF: a bare LF ends none.
#pragma once

#include <cstdint>
#include <string>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// The document's `title`, `author` and `creationdate` from the comments %%Title:, %%For: and %%CreationDate:
/// at its head, in any case of letters; a key is absent without its comment, and a later comment replaces an
/// earlier one. The values are taken as they stand, the parentheses of PostScript strings included: UTF-8 where
/// they are valid UTF-8, otherwise Windows-1252. At most 1000 lines and 1 MB are read. Raises the platform's
/// error.
Dictionary GetDocumentProperties(Run& run, const std::string& postScriptFile);

/// How many lines begin with "%%Page:", in this case of letters. Reads the whole file. Raises the platform's
/// error.
std::int32_t GetPageCount(Run& run, const std::string& postScriptFile);

/// Copies the job to `patchedFile`, which it replaces:
/// - Each line of the copy ends in CR LF; apart from that its bytes are those of the job.
/// - In front of the first "%%Page:" the lines that begin with "%%Title:" and "%%For:" are replaced by
///   "%%Title: " and "%%For: " with the settings `title` and `author`, in the machine's code page; a control
///   character in these becomes a blank.
/// - Behind each line that begins with "%%Page:" stand the text of the page's superimposed EPS file
///   (`superimposeFile` with its "#" replaced, see modSuperimpose) and, when an enabled stamp lies under the
///   page, "gsave stamp grestore", and one more line end.
/// No line is held: memory does not grow with the job. The message queue runs at the lines but every 1000th.
/// Raises the platform's error, and kOverflow for more than 32767 pages; `patchedFile` is then incomplete.
void PatchPostScriptFile(Run& run, Dictionary& settings, const std::string& superimposeFile,
                         const std::string& patchedFile, const std::string& postScriptFile);

}  // namespace tessary
