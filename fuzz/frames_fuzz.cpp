// Reads any stream as documents, in reads of any size: what it gives are documents that, framed anew, are the
// beginning of that stream or mean the same.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/FramedDocuments.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessary;
  if (size < 2) return 0;
  const std::string stream(reinterpret_cast<const char*>(data) + 2, size - 2);
  const FramedDocuments read = ReadFrames(stream, data[0] + 1u, data[1] + 1u);
  const FramedDocuments again = ReadFrames(WriteFrames(read.whole), 7, 11);
  if (again.problem != "" || again.whole != read.whole) std::abort();
  if (read.problem.empty() && ReadFrames(stream, 1, 1).whole != read.whole) std::abort();
  return 0;
}
