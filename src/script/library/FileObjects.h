// File and Folder objects, and the collections of a folder's contents.
#pragma once

#include <string>

#include "script/Object.h"
#include "script/library/FileOperations.h"

namespace tessary::script {

/// The object for a full path in the machine's own form. Raises 53 when there is no file, 76 when there is no
/// folder.
Value FileObject(FileSystem& files, const std::string& path);
Value FolderObject(FileSystem& files, const std::string& path);

/// CreateTextFile(name[, overwrite[, unicode]]) in a folder, or by a full path when `folder` is empty: raises
/// 58 for an existing file that is not to be overwritten.
Value CreateTextFile(Context& context, const std::string& folder, std::span<Value> arguments);

}  // namespace tessary::script
