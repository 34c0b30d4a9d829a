#include "system/MachineServices.h"

#include <cmath>

#include "system/modUtil.h"

namespace tessary {

namespace {

constexpr int kSecondsADay = 24 * 60 * 60;

script::LocalTime FromHost(const DateTime& time) {
  return {time.year, time.month, time.day, time.hour, time.minute, time.second};
}

// Scripts know no "Path/File access error" for their files: to them it is "Permission denied".
int ErrorNumber(const Failure& failure) {
  return failure.number == failures::kPathFileAccess ? failures::kPermissionDenied : failure.number;
}

}  // namespace

MachineServices::MachineServices(Host& host) : host_(host), startTicks_(host.clock.Ticks()) {
  const DateTime now = host.clock.LocalTime();
  startSeconds_ = now.hour * 3600 + now.minute * 60 + now.second;
}

script::Services MachineServices::services() {
  script::Services services;
  services.files = this;
  services.now = [this] { return FromHost(host_.clock.LocalTime()); };
  services.timer = [this] { return SecondsSinceMidnight(); };
  services.environment = [this](const std::string& name) { return host_.system.Environment(name); };
  return services;
}

double MachineServices::SecondsSinceMidnight() const {
  const double passed = static_cast<double>(host_.clock.Ticks() - startTicks_) / 1000;
  return std::fmod(startSeconds_ + passed, kSecondsADay);
}

std::string MachineServices::Full(const std::string& path) const {
  const bool isRelative = !host_.paths.hasDrives && (path.empty() || !host_.paths.IsSeparator(path.front()));
  return isRelative ? host_.workingFolder + host_.paths.separator + path : path;
}

script::FileFacts MachineServices::FactsOf(const FileInfo& info) {
  return {info.name, info.kind == FileKind::Folder, info.size, FromHost(LocalDateTime(host_, info.modified))};
}

std::optional<script::FileFacts> MachineServices::Find(const std::string& path) {
  const std::optional<FileInfo> info = host_.files.Find(Full(path));
  if (!info) return std::nullopt;
  return FactsOf(*info);
}

int MachineServices::List(const std::string& folder, std::vector<script::FileFacts>& entries) {
  const Result<std::vector<FileInfo>> listed = host_.files.List(Full(folder));
  for (const FileInfo& info : listed.value) entries.push_back(FactsOf(info));
  return ErrorNumber(listed.failure);
}

int MachineServices::Read(const std::string& path, std::string& bytes) {
  Result<std::unique_ptr<File>> file = host_.files.Open(Full(path), OpenMode::Read);
  if (!file.ok()) return ErrorNumber(file.failure);
  bytes.clear();
  char block[65536];
  for (;;) {
    const Result<std::size_t> read = file.value->Read(block, sizeof block);
    if (!read.ok()) return ErrorNumber(read.failure);
    if (read.value == 0) return 0;
    bytes.append(block, read.value);
  }
}

int MachineServices::Write(const std::string& path, std::string_view bytes) {
  return ErrorNumber(host_.files.Replace(Full(path), bytes));
}

int MachineServices::Append(const std::string& path, std::string_view bytes) {
  Result<std::unique_ptr<File>> file = host_.files.Open(Full(path), OpenMode::Append);
  if (!file.ok()) return ErrorNumber(file.failure);
  const Failure failure = file.value->Write(bytes);
  return ErrorNumber(failure ? failure : file.value->Close());
}

int MachineServices::Copy(const std::string& source, const std::string& destination) {
  return ErrorNumber(host_.files.Copy(Full(source), Full(destination)));
}

int MachineServices::Remove(const std::string& path) {
  const std::string full = Full(path);
  const auto found = host_.files.Find(full);
  const bool isFolder = found && found->kind == FileKind::Folder;
  return ErrorNumber(isFolder ? host_.files.RemoveFolder(full) : host_.files.Remove(full));
}

int MachineServices::MakeFolder(const std::string& path) {
  return ErrorNumber(host_.files.MakeFolder(Full(path)));
}

}  // namespace tessary
