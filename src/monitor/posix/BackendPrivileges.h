// From root to the user of a job, for good.
#pragma once

#include "host/Failure.h"
#include "monitor/posix/JobUser.h"

namespace tessary {

/// Makes this process one of the user's own: the groups that the user has at a login, no way back, new files
/// for the owner alone (or, with `groupReads`, for the group to read as well), and an environment that knows
/// nothing of the server's but the file of the machine's settings. The user's home becomes the working folder,
/// or "/" where there is none. A process that is not root has to be the user's already; of its environment
/// XDG_CONFIG_HOME and XDG_RUNTIME_DIR stay. After a failure the process is in no state to go on.
Failure BecomeUser(const Account& account, bool groupReads);

}  // namespace tessary
