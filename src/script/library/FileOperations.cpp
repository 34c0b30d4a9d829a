#include "script/library/FileOperations.h"

#include <algorithm>

#include "script/ScriptError.h"
#include "script/library/FilePaths.h"
#include "script/library/Utf16.h"

namespace tessary::script {
namespace {

bool HasWildcard(std::string_view text) { return text.find_first_of("*?") != std::string_view::npos; }

// Walks both texts; at a mismatch it goes back to the last "*" and lets it take one unit more.
bool MatchesWildcard(const std::u16string& name, const std::u16string& pattern) {
  std::size_t n = 0, p = 0, star = pattern.size(), resume = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == u'*') {
      star = p++;
      resume = n;
    } else if (p < pattern.size() && (pattern[p] == u'?' || LowerOf(pattern[p]) == LowerOf(name[n]))) {
      ++p;
      ++n;
    } else if (star < pattern.size()) {
      p = star + 1;
      n = ++resume;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(u'*', p) == std::u16string::npos;
}

// The full paths that a source names; raises when there is none.
std::vector<std::string> Sources(FileSystem& files, const std::string& source, Kind kind) {
  const std::string path = AbsolutePath(files, source);
  const std::string pattern = NameOf(path);
  std::vector<std::string> found;
  if (!HasWildcard(pattern)) {
    if (kind == Kind::File)
      FileAt(files, path);
    else
      FolderAt(files, path);
    return {path};
  }
  const std::string folder = ParentOf(path);
  for (const FileFacts& facts : ItemsIn(files, folder, kind)) {
    if (MatchesWildcard(ToUtf16(facts.name), ToUtf16(pattern)))
      found.push_back(JoinPath(files, folder, facts.name));
  }
  if (found.empty()) Raise(kind == Kind::File ? kFileNotFound : kPathNotFound);
  return found;
}

void DeleteFolder(FileSystem& files, const std::string& folder) {
  for (const FileFacts& facts : ItemsIn(files, folder, Kind::Folder)) {
    DeleteFolder(files, JoinPath(files, folder, facts.name));
  }
  for (const FileFacts& facts : ItemsIn(files, folder, Kind::File)) {
    Check(files.Remove(JoinPath(files, folder, facts.name)));
  }
  Check(files.Remove(folder));
}

void DeleteItem(FileSystem& files, const std::string& path, Kind kind) {
  if (ParentOf(path).empty()) Raise(kPermissionDenied);  // the whole machine
  if (kind == Kind::File)
    Check(files.Remove(path));
  else
    DeleteFolder(files, path);
}

void CopyFile(FileSystem& files, const std::string& source, const std::string& destination, bool overwrite) {
  if (const auto there = files.Find(destination)) {
    if (there->folder) Raise(kPermissionDenied);
    if (!overwrite) Raise(kFileExists);
  }
  if (source != destination) Check(files.Copy(source, destination));
}

void CopyFolder(FileSystem& files, const std::string& source, const std::string& destination, bool overwrite) {
  if (!IsFolder(files, destination)) {
    Check(files.MakeFolder(destination));
  } else if (!overwrite) {
    Raise(kFileExists);
  }
  for (const FileFacts& facts : ItemsIn(files, source, Kind::File)) {
    CopyFile(files, JoinPath(files, source, facts.name), JoinPath(files, destination, facts.name), overwrite);
  }
  for (const FileFacts& facts : ItemsIn(files, source, Kind::Folder)) {
    CopyFolder(files, JoinPath(files, source, facts.name), JoinPath(files, destination, facts.name), overwrite);
  }
}

void CopyItem(FileSystem& files, const std::string& source, const std::string& destination, bool overwrite,
              Kind kind) {
  if (kind == Kind::File) return CopyFile(files, source, destination, overwrite);
  // A copy of a folder into itself would never come to an end.
  const std::string inside = JoinPath(files, source, " ");
  if (destination == source || destination.starts_with(inside.substr(0, inside.size() - 1)))
    Raise(kPermissionDenied);
  CopyFolder(files, source, destination, overwrite);
}

template <class Work>
void ForEachTarget(FileSystem& files, const std::string& source, const std::string& destination, Kind kind,
                   Work work) {
  const bool intoFolder =
      HasWildcard(NameOf(source)) || (!destination.empty() && IsSeparator(destination.back()));
  const std::string target = AbsolutePath(files, destination);
  const std::vector<std::string> sources = Sources(files, source, kind);
  if (intoFolder) FolderAt(files, target);
  for (const std::string& path : sources)
    work(path, intoFolder ? JoinPath(files, target, NameOf(path)) : target);
}

}  // namespace

void DeleteItems(FileSystem& files, const std::string& source, Kind kind) {
  for (const std::string& path : Sources(files, source, kind)) DeleteItem(files, path, kind);
}

void CopyItems(FileSystem& files, const std::string& source, const std::string& destination, bool overwrite,
               Kind kind) {
  ForEachTarget(files, source, destination, kind, [&](const std::string& from, const std::string& to) {
    CopyItem(files, from, to, overwrite, kind);
  });
}

void MoveItems(FileSystem& files, const std::string& source, const std::string& destination, Kind kind) {
  ForEachTarget(files, source, destination, kind, [&](const std::string& from, const std::string& to) {
    if (files.Find(to)) Raise(kFileExists);
    CopyItem(files, from, to, false, kind);
    DeleteItem(files, from, kind);
  });
}

std::vector<FileFacts> ItemsIn(FileSystem& files, const std::string& folder, Kind kind) {
  std::vector<FileFacts> items;
  Check(files.List(folder, items));
  std::erase_if(items, [&](const FileFacts& facts) { return facts.folder != (kind == Kind::Folder); });
  std::sort(items.begin(), items.end(), [](const FileFacts& left, const FileFacts& right) {
    const int order = CompareText(left.name, right.name, true);
    return order != 0 ? order < 0 : left.name < right.name;
  });
  return items;
}

std::uint64_t SizeOfFolder(FileSystem& files, const std::string& folder) {
  std::uint64_t size = 0;
  std::vector<FileFacts> items;
  Check(files.List(folder, items));
  for (const FileFacts& facts : items) {
    size += facts.folder ? SizeOfFolder(files, JoinPath(files, folder, facts.name)) : facts.size;
  }
  return size;
}

}  // namespace tessary::script
