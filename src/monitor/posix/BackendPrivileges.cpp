#include "monitor/posix/BackendPrivileges.h"

#include <cerrno>
#include <grp.h>
#include <map>
#include <stdlib.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "host/posix/PosixFailure.h"
#include "host/posix/UserFolders.h"

namespace tessary {

namespace {

/// Whether all numbers of the process are the user's, and root's cannot be had again.
bool IsOnly(const Account& account) {
  uid_t real = 0, effective = 0, saved = 0;
  gid_t realGroup = 0, effectiveGroup = 0, savedGroup = 0;
  if (getresuid(&real, &effective, &saved) != 0 || getresgid(&realGroup, &effectiveGroup, &savedGroup) != 0)
    return false;
  if (real != account.user || effective != account.user || saved != account.user) return false;
  if (realGroup != account.group || effectiveGroup != account.group || savedGroup != account.group)
    return false;
  const uid_t kept = static_cast<uid_t>(-1);
  return setuid(0) != 0 && setresuid(kept, 0, kept) != 0 && (account.group == 0 || setgid(0) != 0);
}

Failure ChangeNumbers(const Account& account) {
  const uid_t user = account.user;
  const gid_t group = account.group;
  if (initgroups(account.name.c_str(), group) != 0) return FailureOf(errno);
  if (setresgid(group, group, group) != 0) return FailureOf(errno);
  if (setresuid(user, user, user) != 0) return FailureOf(errno);
  if (!IsOnly(account)) return {failures::kPermissionDenied, "The rights of root are still there"};
  return {};
}

/// The folder where the sockets of the user's session are; empty if there is none that is the user's alone.
std::string RuntimeFolder(unsigned user) {
  const std::string folder = "/run/user/" + std::to_string(user);
  struct stat status {};
  if (lstat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return {};
  return status.st_uid == user && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0 ? folder : "";
}

void SetEnvironment(const Account& account, bool isSelf) {
  std::map<std::string, std::string> variables = {
      {"HOME", account.home.starts_with('/') ? account.home : "/"},
      {"USER", account.name},
      {"LOGNAME", account.name},
      {"SHELL", account.shell.starts_with('/') ? account.shell : "/bin/sh"},
      {"PATH", "/usr/local/bin:/usr/bin:/bin"},
      {"LANG", "C.UTF-8"},
      {"XDG_RUNTIME_DIR", RuntimeFolder(account.user)},
      {"TESSARY_MACHINE_SETTINGS", EnvironmentValue("TESSARY_MACHINE_SETTINGS")},
  };
  if (isSelf)
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
      if (const std::string value = EnvironmentValue(name); !value.empty()) variables[name] = value;
  clearenv();
  for (const auto& [name, value] : variables)
    if (!value.empty()) setenv(name.c_str(), value.c_str(), 1);
}

}  // namespace

Failure BecomeUser(const Account& account, bool groupReads) {
  const bool isSelf = geteuid() != 0;
  if (isSelf && (geteuid() != account.user || getuid() != account.user)) return FailureOf(EPERM);
  if (!isSelf)
    if (Failure failure = ChangeNumbers(account)) return failure;
  umask(groupReads ? S_IWGRP | S_IRWXO : S_IRWXG | S_IRWXO);
  SetEnvironment(account, isSelf);
  if (chdir(HomeFolder().c_str()) != 0 && chdir("/") != 0) return FailureOf(errno);
  return {};
}

}  // namespace tessary
