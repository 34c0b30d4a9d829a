// Writing a whole file in one step.
#pragma once

#include <functional>
#include <string>
#include <sys/types.h>

#include "host/Failure.h"

namespace tessary {

/// Writes the content of a file to an open descriptor.
using Fill = std::function<Failure(int fd)>;

/// Gives the file the content that `fill` writes, with the promises of Files::Replace. `newMode`, less the
/// umask, are the access rights of a file that did not exist.
Failure ReplaceFile(const std::string& path, mode_t newMode, const Fill& fill);

/// Copies the rest of the plain file `input` behind the position of `output`. Fails for what is no plain file.
Failure CopyAll(int input, int output);

}  // namespace tessary
