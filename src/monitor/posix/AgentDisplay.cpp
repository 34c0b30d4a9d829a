#include "monitor/posix/AgentDisplay.h"

#include <string>
#include <sys/socket.h>
#include <sys/un.h>

#include "host/posix/UniqueFd.h"
#include "host/posix/UserFolders.h"

namespace tessary {

namespace {

/// True unless it is certain that nobody listens at `path`, where a NUL in front stands for an abstract
/// address.
bool IsListening(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return true;
  path.copy(address.sun_path, path.size());
  const bool abstract = path.starts_with('\0');
  const auto size = static_cast<socklen_t>(sizeof address.sun_family + path.size() + (abstract ? 0 : 1));
  const UniqueFd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!socket || connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), size) == 0) return true;
  return errno != ENOENT && errno != ECONNREFUSED;
}

bool IsWaylandThere() {
  const std::string name = EnvironmentValue("WAYLAND_DISPLAY");
  if (name.empty()) return false;
  return IsListening(name.starts_with('/') ? name : Below(EnvironmentValue("XDG_RUNTIME_DIR"), name));
}

bool IsX11There() {
  const std::string name = EnvironmentValue("DISPLAY");
  if (name.empty()) return false;
  const std::size_t colon = name.rfind(':');
  const std::string host = name.substr(0, colon);
  if (colon == std::string::npos || !(host.empty() || host == "unix")) return true;
  const std::string number = name.substr(colon + 1, name.find('.', colon) - colon - 1);
  const std::string path = "/tmp/.X11-unix/X" + number;
  return IsListening(path) || IsListening('\0' + path);
}

}  // namespace

bool IsDisplayThere() { return IsWaylandThere() || IsX11There(); }

}  // namespace tessary
