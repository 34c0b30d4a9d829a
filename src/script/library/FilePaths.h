// Paths as scripts write them. Both "/" and "\" separate; where the machine's separator is "/", a "\" is turned
// into it before the machine sees the path.
#pragma once

#include <string>
#include <string_view>

#include "script/NativeFunction.h"

namespace tessary::script {

inline constexpr int kBadFileMode = 54;

/// The file service; raises 445 where there is none.
FileSystem& FilesOf(Context& context);

/// Raises an error number that the file service gave; does nothing for 0.
void Check(int error);

bool IsSeparator(char c);

// The parts of a path, without a look at the machine. Separators at its end do not count.
std::string NameOf(std::string_view path);       ///< "b.tar.gz"; empty for a root
std::string ParentOf(std::string_view path);     ///< "C:\a", "/"; empty for a root or a bare name
std::string BaseOf(std::string_view path);       ///< the name up to its last point: "b.tar"
std::string ExtensionOf(std::string_view path);  ///< what follows it: "gz"

/// `folder` and `name` with one separator between them.
std::string JoinPath(char separator, std::string_view folder, std::string_view name);
inline std::string JoinPath(FileSystem& files, std::string_view folder, std::string_view name) {
  return JoinPath(files.Separator(), folder, name);
}

/// The full path, without "." and ".." and without a separator at its end, in the machine's own form.
std::string AbsolutePath(FileSystem& files, std::string_view path);

/// What stands at a path; raises 53 for no file, 76 for no folder.
FileFacts FileAt(FileSystem& files, const std::string& path);
FileFacts FolderAt(FileSystem& files, const std::string& path);
bool IsFile(FileSystem& files, const std::string& path);
bool IsFolder(FileSystem& files, const std::string& path);

}  // namespace tessary::script
