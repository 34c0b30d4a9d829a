#include "config/modSpecialFolders.h"

#include "system/Conversions.h"

namespace tessary {

std::optional<std::string> GetSpecialFolder(Run& run, std::int32_t id) {
  auto path = run.host.shell.SpecialFolder(id);
  if (path) *path = CutAtNul(*path);
  return path;
}

}  // namespace tessary
