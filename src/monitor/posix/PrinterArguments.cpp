#include "monitor/posix/PrinterArguments.h"

#include <algorithm>
#include <iterator>

#include "host/posix/cups/PrinterDescription.h"
#include "host/posix/cups/ServerPolicies.h"
#include "monitor/posix/QueueName.h"

namespace tessary {

namespace {

struct Command {
  const char* name;
  std::size_t words;    // behind it
  const char* missing;  // what a call without them lacks
};

constexpr Command kCommands[] = {
    {"add", 1, "the name of the new printer"},
    {"remove", 1, "the name of a printer"},
    {"list", 0, ""},
    {"default", 1, "the name of a printer"},
    {"share", 2, "the name of a printer, and on or off"},
};

struct Option {
  const char* name;
  const char* command;  // the one that has it
  bool hasValue;
};

constexpr Option kOptions[] = {
    {"--location", "add", true},
    {"--paper", "add", true},
    {"--default", "add", false},
    {"--from", "share", true},
};

const Option* FindOption(const std::string& name) {
  const auto* option = std::find_if(std::begin(kOptions), std::end(kOptions),
                                    [&](const Option& each) { return name == each.name; });
  return option == std::end(kOptions) ? nullptr : option;
}

struct Words {
  std::vector<std::string> plain;
  std::vector<std::pair<const Option*, std::string>> options;
};

/// Tells options and words apart. Sets `parsed.problem`, or `parsed.help`.
Words ReadWords(const std::vector<std::string>& arguments, PrinterArguments& parsed) {
  Words words;
  bool optionsEnded = false;
  for (std::size_t i = 0; i < arguments.size() && parsed.problem.empty(); ++i) {
    const std::string& argument = arguments[i];
    const std::size_t equals = argument.find('=');
    const Option* option = FindOption(argument.substr(0, equals));
    if (optionsEnded || !argument.starts_with('-')) {
      words.plain.push_back(argument);
    } else if (argument == "--") {
      optionsEnded = true;
    } else if (argument == "--help") {
      parsed.help = true;
    } else if (!option || (!option->hasValue && equals != std::string::npos)) {
      parsed.problem = "there is no option " + argument;
    } else if (!option->hasValue || equals != std::string::npos) {
      words.options.emplace_back(option, option->hasValue ? argument.substr(equals + 1) : "");
    } else if (++i < arguments.size()) {
      words.options.emplace_back(option, arguments[i]);
    } else {
      parsed.problem = argument + " wants a value";
    }
  }
  return words;
}

/// Why the value of an option cannot be; empty if it can.
std::string TakeOption(PrinterArguments& parsed, const std::string& name, const std::string& value) {
  if (name == "--default") {
    parsed.makeDefault = true;
  } else if (name == "--location") {
    if (const std::string why = WhyNoPrinterName(value); !why.empty()) return "the location " + why;
    parsed.location = value;
  } else if (name == "--paper") {
    if (!IsPageSize(value)) return "there is no paper '" + value + "'; A4 and Letter are two that there are";
    parsed.paper = value;
  } else {
    if (!IsNetwork(value)) return "'" + value + "' is no network; 192.168.1.0/24, [fd00::]/64 and @LOCAL are";
    parsed.networks.push_back(value);
  }
  return {};
}

std::string TakeOptions(PrinterArguments& parsed, const Words& words) {
  for (const auto& [option, value] : words.options) {
    if (parsed.command != option->command) return std::string(option->name) + " belongs to " + option->command;
    if (const std::string problem = TakeOption(parsed, option->name, value); !problem.empty()) return problem;
  }
  return {};
}

std::string TakeCommand(PrinterArguments& parsed, const std::vector<std::string>& words) {
  if (words.empty()) return "a command is missing";
  const auto* command = std::find_if(std::begin(kCommands), std::end(kCommands),
                                     [&](const Command& each) { return words.front() == each.name; });
  if (command == std::end(kCommands)) return "there is no command '" + words.front() + "'";
  if (words.size() <= command->words) return std::string(command->name) + " wants " + command->missing;
  if (words.size() > command->words + 1)
    return "'" + words.back() + "' is one word too many; quote names with blanks";
  parsed.command = command->name;
  if (words.size() > 1) parsed.name = words[1];
  if (words.size() < 3) return {};
  parsed.on = words[2] == "on";
  return parsed.on || words[2] == "off" ? "" : "share wants on or off, not '" + words[2] + "'";
}

}  // namespace

PrinterArguments ParsePrinterArguments(const std::vector<std::string>& arguments) {
  PrinterArguments parsed;
  const Words words = ReadWords(arguments, parsed);
  if (parsed.help) return parsed;
  if (parsed.problem.empty()) parsed.problem = TakeCommand(parsed, words.plain);
  if (parsed.problem.empty()) parsed.problem = TakeOptions(parsed, words);
  if (parsed.problem.empty() && !parsed.networks.empty() && !parsed.on)
    parsed.problem = "--from goes with share NAME on";
  const std::string why = parsed.command == "add" ? WhyNoPrinterName(parsed.name) : "";
  if (parsed.problem.empty() && !why.empty())
    parsed.problem = "the name of a printer: '" + parsed.name + "' " + why;
  return parsed;
}

}  // namespace tessary
