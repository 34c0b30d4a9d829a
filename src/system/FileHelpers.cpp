#include "system/FileHelpers.h"

#include <algorithm>

#include "system/Conversions.h"
#include "system/Error.h"
#include "system/Paths.h"

namespace tessary {

namespace {

/// Reads on from the current position, at most `size` bytes.
std::string ReadUpTo(File& file, std::size_t size) {
  std::string bytes(size, '\0');
  std::size_t have = 0;
  while (have < size) {
    const auto got = file.Read(bytes.data() + have, size - have);
    RaiseIf(got.failure);
    if (got.value == 0) break;
    have += got.value;
  }
  bytes.resize(have);
  return bytes;
}

std::string ReadWhole(Run& run, const std::string& path) {
  const auto file = run.host.files.Open(path, OpenMode::Read);
  RaiseIf(file.failure);
  const auto size = file.value->Size();
  RaiseIf(size.failure);
  return ReadUpTo(*file.value, static_cast<std::size_t>(size.value));
}

}  // namespace

bool FileExists(Run& run, const std::string& path) {
  const auto found = run.host.files.Find(path);
  return found && found->kind != FileKind::Folder;
}

bool FolderExists(Run& run, const std::string& path) {
  const auto found = run.host.files.Find(StripTrailingBackslashes(run.host.paths, path));
  return found && found->kind == FileKind::Folder;
}

bool DriveExists(Run& run, const std::string& root) {
  const auto drives = run.host.files.Drives();
  return std::any_of(drives.begin(), drives.end(),
                     [&root](const std::string& drive) { return ToLower(drive) == ToLower(root); });
}

void MkDirRecurse(Run& run, const std::string& path) {
  const PathStyle& style = run.host.paths;
  std::string target = path;
  std::replace(target.begin(), target.end(), '/', style.separator);
  target = style.Native(target);
  const bool network = style.hasDrives && target.starts_with(std::string(2, style.separator));
  const std::size_t skipped = network ? 4 : 1;  // the drive, or two empty parts, the server and the share

  std::string current;
  std::size_t index = 0;
  for (std::size_t start = 0; start <= target.size(); ++index) {
    const std::size_t end = std::min(target.find(style.separator, start), target.size());
    current.append(target, start, end - start).push_back(style.separator);
    start = end + 1;
    // Without drives the first part of a relative path is a folder like the others.
    const bool root = index < skipped && (style.hasDrives || current.size() == 1);
    if (root || FolderExists(run, current)) continue;
    const Failure failure = run.host.files.MakeFolder(StripTrailingBackslashes(style, current));
    // Two programs may make the same folder at once; only the outcome counts.
    if (failure && !FolderExists(run, current))
      throw Error(failure.number, "Error creating folder in function MkDirRecurse. Target=" + path +
                                      ", Current=" + current + ". " + failure.text);
  }
}

std::string ReadFile(Run& run, const std::string& path) {
  if (path.empty())
    throw Error(errors::kCommon, "Function ReadFile does not accept an empty file name as parameter.");
  try {
    return ReadWhole(run, path);
  } catch (const Error& error) {
    if (error.number() == failures::kTooManyFiles)
      throw Error(errors::kCommon, "Function ReadFile was not able to get a free file handle.");
    throw;
  }
}

std::string ReadTextFile(Run& run, const std::string& path) {
  if (!FileExists(run, path)) throw Error(failures::kFileNotFound, "File not found");
  return ReadWhole(run, path);
}

std::string ReadHead(Run& run, const std::string& path, std::size_t size) {
  const auto file = run.host.files.Open(path, OpenMode::Read);
  RaiseIf(file.failure);
  return ReadUpTo(*file.value, size);
}

std::string ReadTail(Run& run, const std::string& path, std::size_t size) {
  const auto file = run.host.files.Open(path, OpenMode::Read);
  if (!file.ok()) return {};
  const auto whole = file.value->Size();
  if (!whole.ok() || (whole.value > size && file.value->Seek(whole.value - size))) return {};
  try {
    return ReadUpTo(*file.value, size);
  } catch (const Error&) {
    return {};
  }
}

LineBreak FindLineBreak(const Host& host, std::string_view text, std::size_t from) {
  const std::size_t end = text.find(host.lfEndsLines ? "\n" : "\r\n", from);
  if (end == std::string_view::npos) return {};
  if (!host.lfEndsLines) return {end, 2};
  return end > from && text[end - 1] == '\r' ? LineBreak{end - 1, 2} : LineBreak{end, 1};
}

void WriteBinaryFile(Run& run, const std::string& path, std::string_view bytes) {
  RaiseIf(run.host.files.Replace(path, bytes));
}

void WriteTextFile(Run& run, const std::string& path, std::string_view text) {
  WriteBinaryFile(run, path, EncodeText(run.host.codePage, text));
}

std::string GetSystemTempPath(Run& run) { return run.host.system.TempPath(); }

}  // namespace tessary
