// Paths and file names as texts. Every helper takes the machine's PathStyle and knows no separator itself.
#pragma once

#include <string>
#include <string_view>

#include "host/Host.h"

namespace tessary {

/// `path` without any number of separators at its end. The root folder "/" stays.
std::string StripTrailingBackslashes(const PathStyle& style, std::string path);

/// `folder` + separator + `name`, with one separator between them also below the root folder "/".
std::string JoinPath(const PathStyle& style, const std::string& folder, std::string_view name);

/// `path` as a full path: one that is not gets the folder of the process in front, since child programs run
/// elsewhere.
std::string FullPath(const Host& host, const std::string& path);

/// `path` up to and including its last separator; empty when it holds none.
std::string ParentFolder(const PathStyle& style, const std::string& path);

/// The part behind the last separator; the whole path when it holds none.
std::string FileNameOf(const PathStyle& style, const std::string& path);

/// FileNameOf without everything from its last "." onward.
std::string BaseNameOf(const PathStyle& style, const std::string& path);

/// `name` as a file name that every machine takes: each of \/:*?"<>| becomes "_", dots at the end are dropped.
std::string SafeFileName(std::string name);

/// True for a path of the form `\\server\share`, trailing separators ignored.
bool IsUncShareRoot(const PathStyle& style, const std::string& path);

}  // namespace tessary
