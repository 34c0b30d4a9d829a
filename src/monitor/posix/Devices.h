// The addresses that printers of this system have on the print server, which only its administrators give.
#pragma once

namespace tessary {

inline constexpr const char* kDeviceScheme = "tessary:";
/// The jobs of this device run as the users that they name, which the server's policy makes them prove. It is
/// not the device that the backend announces: who adds that one by other means has no such policy.
inline constexpr const char* kOwnDevice = "tessary:/own";
/// Nobody proves who they are: all jobs of this device run as the user that the machine setting RemoteUser
/// names.
inline constexpr const char* kCommonDevice = "tessary:/common";

}  // namespace tessary
