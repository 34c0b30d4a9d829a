// Tests for files and folders, and files read and written whole.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "system/Run.h"

namespace tessary {

/// True if the first match of `path` (Files::Find) is not a folder.
bool FileExists(Run& run, const std::string& path);

/// True if `path`, trailing separators ignored, is a folder.
bool FolderExists(Run& run, const std::string& path);

/// True if `root` is one of the machine's drives, whatever the case of its letters.
bool DriveExists(Run& run, const std::string& root);

/// Makes a folder and all its missing parents. A failure is raised with its number, the path and the place
/// reached.
void MkDirRecurse(Run& run, const std::string& path);

/// The whole file as bytes. Raises kCommon for an empty path or when no file handle is free, else the
/// platform's error.
std::string ReadFile(Run& run, const std::string& path);

/// The whole file, one character per byte. Raises kFileNotFound when it is missing.
std::string ReadTextFile(Run& run, const std::string& path);

/// The first `size` bytes of a file, or all of a smaller one. Raises the platform's error.
std::string ReadHead(Run& run, const std::string& path, std::size_t size);

/// The last `size` bytes of a file that another program may be writing, or all of a smaller one; empty on any
/// failure.
std::string ReadTail(Run& run, const std::string& path, std::size_t size);

/// Where the first line end of a text file's `text` at or behind `from` lies, and how long it is; npos and 0
/// without one.
struct LineBreak {
  std::size_t position = std::string_view::npos;
  std::size_t length = 0;
};
LineBreak FindLineBreak(const Host& host, std::string_view text, std::size_t from = 0);

/// Replaces the content of the file with `bytes`, in one step (Files::Replace). Raises the platform's error.
void WriteBinaryFile(Run& run, const std::string& path, std::string_view bytes);

/// WriteBinaryFile of the text in the machine's code page.
void WriteTextFile(Run& run, const std::string& path, std::string_view text);

/// The system's temporary path, as the machine gives it.
std::string GetSystemTempPath(Run& run);

}  // namespace tessary
