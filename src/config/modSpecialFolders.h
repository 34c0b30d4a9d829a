// The special folders of the user's shell.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "system/Run.h"

namespace tessary {

/// The path of a special folder (`folders::kDesktop` and the others of host/Shell.h), which is not made, or
/// nothing.
std::optional<std::string> GetSpecialFolder(Run& run, std::int32_t id);

}  // namespace tessary
