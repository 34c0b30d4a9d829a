// Expands any text as a setting. Macros are never looked through again, whatever they give.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "config/modMacros.h"
#include "system/Error.h"
#include "tests/support/SimulatedMachine.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessary;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  SimulatedMachine machine;
  Run run(machine.host());
  run.job.DocumentName = text;
  run.job.DocumentProperties.Set("title", std::string(text));
  for (const bool makeFileSafe : {false, true}) {
    try {
      ExpandMacros(run, text, makeFileSafe);
      NativeOutsideMacros(PathStyle::Posix(), text);
    } catch (const Error&) {
    }
  }
  return 0;
}
