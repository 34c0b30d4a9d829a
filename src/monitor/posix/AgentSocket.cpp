#include "monitor/posix/AgentSocket.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include "host/posix/PosixFailure.h"
#include "host/posix/UserFolders.h"

namespace tessary {

namespace {

constexpr const char* kSocketName = "agent";
constexpr const char* kPrintRequest = "print 1";
constexpr std::size_t kFieldsBeforeSettings = 5;
constexpr std::size_t kMostSession = 64;

/// Why a folder is no place for the socket; empty when it is one.
std::string DistrustOf(const struct stat& folder, mode_t forbidden) {
  if (folder.st_uid != geteuid()) return "it belongs to somebody else";
  if ((folder.st_mode & forbidden) != 0) return "it is open to others";
  return {};
}

/// Opens `name`, found from `parent`; `path` is what people call it.
Result<UniqueFd> OpenFolder(int parent, const std::string& name, const std::string& path, mode_t forbidden) {
  UniqueFd folder(openat(parent, name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat status {};
  if (!folder || fstat(folder.Get(), &status) != 0) {
    Failure failure = FailureOf(errno);
    failure.text = "'" + path + "': " + failure.text;
    return failure;
  }
  if (const std::string distrust = DistrustOf(status, forbidden); !distrust.empty())
    return Failure{failures::kPermissionDenied, "'" + path + "' is not used: " + distrust};
  return folder;
}

/// The socket in an open folder. An address holds no long path, and this one is short wherever the folder is.
sockaddr_un AddressIn(int folder) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = "/proc/self/fd/" + std::to_string(folder) + "/" + kSocketName;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  return address;
}

bool IsSession(const std::string& text) {
  return !text.empty() && text.size() <= kMostSession && std::all_of(text.begin(), text.end(), [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-';
  });
}

bool IsOwnPlainFile(const std::string& path) {
  struct stat status {};
  return path.starts_with('/') && lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         status.st_uid == geteuid();
}

/// Room for one descriptor beside the bytes of a packet.
struct Control {
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> bytes{};

  explicit Control(msghdr& message) {
    message.msg_control = bytes.data();
    message.msg_controllen = bytes.size();
  }
};

}  // namespace

Result<UniqueFd> OpenAgentFolder(bool make) {
  const std::string runtime = WithoutSlashes(EnvironmentValue("XDG_RUNTIME_DIR"));
  if (!runtime.starts_with('/')) return Failure{failures::kPathNotFound, "XDG_RUNTIME_DIR names no folder"};
  const Result<UniqueFd> parent = OpenFolder(AT_FDCWD, runtime, runtime, S_IWGRP | S_IWOTH);
  if (!parent.ok()) return parent.failure;
  constexpr const char* kFolder = "tessary";
  if (make && mkdirat(parent.value.Get(), kFolder, S_IRWXU) != 0 && errno != EEXIST) return FailureOf(errno);
  return OpenFolder(parent.value.Get(), kFolder, Below(runtime, kFolder), S_IRWXG | S_IRWXO);
}

Result<UniqueFd> ListenInFolder(int folder, int most) {
  UniqueFd socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const sockaddr_un address = AddressIn(folder);
  unlinkat(folder, kSocketName, 0);  // left by an agent that had no time to remove it
  if (!socket || bind(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(socket.Get(), most) != 0)
    return FailureOf(errno);
  return socket;
}

Result<UniqueFd> CallAgent() {
  const Result<UniqueFd> folder = OpenAgentFolder(false);
  if (!folder.ok()) return folder.failure;
  UniqueFd socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const sockaddr_un address = AddressIn(folder.value.Get());
  if (!socket || connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
    return FailureOf(errno);
  if (PeerUser(socket.Get()) != static_cast<std::int64_t>(geteuid()))
    return Failure{failures::kPermissionDenied, "the agent is not one of this user"};
  return socket;
}

std::int64_t PeerUser(int socket) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 ? static_cast<std::int64_t>(peer.uid)
                                                                        : -1;
}

bool SendPacket(int socket, const std::vector<std::string>& fields, int fd) {
  std::string bytes;
  for (const std::string& field : fields) {
    if (field.find('\0') != std::string::npos) return false;
    bytes += field + '\0';
  }
  if (bytes.size() > kMostPacketBytes) return false;
  iovec piece{bytes.data(), bytes.size()};
  msghdr message{};
  message.msg_iov = &piece;
  message.msg_iovlen = 1;
  Control control(message);
  if (fd < 0) {
    message.msg_controllen = 0;
  } else {
    cmsghdr* header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof fd);
    std::memcpy(CMSG_DATA(header), &fd, sizeof fd);
  }
  return Restarted([&] { return sendmsg(socket, &message, MSG_NOSIGNAL | MSG_DONTWAIT); }) ==
         static_cast<ssize_t>(bytes.size());
}

AgentPacket ReceivePacket(int socket) {
  std::string bytes(kMostPacketBytes, '\0');
  iovec piece{bytes.data(), bytes.size()};
  msghdr message{};
  message.msg_iov = &piece;
  message.msg_iovlen = 1;
  Control control(message);
  const auto receive = [&] { return recvmsg(socket, &message, MSG_CMSG_CLOEXEC | MSG_DONTWAIT); };
  ssize_t size = Restarted(receive);
  // That the other end has not read everything is told before its last words.
  if (size < 0 && errno == ECONNRESET) size = Restarted(receive);
  AgentPacket packet;
  for (cmsghdr* header = CMSG_FIRSTHDR(&message); size > 0 && header != nullptr;
       header = CMSG_NXTHDR(&message, header)) {
    if (header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS) continue;
    for (std::size_t at = 0; CMSG_LEN(at + sizeof(int)) <= header->cmsg_len; at += sizeof(int)) {
      int fd = -1;
      std::memcpy(&fd, CMSG_DATA(header) + at, sizeof fd);
      packet.fd = UniqueFd(fd);  // of several only the last stays open
    }
  }
  if (size <= 0 || (message.msg_flags & MSG_TRUNC) != 0) return packet;
  bytes.resize(static_cast<std::size_t>(size));
  for (std::size_t begin = 0, end = 0; (end = bytes.find('\0', begin)) != std::string::npos; begin = end + 1)
    packet.fields.push_back(bytes.substr(begin, end - begin));
  return packet;
}

std::vector<std::string> JobFields(const GuiJob& job) {
  std::vector<std::string> fields{kPrintRequest, job.session, job.psFile, job.title, job.printer};
  for (const auto& [key, value] : job.settings) {
    fields.push_back(key);
    fields.push_back(value);
  }
  return fields;
}

GuiJob JobOfFields(const std::vector<std::string>& fields, std::string& problem) {
  if (fields.size() < kFieldsBeforeSettings || fields.size() % 2 == 0 || fields[0] != kPrintRequest) {
    problem = "the request is not understood";
    return {};
  }
  GuiJob job{fields[1], fields[2], fields[3], fields[4], {}};
  if (!IsSession(job.session)) problem = "the session's name is not one";
  if (!IsOwnPlainFile(job.psFile)) problem = "'" + job.psFile + "' is no plain file of this user";
  for (std::size_t i = kFieldsBeforeSettings; i < fields.size(); i += 2)
    job.settings.emplace_back(fields[i], fields[i + 1]);
  return job;
}

}  // namespace tessary
