// A process that stands over a piece of work and all processes that it starts, so that they end together.
#pragma once

#include <cstdint>
#include <functional>
#include <sys/types.h>

namespace tessary {

/// Turns this process, a fresh copy of `parent`, into the keeper of another copy, which does `work` and ends
/// with its result, in a session that is away from the terminal. When the work has ended, at a SIGTERM, and
/// when `parent` ends, however it does, the keeper ends all processes of the work but those with sessions of
/// their own: a Ghostscript that was given up would run on. It goes when they are gone, with the code of the
/// work.
[[noreturn]] void Keep(pid_t parent, const std::function<std::int32_t()>& work);

}  // namespace tessary
