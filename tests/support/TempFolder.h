// A folder of this machine that is gone when the object goes.
#pragma once

#include <filesystem>
#include <stdlib.h>
#include <string>

namespace tessary {

class TempFolder {
 public:
  TempFolder() { path_ = mkdtemp(path_.data()); }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  /// Without a separator at its end.
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_ = (std::filesystem::temp_directory_path() / "tessary-test-XXXXXX").string();
};

}  // namespace tessary
