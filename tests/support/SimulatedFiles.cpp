#include "tests/support/SimulatedFiles.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <utility>

#include "tests/support/Wildcards.h"

namespace tessary {

namespace {

Failure BadName() { return {failures::kBadFileName, "Bad file name or number"}; }
Failure NotFound() { return {failures::kFileNotFound, "File not found"}; }
Failure DiskFull() { return {failures::kDiskFull, "Disk full"}; }
Failure Denied() { return {failures::kPermissionDenied, "Permission denied"}; }
Failure AccessError() { return {failures::kPathFileAccess, "Path/File access error"}; }
Failure PathNotFound() { return {failures::kPathNotFound, "Path not found"}; }

bool EndsWithSeparator(const std::string& path) {
  return !path.empty() && (path.back() == '\\' || path.back() == '/');
}

/// The number of characters of the root that a full path begins with: "C:" or "\\server\share".
std::size_t RootLength(const std::string& path) {
  if (path.compare(0, 2, "\\\\") != 0) return std::min<std::size_t>(2, path.size());
  const std::size_t server = path.find('\\', 2);
  return std::min(path.find('\\', server == std::string::npos ? server : server + 1), path.size());
}

std::string FolderOf(const std::string& fullPath) {
  return fullPath.size() == RootLength(fullPath) ? "" : fullPath.substr(0, fullPath.rfind('\\'));
}

std::string NameOf(const std::string& fullPath) { return fullPath.substr(fullPath.rfind('\\') + 1); }

bool HasForbiddenLetter(const std::string& fullPath) {
  return fullPath.find_first_of(":*?\"<>|", RootLength(fullPath)) != std::string::npos;
}

}  // namespace

class SimulatedFiles::OpenFile : public File {
 public:
  OpenFile(SimulatedFiles& files, std::shared_ptr<Node> node, OpenMode mode)
      : files_(files), node_(std::move(node)), mode_(mode) {
    ++node_->openHandles;
    ++files_.openHandles_;
  }
  ~OpenFile() override { Close(); }

  Result<std::size_t> Read(char* buffer, std::size_t size) override {
    if (!node_) return BadName();
    const std::size_t start = std::min(position_, node_->bytes.size());
    const std::size_t count = node_->bytes.copy(buffer, size, start);
    position_ = start + count;
    return count;
  }

  Failure Write(std::string_view bytes) override {
    if (!node_ || mode_ == OpenMode::Read) return BadName();
    std::string& content = node_->bytes;
    if (mode_ == OpenMode::Append) position_ = content.size();
    const std::size_t end = position_ + bytes.size();
    const std::size_t growth = end > content.size() ? end - content.size() : 0;
    const std::size_t room = static_cast<std::size_t>(std::max<std::int64_t>(files_.freeBytes, 0));
    const std::size_t missing = growth > room ? growth - room : 0;
    const std::size_t written = bytes.size() - std::min(bytes.size(), missing);
    if (position_ + written > content.size()) {
      files_.freeBytes -= static_cast<std::int64_t>(position_ + written - content.size());
      content.resize(position_ + written);
    }
    content.replace(position_, written, bytes.substr(0, written));
    position_ += written;
    node_->modified = files_.clock_.UnixTime();
    return missing == 0 ? Failure{} : DiskFull();
  }

  Failure Seek(std::uint64_t position) override {
    if (!node_) return BadName();
    position_ = static_cast<std::size_t>(position);
    return {};
  }

  Failure Truncate() override {
    if (!node_ || mode_ == OpenMode::Read) return BadName();
    files_.freeBytes += static_cast<std::int64_t>(node_->bytes.size()) - static_cast<std::int64_t>(position_);
    node_->bytes.resize(position_);
    return {};
  }

  Result<std::uint64_t> Size() override {
    if (!node_) return BadName();
    return std::uint64_t{node_->bytes.size()};
  }

  Failure Close() override {
    if (node_) {
      --node_->openHandles;
      --files_.openHandles_;
      node_.reset();
    }
    return {};
  }

