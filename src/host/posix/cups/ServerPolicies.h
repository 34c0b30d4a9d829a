// Who may print: the operation policies that printers of this system have in the server's configuration.
//
// Under the policy "tessary" a job belongs to the user who proved to be its sender, so that nobody prints in
// another's name: over the server's local socket the system proves it, from the network a password does.
// A printer under "tessary-shared" takes jobs from anybody in certain networks, without a proof; its jobs must
// not run as the user that they name.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessary {

inline constexpr std::string_view kOwnPolicy = "tessary";
inline constexpr std::string_view kSharedPolicy = "tessary-shared";

/// The section of the configuration that says what the policy "tessary" is.
std::string OwnPolicyText();

/// The same for "tessary-shared"; all `networks` are IsNetwork.
std::string SharedPolicyText(const std::vector<std::string>& networks);

/// True for what the server understands as a network: an address, one with the number of its bits or a mask
/// behind "/", an IPv6 address in brackets, or "@LOCAL" for those that this machine is part of.
bool IsNetwork(const std::string& text);

/// True if the configuration has a policy of that name.
bool HasPolicy(const std::string& configuration, std::string_view name);

/// The configuration with `section` in the place of the policy `name`, or behind all others if there is none.
/// Nothing else changes. Nothing when the policy there has no end.
std::optional<std::string> WithPolicy(const std::string& configuration, std::string_view name,
                                      const std::string& section);

}  // namespace tessary
