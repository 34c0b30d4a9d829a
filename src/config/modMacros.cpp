#include "config/modMacros.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "config/modFolders.h"
#include "config/modSpecialFolders.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/modUtil.h"
#include "ui/modLocalize.h"

namespace tessary {

namespace {

constexpr const char* kEngineComponent = "MSScriptControl.ScriptControl";
constexpr std::string_view kRegionMarker = "rem -- macro region begins";
constexpr std::string_view kEnvironmentPrefix = "env:", kScriptPrefix = "vbs:";

std::string DateText(Run&, const DateTime& time) { return DateTimeStamp(time).substr(0, 10); }

std::string TimeText(Run&, const DateTime& time) {
  std::string text = DateTimeStamp(time).substr(11);
  std::replace(text.begin(), text.end(), ':', '.');
  return text;
}

std::string DocumentText(Run& run, const DateTime&) { return run.job.DocumentName; }

std::string BaseDocumentText(Run& run, const DateTime&) {
  return SafeFileName(BaseNameOf(run.host.paths, run.job.DocumentName));
}

std::string UserText(Run& run, const DateTime&) { return UserName(run); }
std::string ComputerText(Run& run, const DateTime&) { return ComputerName(run); }
std::string AuthorText(Run& run, const DateTime&) { return run.job.DocumentProperties.Text("author"); }
std::string TitleText(Run& run, const DateTime&) { return run.job.DocumentProperties.Text("title"); }

std::string GuidText(Run& run, const DateTime&) {
  if (run.macros.guid.empty()) run.macros.guid = NewGuid(run);
  return run.macros.guid;
}

std::string PersonalText(Run& run, const DateTime&) {
  return GetSpecialFolder(run, folders::kPersonal).value_or("");
}

std::string DesktopText(Run& run, const DateTime&) {
  return GetSpecialFolder(run, folders::kDesktop).value_or("");
}

struct Macro {
  std::string_view name;
  const char* label;
  const char* form;  ///< shown behind the label, in parentheses; empty: nothing is
  std::string (*text)(Run&, const DateTime&);
  bool madeSafe;  ///< SafeFileName is applied where a file name is made
};

constexpr Macro kMacros[] = {
    {"date", "[L97]Date", "[L130]yyyy-mm-dd", DateText, false},
    {"time", "[L98]Time", "[L131]hh.mm.ss", TimeText, false},
    {"docname", "[L99]Document name", "", DocumentText, true},
    {"basedocname", "[L100]Document name without extension", "", BaseDocumentText, true},
    {"username", "[L101]User name", "", UserText, true},
    {"computername", "[L102]Computer name", "", ComputerText, true},
    {"author", "[L103]Document author", "", AuthorText, true},
    {"title", "[L104]Document title", "", TitleText, true},
    {"guid", "[L105]System generated GUID", "", GuidText, false},
    {"personal", "[L106]Location of personal documents", "", PersonalText, false},
    {"desktop", "[L107]User's desktop", "", DesktopText, false},
};

/// Cuts `text` into macros and what stands between them, in order. A "<" without a ">" behind it begins no
/// macro.
template <class Plain, class Name>
void ForEachPart(std::string_view text, Plain plain, Name name) {
  while (true) {
    const std::size_t open = text.find('<');
    const std::size_t close = open == std::string_view::npos ? open : text.find('>', open);
    if (close == std::string_view::npos) break;
    plain(text.substr(0, open));
    name(text.substr(open + 1, close - open - 1));
    text.remove_prefix(close + 1);
  }
  plain(text);
}

/// The rest of `name` behind `prefix`, whatever the case of the letters there, or nothing.
std::optional<std::string> Behind(std::string_view prefix, const std::string& name) {
  if (ToLower(name.substr(0, prefix.size())) != prefix) return std::nullopt;
  return name.substr(prefix.size());
}

/// The full paths of the macro files, in the order of their names on every machine.
std::vector<std::string> MacroFiles(Run& run) {
  const std::string folder = JoinPath(run.host.paths, GetProgramFolder(run), "macros");
  std::vector<std::string> names;
  for (const FileInfo& entry : run.host.files.List(folder).value)
    if (ToLower(entry.name).ends_with(".vbs")) names.push_back(entry.name);
  std::sort(names.begin(), names.end(), [](const std::string& one, const std::string& other) {
    const std::string lowerOne = ToLower(one), lowerOther = ToLower(other);
    return lowerOne == lowerOther ? one < other : lowerOne < lowerOther;
  });
  for (std::string& name : names) name = JoinPath(run.host.paths, folder, name);
  std::erase_if(names, [&run](const std::string& path) { return !FileExists(run, path); });
  return names;
}

/// The part of a macro file that is meant for the engine.
std::string MacroRegion(const Host& host, std::string source) {
  const std::size_t marker = ToLower(source).find(kRegionMarker);
  if (marker == std::string::npos) return source;
  const LineBreak end = FindLineBreak(host, source, marker);
  return end.length == 0 ? source : source.substr(end.position + end.length);
}

void AddMacroFile(Run& run, MacroEngine& engine, const std::string& file) {
  const std::string source = DecodeText(run.host.codePage, ReadTextFile(run, file));
  const auto error = engine.AddCode(MacroRegion(run.host, source));
  if (!error) return;
  throw Error(error->number, "Error adding macro source code from file '" + file + "'.\r\n\r\n" +
                                 error->description + "\r\nLine " + std::to_string(error->line) + " position " +
                                 std::to_string(error->column + 1) + "\r\n" + error->text);
}

/// The run's engine, made and filled at the first call. Files behind one that failed are not tried again.
MacroEngine& GetMacroEngine(Run& run) {
  MacroState& macros = run.macros;
  if (macros.engine) return *macros.engine;
  if (macros.makeEngine) macros.engine = macros.makeEngine();
  if (!macros.engine)
    throw Error(failures::kComponentMissing, std::string("Error creating object: ") + kEngineComponent);
  auto context = NewDictionary();
  context->Set("DocumentTitle", run.job.DocumentProperties.Text("title"));
  macros.engine->AddObject("context", context);
  for (const std::string& file : MacroFiles(run)) AddMacroFile(run, *macros.engine, file);
  return *macros.engine;
}

}  // namespace

Dictionary GetMacroList(Run& run) {
  Dictionary list;
  for (const Macro& macro : kMacros) {
    std::string label = Translate(run, macro.label);
    if (*macro.form) label += " (" + Translate(run, macro.form) + ")";
    list.Set(std::string(macro.name), label);
  }
  list.Set("env:TEMP", Translate(run, "[L108]Value of environment variable TEMP"));
  return list;
}

std::string ExpandMacros(Run& run, std::string_view text, bool makeFileSafe) {
  const DateTime time = run.host.clock.LocalTime();
  std::string result;
  ForEachPart(
      text, [&](std::string_view plain) { result += plain; },
      [&](std::string_view name) { result += ExpandMacro(run, std::string(name), time, makeFileSafe); });
  return result;
}

std::string ExpandMacro(Run& run, const std::string& name, const DateTime& time, bool makeFileSafe) {
  if (const auto variable = Behind(kEnvironmentPrefix, name)) return run.host.system.Environment(*variable);
  if (const auto expression = Behind(kScriptPrefix, name)) return EvaluateMacroScript(run, *expression);
  for (const Macro& macro : kMacros) {
    if (macro.name != name) continue;
    const std::string text = macro.text(run, time);
    return makeFileSafe && macro.madeSafe ? SafeFileName(text) : text;
  }
  return "<" + name + ">";
}

std::string EvaluateMacroScript(Run& run, const std::string& expression) {
  const auto value = GetMacroEngine(run).Evaluate(expression);
  RaiseIf(value.failure);
  return value.value;
}

std::string NativeOutsideMacros(const PathStyle& style, std::string_view text) {
  std::string result;
  ForEachPart(
      text, [&](std::string_view plain) { result += style.Native(std::string(plain)); },
      [&](std::string_view name) { result.append("<").append(name).append(">"); });
  return result;
}

}  // namespace tessary
