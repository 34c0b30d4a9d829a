// Title, author and the like of a document, as the entries that PDF readers show.
#pragma once

#include <string>

#include "config/Dictionary.h"

namespace tessary {

struct DocumentInformation {
  /// One line for each value that is not empty: its name and a string. In Windows-1252 where readers take that
  /// for what it is, otherwise in UTF-16. A line break stays part of a value: two strings in the place of one
  /// would end the job.
  std::string entries;
  bool isUnicode = false;  ///< a value is in UTF-16
  /// Ghostscript takes title, author and creator from the comments of the job as well, with the last word, and
  /// would make something else of a value than the entries say.
  bool needsLastWord = false;
};

DocumentInformation ReadDocumentInformation(Dictionary& settings);

}  // namespace tessary
