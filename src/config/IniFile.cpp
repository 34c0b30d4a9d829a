#include "config/IniFile.h"

#include <string_view>

#include "system/Conversions.h"
#include "system/Error.h"
#include "system/FileHelpers.h"

namespace tessary {

namespace {

/// Takes the next line off `rest`; lines end in CR LF, LF or CR.
std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = rest.find_first_of("\r\n");
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end);
  if (rest.starts_with("\r\n"))
    rest.remove_prefix(2);
  else if (!rest.empty())
    rest.remove_prefix(1);
  return line;
}

void ReadTree(std::string_view text, Dictionary& root) {
  Dictionary* section = &root;
  while (!text.empty()) {
    const std::string line = TrimBlanks(TakeLine(text));
    if (line.size() <= 2) continue;
    if (line.front() == '[' && line.back() == ']') {
      const auto held = NewDictionary();
      section = held.get();
      root.Set(TrimBlanks(std::string_view(line).substr(1, line.size() - 2)), held);
      continue;
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) continue;
    const std::string key = TrimBlanks(std::string_view(line).substr(0, equals));
    if (!key.empty()) section->Set(key, TrimBlanks(std::string_view(line).substr(equals + 1)));
  }
}

void AppendValues(const Dictionary& values, std::string_view indent, std::string& text) {
  for (const auto& [key, value] : values)
    if (const std::string* plain = value.AsText())
      text.append(indent).append(key).append("=").append(*plain).append("\r\n");
}

}  // namespace

bool IniFile::Load(const std::string& fileName) {
  ClearError();
  data_ = NewDictionary();
  try {
    ReadTree(DecodeText(run_.host.codePage, ReadFile(run_, fileName)), *data_);
    return true;
  } catch (const Error& error) {
    lastError_ = error.number();
    lastErrorMessage_ = error.description();
    return false;
  }
}

bool IniFile::Save(const std::string& fileName) {
  ClearError();
  try {
    WriteTextFile(run_, fileName, data_ ? IniDict2String(*data_) : std::string());
    return true;
  } catch (const Error& error) {
    lastError_ = error.number();
    lastErrorMessage_ = error.description();
    return false;
  }
}

void IniFile::Reset() {
  ClearError();
  data_ = nullptr;
}

std::string IniFile::IniDict2String(const Dictionary& tree) {
  std::string text;
  AppendValues(tree, "", text);
  for (const auto& [name, value] : tree) {
    const auto section = value.AsDictionary();
    if (!section) continue;
    text.append("[").append(name).append("]\r\n");
    AppendValues(*section, "  ", text);
  }
  return text;
}

void IniFile::ClearError() {
  lastError_ = 0;
  lastErrorMessage_.clear();
}

}  // namespace tessary
