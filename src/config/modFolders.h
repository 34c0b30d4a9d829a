// Where a job's temporary files and a user's settings live: the first candidate of a fixed list that exists or
// can be made.
#pragma once

#include <string>

#include "system/Run.h"

namespace tessary {

/// The folder of the temporary files, without a separator at its end, made when missing. Candidates: the
/// system's temporary path, the environment variables TEMP and TMP, each with the company and product folders
/// below it; the machine setting USERTEMP; "temp" in the program folder. The answer is kept for the run. If no
/// candidate works the error of the last one that could not be made is raised.
std::string GetTemporaryFolder(Run& run);

/// The folder of the user's settings, in the same way: APPDATA, USERPROFILE, USERDATA, "data" in the program
/// folder.
std::string GetUserDataFolder(Run& run);

/// The folder of the running program.
std::string GetProgramFolder(Run& run);

/// True if the folder exists at the end. With `create` a missing one is made first; MkDirRecurse's error passes
/// on.
bool EnsureFolder(Run& run, const std::string& path, bool create);

/// A machine setting as text; empty when absent.
std::string GetMachineSetting(Run& run, const std::string& name);

/// `name` as a part of a registry path: each "\" becomes "_".
std::string RegistrySafeName(std::string name);

}  // namespace tessary
