// The way of a spooled job into the desktop session of its user.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "monitor/GuiJob.h"

namespace tessary {

enum class AgentState : std::uint8_t {
  Queued,   ///< the agent has the job; others may be in front of it
  Started,  ///< `gui` has it
  Without,  ///< there is no agent, or it is not to be used, or it went: the words say why
};

/// Told of each state as it comes, with one line for the log that may be empty.
using AgentNotice = std::function<void(AgentState state, const std::string& words)>;

/// Has the agent of this process's user, whose socket is found by XDG_RUNTIME_DIR, run `gui` for the job, and
/// waits for its end. Nothing when the job has to be run without the agent; then no `gui` works on it any more.
/// An agent that does not answer is given up after 5 seconds; once the job is queued the wait is without limit.
///
/// As soon as `cancelFd` (-1: none) is readable the agent is told to end the job, and once `gui` is gone the
/// outcome is kNothingDone. An agent's socket that anybody else could have made is not used.
std::optional<GuiOutcome> PrintThroughAgent(Run& run, const GuiJob& job, int cancelFd,
                                            const AgentNotice& notice);

}  // namespace tessary