 private:
  SimulatedFiles& files_;
  std::shared_ptr<Node> node_;
  OpenMode mode_;
  std::size_t position_ = 0;
};

class SimulatedFiles::HeldLock : public FileLock {
 public:
  HeldLock(SimulatedFiles& files, std::string key) : files_(files), key_(std::move(key)) {
    files_.locks_.insert(key_);
  }
  ~HeldLock() override { files_.locks_.erase(key_); }

 private:
  SimulatedFiles& files_;
  std::string key_;
};

SimulatedFiles::SimulatedFiles(SimulatedClock& clock, Journal& journal) : clock_(clock), journal_(journal) {
  AddRoot("C:\\");
  AddRoot("D:\\");
}

void SimulatedFiles::Put(const std::string& path, std::string_view bytes) {
  const std::string full = FullPath(path);
  PutFolder(FolderOf(full));
  Make(full, FileKind::Plain)->bytes = bytes;
}

void SimulatedFiles::Extend(const std::string& path, std::string_view bytes) {
  Put(path, (Exists(path) ? Text(path) : std::string{}).append(bytes));
}

void SimulatedFiles::PutFolder(const std::string& path) {
  const std::string full = FullPath(path);
  if (Get(full)) return;
  if (!FolderOf(full).empty()) PutFolder(FolderOf(full));
  Make(full, FileKind::Folder);
}

void SimulatedFiles::AddRoot(const std::string& root) { Make(FullPath(root), FileKind::Folder); }

std::string SimulatedFiles::Text(const std::string& path) const {
  const auto node = Get(FullPath(path));
  if (node && node->kind == FileKind::Plain) return node->bytes;
  ADD_FAILURE() << "There is no file " << path;
  return {};
}

bool SimulatedFiles::Exists(const std::string& path) const { return Get(FullPath(path)) != nullptr; }

std::vector<std::string> SimulatedFiles::Names(const std::string& folder) const {
  std::vector<std::string> names;
  for (const auto& child : Children(FullPath(folder))) names.push_back(child->name);
  return names;
}

void SimulatedFiles::Hold(const std::string& path, std::int64_t milliseconds) {
  heldUntil_[LowerCase(FullPath(path))] = milliseconds == kForEver ? kForEver : clock_.Ticks() + milliseconds;
}

void SimulatedFiles::Release(const std::string& path) { heldUntil_.erase(LowerCase(FullPath(path))); }

void SimulatedFiles::SetReadOnly(const std::string& path, bool readOnly) {
  if (const auto node = Get(FullPath(path)))
    node->readOnly = readOnly;
  else
    ADD_FAILURE() << "There is nothing at " << path;
}

void SimulatedFiles::SetModified(const std::string& path, std::int64_t unixTime) {
  if (const auto node = Get(FullPath(path)))
    node->modified = unixTime;
  else
    ADD_FAILURE() << "There is nothing at " << path;
}

std::optional<FileInfo> SimulatedFiles::Find(const std::string& path) {
  if (path.empty()) return std::nullopt;
  const auto info = [](const Node& node) {
    return FileInfo{node.name, node.kind, node.bytes.size(), node.modified};
  };
  const std::string full = FullPath(path);
  const std::string pattern = NameOf(full);
  if (pattern.find_first_of("*?") == std::string::npos) {
    const auto node = Get(full);
    if (!node || (EndsWithSeparator(path) && node->kind != FileKind::Folder)) return std::nullopt;
    return info(*node);
  }
  const std::string folder = FolderOf(full);
  for (const auto& child : Children(folder))
    if (MatchesFileName(pattern, child->name)) return info(*child);
  return std::nullopt;
}

Result<std::vector<FileInfo>> SimulatedFiles::List(const std::string& folder) {
  const std::string full = FullPath(folder);
  if (!IsFolder(full)) return PathNotFound();
  std::vector<FileInfo> entries;
  for (const auto& child : Children(full))
    entries.push_back({child->name, child->kind, child->bytes.size(), child->modified});
  return entries;
}

Result<std::unique_ptr<File>> SimulatedFiles::Open(const std::string& path, OpenMode mode) {
  if (openHandles_ >= handles) return Failure{failures::kTooManyFiles, "Too many files"};
  if (path.empty()) return PathNotFound();
  const std::string full = FullPath(path);
  if (HasForbiddenLetter(full)) return BadName();
  if (IsFolder(full)) return AccessError();
  if (EndsWithSeparator(path)) return PathNotFound();
  if (IsHeld(full)) return Denied();
  auto node = Get(full);
  if (mode == OpenMode::Read) {
    if (!node) return IsFolder(FolderOf(full)) ? NotFound() : PathNotFound();
    return std::unique_ptr<File>(std::make_unique<OpenFile>(*this, node, mode));
  }
  if (Failure failure = WhyUnwritable(full)) return failure;
  journal_.push_back((mode == OpenMode::Create ? "create " : "append ") + full);
  if (!node) node = Make(full, FileKind::Plain);
  auto file = std::make_unique<OpenFile>(*this, node, mode);
  if (mode == OpenMode::Create) file->Truncate();
  return std::unique_ptr<File>(std::move(file));
}

Failure SimulatedFiles::Replace(const std::string& path, std::string_view bytes) {
  const std::string full = FullPath(path);
  if (path.empty() || EndsWithSeparator(path)) return PathNotFound();
  journal_.push_back("replace " + full);
  return ReplaceBytes(full, bytes);
}

Failure SimulatedFiles::Copy(const std::string& source, const std::string& destination) {
  const std::string from = FullPath(source), to = FullPath(destination);
  if (source.empty() || destination.empty() || EndsWithSeparator(destination)) return PathNotFound();
  journal_.push_back("copy " + from + " -> " + to);
  if (HasForbiddenLetter(from)) return BadName();
  if (IsFolder(from)) return AccessError();
  const auto node = Get(from);
  if (!node) return IsFolder(FolderOf(from)) ? NotFound() : PathNotFound();
  if (IsHeld(from) || LowerCase(from) == LowerCase(to)) return Denied();
  return ReplaceBytes(to, node->bytes);
}

Failure SimulatedFiles::Remove(const std::string& path) {
  const std::string full = FullPath(path);
  journal_.push_back("remove " + full);
  if (HasForbiddenLetter(full)) return BadName();
  const auto node = Get(full);
  if (!node || path.empty()) return NotFound();
  if (Failure failure = WhyUnreplaceable(full)) return failure;
  if (Get(FolderOf(full))->readOnly) return AccessError();
  freeBytes += static_cast<std::int64_t>(node->bytes.size());
  nodes_.erase(LowerCase(full));
  return {};
}

Failure SimulatedFiles::RemoveFolder(const std::string& path) {
  const std::string full = FullPath(path);
  if (!IsFolder(full)) return PathNotFound();
  if (!Children(full).empty() || Get(FolderOf(full))->readOnly) return AccessError();
  nodes_.erase(LowerCase(full));
  return {};
}

Failure SimulatedFiles::MakeFolder(const std::string& path) {
  const std::string full = FullPath(path);
  if (path.empty()) return PathNotFound();
  journal_.push_back("make folder " + full);
  if (Get(full)) return AccessError();
  if (Failure failure = WhyUnwritable(full)) return failure;
  Make(full, FileKind::Folder);
  return {};
}

Result<std::unique_ptr<FileLock>> SimulatedFiles::Lock(const std::string& path) {
  const std::string key = LowerCase(FullPath(path));
  if (locks_.count(key) != 0) {
    ADD_FAILURE() << "The program waits for ever for its own lock " << path;
    return Denied();
  }
  if (auto file = Open(path, OpenMode::Append); !file.ok()) return file.failure;
  return std::unique_ptr<FileLock>(std::make_unique<HeldLock>(*this, key));
}

std::vector<std::string> SimulatedFiles::Drives() {
  std::vector<std::string> drives;
  for (const auto& [key, node] : nodes_)
    if (key.size() == 2) drives.push_back(node->name + "\\");
  return drives;
}

std::string SimulatedFiles::FullPath(const std::string& path) const {
  std::string text = path;
  std::replace(text.begin(), text.end(), '/', '\\');
  const bool isShare = text.compare(0, 2, "\\\\") == 0;
  if (!isShare && (text.size() < 2 || text[1] != ':')) text = "C:\\" + text;
  std::string full = text.substr(0, RootLength(text));
  std::size_t start = full.size();
  const std::size_t rootLength = full.size();
  while (start < text.size()) {
    const std::size_t end = std::min(text.find('\\', start), text.size());
    const std::string part = text.substr(start, end - start);
    if (part == "..")
      full.resize(std::max(rootLength, std::min(full.rfind('\\'), full.size())));
    else if (!part.empty() && part != ".")
      full += "\\" + part;
    start = end + 1;
  }
  return full;
}

std::shared_ptr<SimulatedFiles::Node> SimulatedFiles::Get(const std::string& fullPath) const {
  const auto found = nodes_.find(LowerCase(fullPath));
  return found == nodes_.end() ? nullptr : found->second;
}

std::vector<std::shared_ptr<SimulatedFiles::Node>> SimulatedFiles::Children(const std::string& fullPath) const {
  std::vector<std::shared_ptr<Node>> children;
  const std::string prefix = LowerCase(fullPath) + "\\";
  for (auto entry = nodes_.lower_bound(prefix); entry != nodes_.end(); ++entry) {
    if (entry->first.compare(0, prefix.size(), prefix) != 0) break;
    if (entry->first.find('\\', prefix.size()) == std::string::npos) children.push_back(entry->second);
  }
  return children;
}

bool SimulatedFiles::IsFolder(const std::string& fullPath) const {
  const auto node = Get(fullPath);
  return node && node->kind == FileKind::Folder;
}

bool SimulatedFiles::IsHeld(const std::string& fullPath) {
  const auto held = heldUntil_.find(LowerCase(fullPath));
  return held != heldUntil_.end() && clock_.Ticks() < held->second;
}

/// What stops `fullPath` from being made or written; no failure if nothing does.
Failure SimulatedFiles::WhyUnwritable(const std::string& fullPath) const {
  if (HasForbiddenLetter(fullPath)) return BadName();
  const auto node = Get(fullPath);
  if (node) return node->kind == FileKind::Folder || node->readOnly ? AccessError() : Failure{};
  const auto folder = Get(FolderOf(fullPath));
  if (!folder || folder->kind != FileKind::Folder) return PathNotFound();
  return folder->readOnly ? AccessError() : Failure{};
}

Failure SimulatedFiles::WhyUnreplaceable(const std::string& fullPath) {
  if (Failure failure = WhyUnwritable(fullPath)) return failure;
  const auto node = Get(fullPath);
  return IsHeld(fullPath) || (node && node->openHandles > 0) ? AccessError() : Failure{};
}

std::shared_ptr<SimulatedFiles::Node> SimulatedFiles::Make(const std::string& fullPath, FileKind kind) {
  auto& node = nodes_[LowerCase(fullPath)];
  if (!node) node = std::make_shared<Node>(Node{NameOf(fullPath), kind, "", 0, false, 0});
  node->modified = clock_.UnixTime();
  return node;
}

/// The new file is whole beside the old one before it takes its place, so both need room.
Failure SimulatedFiles::ReplaceBytes(const std::string& fullPath, std::string_view bytes) {
  if (Failure failure = WhyUnreplaceable(fullPath)) return failure;
  if (static_cast<std::int64_t>(bytes.size()) > freeBytes) return DiskFull();
  const auto node = Make(fullPath, FileKind::Plain);
  freeBytes += static_cast<std::int64_t>(node->bytes.size()) - static_cast<std::int64_t>(bytes.size());
  node->bytes = bytes;
  return {};
}

}  // namespace tessary
