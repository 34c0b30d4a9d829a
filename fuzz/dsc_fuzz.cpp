// Patches any document, in reads of any size, and holds the copy against its rules.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "postscript/modPostScript.h"
#include "tests/support/Faults.h"
#include "tests/support/PatchedByLines.h"
#include "tests/support/ShortReads.h"
#include "tests/support/SimulatedMachine.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessary;
  if (size == 0) return 0;
  const std::string job(reinterpret_cast<const char*>(data) + 1, size - 1);
  SimulatedMachine machine;
  machine.files.Put("C:\\a.ps", job);
  ShortReads files(machine.files, data[0] % 32u + 1);
  Host host = WithFiles(machine.host(), files);
  Run run(host);
  run.log.fileName = "C:\\a.log";
  Dictionary settings;
  for (const auto& [key, value] : {std::pair{"title", "T"}, {"author", "A"}, {"watermarktext", "x"}})
    settings.Set(key, value);
  settings.Set("watermarklayer", "bottom");
  GetDocumentProperties(run, "C:\\a.ps");
  PatchPostScriptFile(run, settings, "", "C:\\b.ps", "C:\\a.ps");
  if (machine.files.Text("C:\\b.ps") != PatchedByLines(job, "gsave stamp grestore\r\n\r\n")) std::abort();
  return 0;
}
