// tessary-agent: serves the print jobs of one user in that user's desktop session.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "system/Run.h"

namespace tessary {

/// Serves until SIGTERM, SIGHUP or SIGINT, or until the display is gone. Returns 0 then, and at once when
/// another agent of this user serves; 1 when it cannot serve, such as without a display, and 2 for a wrong
/// call. What there is to say goes to `errors`, the help to `output`.
std::int32_t AgentCommand(Run& run, const std::vector<std::string>& arguments, std::ostream& output,
                          std::ostream& errors);

}  // namespace tessary
