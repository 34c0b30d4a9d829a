// An INI file as a tree of dictionaries. A bad line is skipped, never reported; what the sections mean is not
// known here.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// The root of the tree holds a dictionary for each section and, as plain values, the keys before the first
/// section.
class IniFile {
 public:
  explicit IniFile(Run& run) : run_(run) {}

  /// The tree itself, not a copy; null before the first Load and after Reset.
  [[nodiscard]] const std::shared_ptr<Dictionary>& data() const { return data_; }
  void set_data(std::shared_ptr<Dictionary> tree) { data_ = std::move(tree); }

  /// Replaces the tree by the file's. Lines end in CR LF, LF or CR. False on failure, with LastError set and an
  /// empty tree.
  bool Load(const std::string& fileName);

  /// Writes the tree, in one step. False on failure, with LastError set and the old file as it was.
  bool Save(const std::string& fileName);

  /// Forgets the tree and the last error.
  void Reset();

  /// The platform's number of the last failure of Load or Save, and its text; 0 and empty when there was none.
  [[nodiscard]] std::int32_t LastError() const { return lastError_; }
  [[nodiscard]] const std::string& LastErrorMessage() const { return lastErrorMessage_; }

  /// The text form of any tree: the plain values of the root as `key=value`, then each section as `[name]` and
  /// its keys indented by two blanks. Every line ends in CR LF. Dictionaries below a section have no text form.
  static std::string IniDict2String(const Dictionary& tree);

 private:
  void ClearError();

  Run& run_;
  std::shared_ptr<Dictionary> data_;
  std::int32_t lastError_ = 0;
  std::string lastErrorMessage_;
};

}  // namespace tessary
