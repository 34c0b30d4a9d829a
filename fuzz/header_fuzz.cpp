// Writes headers with any text as title, author and stamp. Whatever it is, it stays within strings.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "postscript/PostScriptHeader.h"
#include "tests/support/PostScriptStrings.h"
#include "tests/support/SimulatedMachine.h"

namespace {

using namespace tessary;

/// What stands outside the strings of a header, the lines that depend on the kinds of letters left out.
std::string CodeFor(const std::string& text, const std::string& stamp) {
  SimulatedMachine machine;
  Run run(machine.host());
  Dictionary settings;
  settings.Set("title", text);
  settings.Set("author", text);
  settings.Set("watermarktext", stamp);
  settings.Set("watermarkfontname", stamp);
  settings.Set("watermarkfontsize", "45");
  const std::string file = R"(C:\Temp\x_header.ps)";
  if (!WritePostScriptHeader(run, file, settings, true)) std::abort();
  PostScriptStrings header = ReadPostScriptStrings(machine.files.Text(file));
  if (!header.isWhole) std::abort();
  const std::size_t line = header.rest.find("<<\r\n/");
  if (line != std::string::npos) header.rest.erase(line);
  std::size_t more = 0;
  while ((more = header.rest.find("() ()", more)) != std::string::npos) header.rest.erase(more, 3);
  return header.rest;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string usual = CodeFor("x", "x");
  const std::string text(reinterpret_cast<const char*>(data), size);
  if (text.empty()) return 0;
  if (CodeFor(text, "x") != usual || CodeFor("x", text) != usual) std::abort();

  std::string bytes;
  for (const std::string& part : ReadPostScriptStrings(EscapePostScriptBytes(text)).strings)
    bytes += part + '\n';
  std::string expected;
  for (const char c : text + '\n')
    if (c != '\r') expected += c;
  if (bytes != expected) std::abort();
  return 0;
}
