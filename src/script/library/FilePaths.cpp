#include "script/library/FilePaths.h"

#include <algorithm>
#include <vector>

#include "script/ScriptError.h"

namespace tessary::script {
namespace {

bool HasDrive(std::string_view path) { return path.size() >= 2 && path[1] == ':'; }

// The length of what cannot be taken away: "C:\", "C:", "/", "\\" of a server.
std::size_t RootLength(std::string_view path) {
  std::size_t length = HasDrive(path) ? 2 : 0;
  while (length < path.size() && IsSeparator(path[length])) ++length;
  return length;
}

std::string_view WithoutEndSeparators(std::string_view path) {
  const std::size_t root = RootLength(path);
  while (path.size() > root && IsSeparator(path.back())) path.remove_suffix(1);
  return path;
}

std::size_t NameStart(std::string_view path) {
  std::size_t start = path.size();
  while (start > RootLength(path) && !IsSeparator(path[start - 1])) --start;
  return start;
}

}  // namespace

FileSystem& FilesOf(Context& context) {
  FileSystem* const files = context.services().files;
  if (!files) Raise(kNotSupported);
  return *files;
}

void Check(int error) {
  if (error != 0) Raise(error);
}

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

std::string NameOf(std::string_view path) {
  path = WithoutEndSeparators(path);
  return std::string(path.substr(NameStart(path)));
}

std::string ParentOf(std::string_view path) {
  path = WithoutEndSeparators(path);
  const std::size_t start = NameStart(path);
  if (start == path.size()) return {};
  return std::string(WithoutEndSeparators(path.substr(0, start)));
}

std::string BaseOf(std::string_view path) {
  const std::string name = NameOf(path);
  return name.substr(0, name.rfind('.'));
}

std::string ExtensionOf(std::string_view path) {
  const std::string name = NameOf(path);
  const std::size_t point = name.rfind('.');
  return point == std::string::npos ? std::string() : name.substr(point + 1);
}

std::string JoinPath(char separator, std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (folder.empty() || name.empty()) return path.append(name);
  const bool ends = IsSeparator(folder.back()), begins = IsSeparator(name.front());
  const bool bareDrive = HasDrive(folder) && folder.size() == 2;
  if (ends && begins) name.remove_prefix(1);
  if (!ends && !begins && !bareDrive) path += separator;
  return path.append(name);
}

std::string AbsolutePath(FileSystem& files, std::string_view path) {
  const char separator = files.Separator();
  std::string whole(path);
  const bool absolute = !path.empty() && (IsSeparator(path[0]) || (separator == '\\' && HasDrive(path)));
  if (!absolute) whole = JoinPath(files, files.CurrentFolder(), path);
  std::replace_if(whole.begin(), whole.end(), IsSeparator, separator);

  const std::size_t root = separator == '/' ? 1 : RootLength(whole);
  std::vector<std::string> parts;
  for (std::size_t at = root; at < whole.size();) {
    const std::size_t end = std::min(whole.find(separator, at), whole.size());
    const std::string part = whole.substr(at, end - at);
    at = end + 1;
    if (part == "..") {
      if (!parts.empty()) parts.pop_back();
    } else if (!part.empty() && part != ".") {
      parts.push_back(part);
    }
  }
  std::string result = whole.substr(0, root);
  for (const std::string& part : parts) {
    if (&part != parts.data()) result += separator;
    result += part;
  }
  return result;
}

bool IsFile(FileSystem& files, const std::string& path) {
  const auto facts = files.Find(path);
  return facts && !facts->folder;
}

bool IsFolder(FileSystem& files, const std::string& path) {
  const auto facts = files.Find(path);
  return facts && facts->folder;
}

FileFacts FileAt(FileSystem& files, const std::string& path) {
  auto facts = files.Find(path);
  if (!facts || facts->folder) Raise(kFileNotFound);
  return *facts;
}

FileFacts FolderAt(FileSystem& files, const std::string& path) {
  auto facts = files.Find(path);
  if (!facts || !facts->folder) Raise(kPathNotFound);
  return *facts;
}

}  // namespace tessary::script
