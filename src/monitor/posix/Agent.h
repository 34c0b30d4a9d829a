// The agent of a desktop session: runs `gui` there for the jobs of its user, one after the other.
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <optional>
#include <string>

#include "monitor/posix/AgentSocket.h"
#include "monitor/posix/GuiProcess.h"

namespace tessary {

/// Serves on one thread and sleeps until something happens.
class Agent {
 public:
  struct Parts {
    UniqueFd listener;               ///< of ListenInFolder
    int stop = -1;                   ///< a descriptor that is readable when it is time to end
    std::function<bool()> isUseful;  ///< asked before each job, and when somebody wants to know
    std::function<void(const std::string& line)> log;
  };
  Agent(Run& run, Parts parts) : run_(run), parts_(std::move(parts)) {}

  /// Runs jobs until it is told to stop, or is of no use any more. The job under way is ended then, with its
  /// temporary files, and all jobs are given back.
  void Serve();

 private:
  struct Client {
    UniqueFd socket;
    std::int64_t deadline = 0;  ///< when it must have said what it wants, by MonotonicMilliseconds
    GuiJob job;
  };
  using Clients = std::list<Client>;

  void Step();
  void Admit();
  /// What a newcomer says; it leaves the newcomers.
  void TakeRequest(Clients::iterator newcomer);
  void StartNext();
  void FinishCurrent();
  void KillCurrent();

  Run& run_;
  Parts parts_;
  bool over_ = false;
  Clients newcomers_;  ///< have not said yet what they want
  Clients queue_;      ///< `gui_`, when there is one, has the job of the first
  std::optional<GuiProcess> gui_;
};

}  // namespace tessary
