// The line between the agent of a desktop session and those who have jobs for it: whole packets of fields over
// a local socket, and the proof of who is at the other end.
//
//   to the agent    "print 1", session, psFile, title, printer, then a key and a value for each setting
//                   "alive 1": asks if there is a use in this agent
//   from the agent  "queued"
//                   "started", temporary folder; with the descriptor of the GuiProcess
//                   "ended", exit code, problem (GuiOutcome)
//                   "refused", reason: the agent does not run this job
//                   "alive"
//
// Hanging up takes a job back. An agent that hangs up before "ended" or "refused" gives its job back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/Failure.h"
#include "host/posix/UniqueFd.h"
#include "monitor/GuiJob.h"

namespace tessary {

inline constexpr std::size_t kMostPacketBytes = 64 * 1024;

/// How long the agent and the others wait for a packet that has to come at once.
inline constexpr std::int64_t kAnswerMilliseconds = 5000;

inline constexpr const char* kAliveRequest = "alive 1";

struct AgentPacket {
  std::vector<std::string> fields;  ///< none: the line is cut, or the packet was too long
  UniqueFd fd;
};

/// Opens the folder of the agent's socket, `$XDG_RUNTIME_DIR/tessary`, after `make` has it made when missing. A
/// failure whose text says why when it is not this user's alone.
Result<UniqueFd> OpenAgentFolder(bool make);

/// Listens as the agent in the open folder, in the place of one that is no more; up to `most` callers wait.
/// What is done with the socket never waits.
Result<UniqueFd> ListenInFolder(int folder, int most);

/// Calls the agent: a connected socket that never waits, whose other end is proven to be this user's.
Result<UniqueFd> CallAgent();

/// The user at the other end; -1 if the system does not tell.
std::int64_t PeerUser(int socket);

/// Sends the fields, and `fd` if it is not -1. False when the other end is gone or full, when a field holds a
/// NUL or when all of them are too long for a packet.
bool SendPacket(int socket, const std::vector<std::string>& fields, int fd = -1);

/// The packet that waits. To be called when there is one, or the line is cut.
AgentPacket ReceivePacket(int socket);

/// The fields that stand for a job, and back: `problem` says what is wrong with them.
std::vector<std::string> JobFields(const GuiJob& job);
GuiJob JobOfFields(const std::vector<std::string>& fields, std::string& problem);

}  // namespace tessary
