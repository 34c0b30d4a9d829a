#include "host/posix/UserFolders.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tessary {

std::string EnvironmentValue(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::string HomeFolder() {
  std::string home = EnvironmentValue("HOME");
  if (!home.starts_with('/')) {
    const passwd* user = getpwuid(geteuid());
    home = user && user->pw_dir ? user->pw_dir : "";
  }
  return WithoutSlashes(std::move(home));
}

std::string ConfigFolder() {
  std::string folder = EnvironmentValue("XDG_CONFIG_HOME");
  if (folder.starts_with('/')) return WithoutSlashes(std::move(folder));
  const std::string home = HomeFolder();
  return home.empty() ? home : Below(home, ".config");
}

std::string FindOnPath(const std::string& program) {
  const std::string path = EnvironmentValue("PATH");
  for (std::size_t begin = 0; begin < path.size();) {
    const std::size_t end = std::min(path.find(':', begin), path.size());
    std::string folder = WithoutSlashes(path.substr(begin, end - begin));
    begin = end + 1;
    if (!folder.starts_with('/')) continue;
    const std::string file = Below(folder, program);
    struct stat status {};
    if (stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
        faccessat(AT_FDCWD, file.c_str(), X_OK, AT_EACCESS) == 0)
      return folder;
  }
  return {};
}

std::string Below(const std::string& folder, const std::string& name) {
  return folder.ends_with('/') ? folder + name : folder + '/' + name;
}

std::string WithoutSlashes(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

}  // namespace tessary
