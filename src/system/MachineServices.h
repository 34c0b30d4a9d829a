// What scripts get of this machine: the services of the macro language, by the interfaces of the host.
#pragma once

#include "host/Host.h"
#include "script/Services.h"

namespace tessary {

/// Lives as long as the engines that it serves.
class MachineServices final : private script::FileSystem {
 public:
  explicit MachineServices(Host& host);
  /// Files, clock and environment of the machine; the output is up to the caller.
  [[nodiscard]] script::Services services();

 private:
  std::optional<script::FileFacts> Find(const std::string& path) override;
  int List(const std::string& folder, std::vector<script::FileFacts>& entries) override;
  int Read(const std::string& path, std::string& bytes) override;
  int Write(const std::string& path, std::string_view bytes) override;
  int Append(const std::string& path, std::string_view bytes) override;
  int Copy(const std::string& source, const std::string& destination) override;
  int Remove(const std::string& path) override;
  int MakeFolder(const std::string& path) override;
  char Separator() override { return host_.paths.separator; }
  std::string TempFolder() override { return host_.system.TempPath(); }
  std::string CurrentFolder() override { return host_.workingFolder; }

  script::FileFacts FactsOf(const FileInfo& info);
  /// A path below the folder that the process was started in counts from there.
  [[nodiscard]] std::string Full(const std::string& path) const;
  [[nodiscard]] double SecondsSinceMidnight() const;

  Host& host_;
  std::int64_t startTicks_ = 0;
  double startSeconds_ = 0;  ///< since midnight, at startTicks_
};

}  // namespace tessary
