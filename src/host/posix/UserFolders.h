// Where this user's things are, by the environment.
#pragma once

#include <string>

namespace tessary {

/// The value of an environment variable, empty when it is not set.
std::string EnvironmentValue(const char* name);

/// The user's home folder, without a separator at its end; empty if neither the environment nor the user
/// database names one.
std::string HomeFolder();

/// The folder of the user's settings: $XDG_CONFIG_HOME, otherwise ".config" in the home folder; empty where
/// that is.
std::string ConfigFolder();

/// The first folder of $PATH with a program of this name that this user may run; empty if there is none.
/// Entries that are no absolute paths do not count: what they name depends on where one stands.
std::string FindOnPath(const std::string& program);

/// `folder` + "/" + `name`, with one "/" between them also below the root.
std::string Below(const std::string& folder, const std::string& name);

/// `path` without the separators at its end. "/" stays.
std::string WithoutSlashes(std::string path);

}  // namespace tessary
