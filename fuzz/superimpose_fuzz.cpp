// Reads any text as a value of `superimpose` and selects pages with it.
#include <cstddef>
#include <cstdint>
#include <string>

#include "postscript/modSuperimpose.h"
#include "system/Error.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessary;
  if (size == 0) return 0;
  Dictionary settings;
  settings.Set("superimpose", std::string(reinterpret_cast<const char*>(data) + 1, size - 1));
  try {
    MakeSuperimposePageMap(settings, "#.eps", data[0]);
  } catch (const Error&) {
  }
  return 0;
}
