#include "system/Paths.h"

#include <algorithm>

namespace tessary {

namespace {

/// Position behind the last separator; 0 when there is none.
std::size_t NameStart(const PathStyle& style, std::string_view path) {
  std::size_t start = path.size();
  while (start > 0 && !style.IsSeparator(path[start - 1])) --start;
  return start;
}

}  // namespace

std::string StripTrailingBackslashes(const PathStyle& style, std::string path) {
  const std::size_t kept =
      style.hasDrives ? 0 : 1;  // without drives the first separator is the root folder itself
  while (path.size() > kept && style.IsSeparator(path.back())) path.pop_back();
  return path;
}

std::string JoinPath(const PathStyle& style, const std::string& folder, std::string_view name) {
  std::string path = folder;
  const bool isRoot = !style.hasDrives && folder.size() == 1 && style.IsSeparator(folder[0]);
  if (!isRoot) path += style.separator;
  return path.append(name);
}

std::string FullPath(const Host& host, const std::string& path) {
  const PathStyle& style = host.paths;
  const bool full = !path.empty() && (style.IsSeparator(path[0]) || (style.hasDrives && path.find(':') == 1));
  return full || path.empty() ? path : JoinPath(style, host.workingFolder, path);
}

std::string ParentFolder(const PathStyle& style, const std::string& path) {
  return path.substr(0, NameStart(style, path));
}

std::string FileNameOf(const PathStyle& style, const std::string& path) {
  return path.substr(NameStart(style, path));
}

std::string BaseNameOf(const PathStyle& style, const std::string& path) {
  const std::string name = FileNameOf(style, path);
  return name.substr(0, name.rfind('.'));
}

std::string SafeFileName(std::string name) {
  std::replace_if(
      name.begin(), name.end(),
      [](char c) { return std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos; }, '_');
  while (!name.empty() && name.back() == '.') name.pop_back();
  return name;
}

bool IsUncShareRoot(const PathStyle& style, const std::string& path) {
  const std::string share = StripTrailingBackslashes(style, path);
  const auto isSeparator = [&style](char c) { return style.IsSeparator(c); };
  return share.size() > 2 && isSeparator(share[0]) && isSeparator(share[1]) &&
         std::count_if(share.begin() + 2, share.end(), isSeparator) == 1;
}

}  // namespace tessary
