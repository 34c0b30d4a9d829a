#include "monitor/posix/JobUser.h"

#include <cerrno>
#include <charconv>
#include <pwd.h>
#include <sstream>
#include <unistd.h>
#include <vector>

#include "host/posix/PosixFile.h"

namespace tessary {

namespace {

constexpr unsigned kNobody = 65534;
constexpr unsigned kUsualFirstUser = 1000;
constexpr unsigned kNoUser = static_cast<unsigned>(-1);  // what the system takes for "leave it as it is"
constexpr std::size_t kMaxRecord = 1024 * 1024;

/// Why a job cannot be that of a person; empty when it can.
std::string WhyNoPerson(const std::string& name, const std::optional<Account>& account, unsigned firstUser) {
  if (!account) return "there is no user '" + name + "' on this machine";
  if (account->user == 0) return "root does not print to this printer";
  if (account->user < firstUser || account->user == kNobody || account->user == kNoUser)
    return "'" + name + "' is an account of the system";
  return {};
}

/// The same for the user that an administrator has chosen.
std::string WhyNoRemoteUser(const RemoteRule& remote, const std::optional<Account>& account) {
  if (!account) return "there is no user '" + remote.user + "', whom the machine setting RemoteUser names";
  if (account->user == 0 || account->user == kNoUser || account->group == 0)
    return "the machine setting RemoteUser must not name root";
  if (!remote.folder.starts_with('/')) return "the machine setting RemoteFolder is no full path";
  return {};
}

std::optional<Account> FindAccount(const std::string& name) {
  passwd record{};
  passwd* found = nullptr;
  std::vector<char> texts(16 * 1024);
  int code = 0;
  while ((code = getpwnam_r(name.c_str(), &record, texts.data(), texts.size(), &found)) == ERANGE &&
         texts.size() < kMaxRecord)
    texts.resize(texts.size() * 2);
  if (code != 0 || found == nullptr) return std::nullopt;
  const auto text = [](const char* value) { return std::string(value != nullptr ? value : ""); };
  return Account{text(record.pw_name), record.pw_uid, record.pw_gid, text(record.pw_dir),
                 text(record.pw_shell)};
}

}  // namespace

JobUser ChooseUser(const JobOrigin& origin, const RemoteRule& remote, const AccountRules& rules) {
  JobUser chosen;
  const std::optional<Account> named = rules.find(origin.user);
  chosen.refusal = WhyNoPerson(origin.user, named, rules.firstUser);
  if (chosen.refusal.empty()) chosen.account = *named;
  if (origin.forAll && !remote.IsSet()) {
    chosen.refusal =
        "the printer is for all, and the machine settings RemoteUser and RemoteFolder do not say where its "
        "documents go";
  } else if (origin.forAll || (remote.IsSet() && !chosen.refusal.empty())) {
    const std::optional<Account> common = rules.find(remote.user);
    chosen.refusal = WhyNoRemoteUser(remote, common);
    chosen.account = common.value_or(Account());
    chosen.remoteFolder = remote.folder;
  }
  if (chosen.refusal.empty() && rules.self != 0 && rules.self != chosen.account.user)
    chosen.refusal = "the print server does not run this program as root, so it cannot print for '" +
                     chosen.account.name + "'";
  return chosen;
}

unsigned FirstUserOf(std::string_view loginDefinitions) {
  std::istringstream lines{std::string(loginDefinitions)};
  unsigned first = kUsualFirstUser;
  for (std::string line, word, value; std::getline(lines, line);) {
    std::istringstream words(line);
    if (!(words >> word >> value) || word != "UID_MIN") continue;
    unsigned number = 0;
    const char* end = value.data() + value.size();
    const auto [behind, code] = std::from_chars(value.data(), end, number);
    if (code == std::errc() && behind == end && number > 0) first = number;
  }
  return first;
}

AccountRules MachineAccounts() {
  return {geteuid(), FirstUserOf(ReadWholeFile("/etc/login.defs")), FindAccount};
}

}  // namespace tessary
