// The addresses that printers of this system have on the print server, which only its administrators give.
#pragma once

namespace tessary {

inline constexpr const char* kDeviceScheme = "tessary:";
/// The jobs of this device run as the users that they name.
inline constexpr const char* kOwnDevice = "tessary:/";
/// Nobody proves who they are: all jobs of this device run as the user that the machine setting RemoteUser
/// names.
inline constexpr const char* kCommonDevice = "tessary:/common";

}  // namespace tessary
