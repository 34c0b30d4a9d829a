// A process that stands over a piece of work and all processes that it starts, so that they end together.
#pragma once

#include <cstdint>
#include <functional>
#include <sys/types.h>

namespace tessary {

/// Turns this process, a fresh copy of `parent`, into the keeper of another copy, which does `work` and ends
/// with its result, in a session that is away from the terminal. The keeper ends with the same code when the
/// work has ended. At a SIGTERM, when `parent` ends, however it does, and when the work is ended by a signal,
/// the keeper ends all processes of the work but those with sessions of their own; it goes when they are gone.
/// A code above 128 counts as a signal as well: then the work has seen one end what it waited for.
[[noreturn]] void Keep(pid_t parent, const std::function<std::int32_t()>& work);

}  // namespace tessary
