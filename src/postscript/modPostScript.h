// What the job's PostScript says of itself, in its document structuring comments (DSC 3.0).
#pragma once

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

}  // namespace tessary
