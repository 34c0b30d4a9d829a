// Whose job it is: the rules by which the backend, which a print server starts as root, finds the one user that
// it becomes.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessary {

/// What the user database knows of a user.
struct Account {
  std::string name;
  unsigned user = 0, group = 0;
  std::string home, shell;
};

/// Who a job says that it is from. The print server vouches for it, unless the printer is for all.
struct JobOrigin {
  std::string user;
  bool forAll = false;
};

/// The machine's settings for jobs that are nobody's here: RemoteUser and RemoteFolder. They count together.
struct RemoteRule {
  std::string user;    ///< whose jobs they become
  std::string folder;  ///< where their documents go, full path
  [[nodiscard]] bool IsSet() const { return !user.empty() && !folder.empty(); }
};

/// What the rules have to know of the machine.
struct AccountRules {
  unsigned self = 0;          ///< the user that the process runs as; only root can become another one
  unsigned firstUser = 1000;  ///< numbers below are those of the system
  std::function<std::optional<Account>(const std::string& name)> find;
};

struct JobUser {
  Account account;
  std::string remoteFolder;  ///< not empty: the job is nobody's here, and its documents go into this folder
  std::string refusal;       ///< why nobody may have the job, for the log; empty when `account` may
};

/// A job belongs to the user that it names, if that is a person: neither root nor unknown nor an account of the
/// system. Where the rule for remote jobs is set, those belong to the user of that rule, who may be an account
/// of the system, but never root. So do all jobs of a printer for all, which prints nothing without that rule.
JobUser ChooseUser(const JobOrigin& origin, const RemoteRule& remote, const AccountRules& rules);

/// The rules of this machine: its user database, and UID_MIN of /etc/login.defs.
AccountRules MachineAccounts();

/// The first number of a person, as the text of login.defs has it; 1000 if it has none that makes sense.
unsigned FirstUserOf(std::string_view loginDefinitions);

}  // namespace tessary
