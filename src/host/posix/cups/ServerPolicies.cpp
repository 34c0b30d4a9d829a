#include "host/posix/cups/ServerPolicies.h"

#include <arpa/inet.h>
#include <charconv>
#include <utility>

namespace tessary {

namespace {

// Making a job. Moving one here from another printer is the same thing by another way, and there its user may
// never have been asked for a proof: see kMoving.
constexpr std::string_view kMaking = "Create-Job Print-Job Print-URI Validate-Job";
constexpr std::string_view kMoving = "CUPS-Move-Job";
constexpr std::string_view kOwnersOnly =
    "Send-Document Send-URI Close-Job Hold-Job Release-Job Restart-Job Reprocess-Job Cancel-Job Cancel-My-Jobs "
    "Cancel-Current-Job Suspend-Current-Job Resume-Job Set-Job-Attributes Create-Job-Subscription "
    "Renew-Subscription Cancel-Subscription Get-Notifications CUPS-Authenticate-Job CUPS-Get-Document";
constexpr std::string_view kAdministratorsOnly =
    "Purge-Jobs Cancel-Jobs Pause-Printer Resume-Printer Enable-Printer Disable-Printer "
    "Pause-Printer-After-Current-Job Hold-New-Jobs Release-Held-New-Jobs Deactivate-Printer Activate-Printer "
    "Restart-Printer Shutdown-Printer Startup-Printer Promote-Job Schedule-Job-After CUPS-Accept-Jobs "
    "CUPS-Reject-Jobs CUPS-Add-Modify-Printer CUPS-Delete-Printer CUPS-Add-Modify-Class CUPS-Delete-Class "
    "CUPS-Set-Default";

constexpr std::string_view kProven = "AuthType Default";
constexpr std::string_view kAdministrators = "Require user @SYSTEM";
constexpr std::string_view kOwners = "Require user @OWNER @SYSTEM";
constexpr std::string_view kFromAnywhere = "Order deny,allow";

std::string Limit(std::string_view operations, const std::vector<std::string_view>& rules) {
  std::string text = "  <Limit " + std::string(operations) + ">\n";
  for (const std::string_view rule : rules) text += "    " + std::string(rule) + "\n";
  return text + "  </Limit>\n";
}

std::string Section(std::string_view name, const std::string& limits) {
  return "<Policy " + std::string(name) +
         ">\n"
         "  JobPrivateAccess default\n"
         "  JobPrivateValues default\n"
         "  SubscriptionPrivateAccess default\n"
         "  SubscriptionPrivateValues default\n" +
         limits + Limit(kAdministratorsOnly, {kProven, kAdministrators, kFromAnywhere}) +
         Limit(kMoving, {kProven, kAdministrators, kFromAnywhere}) + Limit("All", {kFromAnywhere}) +
         "</Policy>\n";
}

bool IsAddress(int family, const std::string& text) {
  unsigned char address[sizeof(in6_addr)];
  return inet_pton(family, text.c_str(), address) == 1;
}

bool IsBits(const std::string& text, int most) {
  int bits = -1;
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), bits);
  return problem == std::errc() && end == text.data() + text.size() && bits > 0 && bits <= most;
}

std::string Trimmed(std::string_view line) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t begin = line.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return std::string(line.substr(begin, line.find_last_not_of(kBlanks) + 1 - begin));
}

/// The line without blanks, in lower case; one blank stands between its words.
std::string Plain(std::string_view line) {
  std::string plain;
  for (const char c : Trimmed(line)) {
    const bool blank = c == ' ' || c == '\t';
    if (blank && plain.ends_with(' ')) continue;
    plain += blank ? ' ' : c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return plain;
}

/// Where the policy begins, and where what follows it begins, which is npos for one without an end. Both are
/// npos where there is no such policy.
std::pair<std::size_t, std::size_t> FindPolicy(const std::string& configuration, std::string_view name) {
  const std::string head = Plain("<policy " + std::string(name) + ">");
  std::size_t begin = std::string::npos;
  for (std::size_t at = 0; at < configuration.size();) {
    const std::size_t next = std::min(configuration.find('\n', at), configuration.size() - 1) + 1;
    const std::string line = Plain(std::string_view(configuration).substr(at, next - at));
    if (line == head) begin = at;
    if (line == "</policy>" && begin != std::string::npos) return {begin, next};
    at = next;
  }
  return {begin, std::string::npos};
}

}  // namespace

std::string OwnPolicyText() {
  return Section(kOwnPolicy, Limit(kMaking, {kProven, "Require valid-user", kFromAnywhere}) +
                                 Limit(kOwnersOnly, {kProven, kOwners, kFromAnywhere}));
}

std::string SharedPolicyText(const std::vector<std::string>& networks) {
  std::string allowed = "Order allow,deny";
  for (const std::string& network : networks) allowed += "\n    Allow from " + network;
  return Section(kSharedPolicy, Limit(kMaking, {allowed}) + Limit(kOwnersOnly, {allowed, kOwners}));
}

bool IsNetwork(const std::string& text) {
  if (text == "@LOCAL") return true;
  const std::size_t slash = text.find('/');
  const std::string address = text.substr(0, slash),
                    behind = slash == std::string::npos ? "" : text.substr(slash + 1);
  if (slash != std::string::npos && behind.empty()) return false;
  if (address.starts_with('[') && address.ends_with(']'))
    return IsAddress(AF_INET6, address.substr(1, address.size() - 2)) &&
           (behind.empty() || IsBits(behind, 128));
  return IsAddress(AF_INET, address) &&
         (behind.empty() || IsBits(behind, 32) || (behind != "0.0.0.0" && IsAddress(AF_INET, behind)));
}

bool HasPolicy(const std::string& configuration, std::string_view name) {
  return FindPolicy(configuration, name).first != std::string::npos;
}

std::optional<std::string> WithPolicy(const std::string& configuration, std::string_view name,
                                      const std::string& section) {
  const auto [begin, end] = FindPolicy(configuration, name);
  if (begin == std::string::npos) {
    const bool open = !configuration.empty() && !configuration.ends_with('\n');
    return configuration + (open ? "\n" : "") + section;
  }
  if (end == std::string::npos) return std::nullopt;
  return configuration.substr(0, begin) + section + configuration.substr(end);
}

}  // namespace tessary
