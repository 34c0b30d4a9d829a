#include "ui/modLocalize.h"

#include "config/modFolders.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"

namespace tessary {

std::string Translate(Run& run, const std::string& text) {
  if (!text.starts_with('[')) return text;
  const std::size_t close = text.find(']', 1);
  if (close == std::string::npos) return text;
  const std::string key = text.substr(1, close - 1);
  if (run.labels.texts.Exists(key))
    if (std::string label = run.labels.texts.Text(key); !label.empty()) return label;
  return IsDebugRun(run) ? text : text.substr(close + 1);
}

bool IsDebugRun(Run& run) {
  return FileExists(run, JoinPath(run.host.paths, GetProgramFolder(run), "debug.txt"));
}

}  // namespace tessary
