// The one place where the error numbers of this machine become failures.
#pragma once

#include <string>

#include "host/Failure.h"

namespace tessary {

/// The failure that stands for `code` (a value of errno, not 0), with the system's text for it.
Failure FailureOf(int code);

/// The same behind a call that takes a path, where an "invalid argument" is the path's name.
Failure PathFailureOf(int code);

/// The same behind a call that makes something new or looks into a folder: what is missing then is a folder.
Failure FolderFailureOf(int code);

/// kBadFileName for a path that no system call can take: an empty one, or one with a NUL in it.
Failure CheckPath(const std::string& path);

}  // namespace tessary
