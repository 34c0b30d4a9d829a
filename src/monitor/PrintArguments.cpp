#include "monitor/PrintArguments.h"

#include <string_view>

#include "system/Conversions.h"

namespace tessary {

namespace {

/// Why a setting cannot stand in a settings file; empty if it can.
std::string WhyUnfit(const std::string& key, const std::string& value) {
  if (key.empty()) return "has no key";
  if (key.front() == '[' || (key + value).find_first_of("\r\n") != std::string::npos)
    return "cannot stand in a settings file";
  return {};
}

void AddSetting(PrintArguments& parsed, const std::string& setting) {
  const std::size_t equals = setting.find('=');
  if (equals == std::string::npos) {
    parsed.problem = "--set wants KEY=VALUE, not '" + setting + "'";
    return;
  }
  const std::string key = ToLower(TrimBlanks(setting.substr(0, equals))), value = setting.substr(equals + 1);
  if (const std::string unfit = WhyUnfit(key, value); !unfit.empty())
    parsed.problem = "the setting '" + setting + "' " + unfit;
  else
    parsed.settings.emplace_back(key, value);
}

void TakeOption(PrintArguments& parsed, const std::string& name, const std::string& value) {
  if (name == "--set")
    AddSetting(parsed, value);
  else if (name == "--printer")
    parsed.printer = value;
  else
    parsed.title = value;
}

}  // namespace

PrintArguments ParsePrintArguments(const std::vector<std::string>& arguments) {
  PrintArguments parsed;
  bool optionsEnded = false;
  for (std::size_t i = 0; i < arguments.size() && parsed.problem.empty(); ++i) {
    const std::string& argument = arguments[i];
    const std::string name = argument.substr(0, argument.find('='));
    if (optionsEnded || argument == "-" || !argument.starts_with('-')) {
      parsed.files.push_back(argument);
    } else if (argument == "--") {
      optionsEnded = true;
    } else if (argument == "--help") {
      parsed.help = true;
    } else if (name != "--set" && name != "--printer" && name != "--title") {
      parsed.problem = "there is no option " + argument;
    } else if (name.size() < argument.size()) {
      TakeOption(parsed, name, argument.substr(name.size() + 1));
    } else if (++i < arguments.size()) {
      TakeOption(parsed, name, arguments[i]);
    } else {
      parsed.problem = name + " wants a value";
    }
  }
  if (parsed.problem.empty() && parsed.files.empty() && !parsed.help)
    parsed.problem = "there is no file to print";
  return parsed;
}

}  // namespace tessary
