// Names for the documents that go into a common folder.
#pragma once

#include <string>

#include "host/posix/UniqueFd.h"
#include "system/Run.h"

namespace tessary {

/// A name that is free in a folder, and taken for one document until the object goes: no other document of this
/// user's gets it meanwhile.
class BackendOutput {
 public:
  /// Finds the name: the title as a file name, with a number behind it where that is taken. Raises kCommon when
  /// the folder is no folder that can be written, and the platform's error.
  BackendOutput(Run& run, const std::string& folder, const std::string& title);
  ~BackendOutput();
  BackendOutput(const BackendOutput&) = delete;
  BackendOutput& operator=(const BackendOutput&) = delete;

  /// The full path of the document.
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  bool Take(Run& run, const std::string& folder, const std::string& name);

  std::string path_, lockFile_;
  UniqueFd lock_;
};

/// `title` as the name of a PDF without its extension: no separators, no hidden file, no control characters, of
/// a length that leaves room for more.
std::string DocumentFileName(const std::string& title);

}  // namespace tessary
