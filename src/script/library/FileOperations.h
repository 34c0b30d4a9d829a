// Copying, moving and deleting whole files and folders, as FileSystemObject, File and Folder do it.
//
// Paths are as the script wrote them. The last part of a source may hold the wildcards * and ?. A destination
// that ends with a separator, or stands beside a wildcard, is a folder that the copies go into. All raise 53 or
// 76 when nothing is there, 58 when something is in the way.
#pragma once

#include <string>
#include <vector>

#include "script/Services.h"

namespace tessary::script {

enum class Kind : bool { File, Folder };

void DeleteItems(FileSystem& files, const std::string& source, Kind kind);
void CopyItems(FileSystem& files, const std::string& source, const std::string& destination, bool overwrite,
               Kind kind);
void MoveItems(FileSystem& files, const std::string& source, const std::string& destination, Kind kind);

/// The files or the folders in a folder, in the order of their names.
std::vector<FileFacts> ItemsIn(FileSystem& files, const std::string& folder, Kind kind);

/// Bytes of all files in a folder and below it.
std::uint64_t SizeOfFolder(FileSystem& files, const std::string& folder);

}  // namespace tessary::script
