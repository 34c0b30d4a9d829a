// What the user's shell knows: the special folders, the installed fonts, and how to open a document.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessary {

/// Ids of special folders (CSIDL values of the Windows shell).
namespace folders {
inline constexpr std::int32_t kDesktop = 0;
inline constexpr std::int32_t kPersonal = 5;
inline constexpr std::int32_t kFonts = 20;
}  // namespace folders

struct FontEntry {
  std::string name;  ///< display name with the kind of font behind it: "Arial (TrueType)"
  std::string file;  ///< file name without a folder: "arial.ttf"
};

class Shell {
 public:
  virtual ~Shell() = default;
  /// The path of a special folder, which need not exist, without a separator at its end. Nothing for an id that
  /// the machine does not know.
  virtual std::optional<std::string> SpecialFolder(std::int32_t id) = 0;
  /// All installed fonts, in no fixed order.
  virtual std::vector<FontEntry> InstalledFonts() = 0;
  /// The file, as a full path, that the font file name `name` (no folder) means: a file of that name, or the
  /// nearest substitute where the machine chooses one. It need not exist.
  virtual std::string FontFile(const std::string& name) = 0;
  /// Opens a file, a folder or an address ("https://…") with its default program and does not wait for it,
  /// though up to two seconds for the news that it could not be started. Above 32 on success, otherwise the
  /// platform's code (System::ErrorText): 2 not found, 31 no program to open it with.
  virtual std::int32_t Open(const std::string& target) = 0;
};

}  // namespace tessary
