#include "host/posix/PosixComponents.h"

namespace tessary {

Failure PosixComponents::Create(const std::string& progId) {
  if (progId == "Scripting.Dictionary") return {};
  return {failures::kComponentMissing, "This machine does not have the component"};
}

}  // namespace tessary
