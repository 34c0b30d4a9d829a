#include "host/posix/PosixGhostscripts.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <unistd.h>

#include "host/posix/ChildProcess.h"

namespace tessary {

namespace {

constexpr std::int64_t kMostMilliseconds = 10'000;
constexpr std::size_t kMostAnswer = 1024;

/// Reads what waits in `pipe` behind `answer`, of which no more than kMostAnswer is kept. False at the end.
bool ReadSome(int pipe, std::string& answer) {
  std::array<char, kMostAnswer> buffer;
  const ssize_t count = Restarted([&] { return read(pipe, buffer.data(), buffer.size()); });
  if (count <= 0) return count < 0 && errno == EAGAIN;
  answer.append(buffer.data(), static_cast<std::size_t>(count));
  answer.resize(std::min(answer.size(), kMostAnswer));
  return true;
}

/// What the child says until it ends; nothing if the time is over first. The pipe may outlive the child, in the
/// hands of a program that the child started, so that its end is not waited for.
std::string Listen(ChildProcess& child, int pipe) {
  std::string answer;
  std::array<pollfd, 2> entries = {pollfd{child.Fd(), POLLIN, 0}, pollfd{pipe, POLLIN, 0}};
  const std::int64_t deadline = MonotonicMilliseconds() + kMostMilliseconds;
  while (MonotonicMilliseconds() < deadline && PollUntil(deadline, entries.data(), entries.size())) {
    if (entries[1].revents != 0) {
      if (!ReadSome(pipe, answer)) entries[1].fd = -1;
    } else if (entries[0].revents != 0) {
      return answer;
    }
  }
  return {};
}

}  // namespace

Result<std::string> PosixGhostscripts::AskVersion(const std::string& executable) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return std::string();
  const UniqueFd output(ends[0]);
  UniqueFd input(ends[1]);
  fcntl(output.Get(), F_SETFL, O_NONBLOCK);

  ChildSetup setup;
  setup.arguments = {executable, "--version"};
  setup.output = input.Get();
  setup.ownSession = true;
  Result<ChildProcess> child = ChildProcess::Start(setup);
  if (!child.ok()) return std::string();
  input.Reset();

  std::string answer = Listen(child.value, output.Get());
  if (!child.value.Wait(0)) child.value.Kill();
  if (child.value.ExitCode() != 0) return std::string();
  return answer.substr(0, answer.find_last_not_of("\r\n") + 1);
}

Command PosixGhostscripts::RunCommand(const std::string& executable, const std::string& parameterFile) {
  Command command;
  command.arguments = {executable, "@" + parameterFile};
  command.errorFile = parameterFile + ".err";
  command.line = '"' + executable + "\" \"@" + parameterFile + '"';
  return command;
}

}  // namespace tessary
