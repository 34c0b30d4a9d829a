// Tries macros from the shell.
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "host/posix/PosixMachine.h"
#include "script/Engine.h"
#include "script/WScript.h"
#include "system/MachineServices.h"

namespace {

using tessary::script::Engine;
using tessary::script::ScriptError;

constexpr std::string_view kUsage =
    "usage: tessary-macro [FILE.vbs ...] [-e EXPRESSION] ...\n"
    "\n"
    "Runs the files in their order in one engine of the macro language, then prints the value of each\n"
    "expression. The object `context` is there as in a print job, WScript.Echo and WScript.Quit work.\n"
    "\n"
    "  -e EXPRESSION  print the value of a VBScript expression\n"
    "  --help         show this text\n"
    "\n"
    "An error is reported as FILE:LINE:COLUMN: DESCRIPTION (NUMBER), and the exit code is 1; 2 means that the\n"
    "call itself was wrong.\n";

struct Request {
  std::vector<std::string> files;
  std::vector<std::string> expressions;
  bool help = false;
  bool wrong = false;
};

Request ReadArguments(int argc, char** argv) {
  Request request;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--help" || argument == "-h") {
      request.help = true;
    } else if (argument == "-e" && i + 1 < argc) {
      request.expressions.emplace_back(argv[++i]);
    } else if (argument.starts_with('-')) {
      request.wrong = true;
    } else {
      request.files.push_back(argument);
    }
  }
  request.wrong = request.wrong || (!request.help && request.files.empty() && request.expressions.empty());
  return request;
}

// The object that a job's macros know as `context`.
void AddContext(Engine& engine) {
  engine.AddObject("context", engine.CreateDictionary({{"DocumentTitle", "Document"}}));
}

void Report(const ScriptError& error, std::string_view fallback) {
  std::cerr << (error.origin.empty() ? fallback : std::string_view(error.origin));
  if (error.line > 0) std::cerr << ':' << error.line << ':' << error.column + 1;
  std::cerr << ": " << error.Message() << " (" << error.number << ")\n";
  if (!error.text.empty()) std::cerr << "  " << error.text << '\n';
}

bool RunFile(Engine& engine, tessary::Host& host, tessary::script::FileSystem& files, const std::string& file) {
  std::string bytes;
  if (files.Read(file, bytes) != 0) {
    std::cerr << "tessary-macro: cannot read " << file << '\n';
    return false;
  }
  engine.AddCode(tessary::DecodeText(host.codePage, bytes), file);
  return true;
}

int RunAll(const Request& request, tessary::Host& host) {
  tessary::MachineServices machine(host);
  tessary::script::Services services = machine.services();
  services.echo = [](std::string_view line) { std::cout << line << '\n'; };
  Engine engine(services);
  engine.SetLanguage("VBScript");
  const std::string firstFile = request.files.empty() ? std::string() : request.files.front();
  engine.AddObject("WScript", tessary::script::Make<tessary::script::WScriptObject>(firstFile));
  AddContext(engine);
  try {
    for (const std::string& file : request.files) {
      if (!RunFile(engine, host, *services.files, file)) return 1;
    }
    for (const std::string& expression : request.expressions) {
      std::cout << engine.TextOf(engine.Evaluate(expression)) << '\n';
    }
  } catch (const ScriptError& error) {
    std::cout.flush();
    Report(error, "expression");
    return 1;
  } catch (const tessary::script::Quit& quit) {
    return quit.code;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const Request request = ReadArguments(argc, argv);
  if (request.wrong) {
    std::cerr << kUsage;
    return 2;
  }
  if (request.help) {
    std::cout << kUsage;
    return 0;
  }
  tessary::PosixMachine machine(argc, argv);
  return RunAll(request, machine.host());
}
