#include "ui/modLocalize.h"

#include "config/modFolders.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "ui/Labels.h"

namespace tessary {

namespace {

void AddLabel(Dictionary& labels, std::string_view line) {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return;
  labels.Set(UnescapeLabelText(line.substr(0, equals)), UnescapeLabelText(line.substr(equals + 1)));
}

void AddLabels(const Host& host, Dictionary& labels, std::string_view text) {
  while (!text.empty()) {
    const LineBreak end = FindLineBreak(host, text);
    AddLabel(labels, text.substr(0, end.position));
    text.remove_prefix(end.length == 0 ? text.size() : end.position + end.length);
  }
}

std::int16_t CharsetOf(const std::string& language) {
  if (language == "JPN") return charsets::kJapanese;
  if (language == "KOR") return charsets::kKorean;
  return charsets::kDefault;
}

}  // namespace

void LoadLabels(Run& run) {
  LabelState& labels = run.labels;
  labels.texts = Dictionary();
  const std::string file = JoinPath(run.host.paths, GetProgramFolder(run), "labels.txt");
  if (FileExists(run, file))
    AddLabels(run.host, labels.texts, DecodeText(run.host.codePage, ReadTextFile(run, file)));
  labels.charset = CharsetOf(Translate(run, "[" + std::string(kLanguageKey) + "]"));
}

std::string UnescapeLabelText(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      result += text[i];
      continue;
    }
    if (++i == text.size()) break;
    // "\t" is no tab: language files rely on it.
    if (text[i] == 'n' || text[i] == 't')
      result += "\r\n";
    else
      result += text[i];
  }
  return result;
}

std::string Translate(Run& run, const std::string& text) {
  if (!text.starts_with('[')) return text;
  const std::size_t close = text.find(']', 1);
  if (close == std::string::npos) return text;
  const std::string key = text.substr(1, close - 1);
  if (run.labels.texts.Exists(key))
    if (std::string label = run.labels.texts.Text(key); !label.empty()) return label;
  return IsDebugRun(run) ? text : text.substr(close + 1);
}

void LocalizeControl(Run& run, Control& control) {
  if (run.labels.charset != charsets::kDefault) control.font.charset = run.labels.charset;
  control.caption = Translate(run, control.caption);
  control.toolTip = Translate(run, control.toolTip);
  for (const auto& child : control.children) LocalizeControl(run, *child);
}

bool IsDebugRun(Run& run) {
  return FileExists(run, JoinPath(run.host.paths, GetProgramFolder(run), "debug.txt"));
}

}  // namespace tessary
