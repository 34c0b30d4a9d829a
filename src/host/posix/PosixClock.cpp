#include "host/posix/PosixClock.h"

#include <chrono>
#include <ctime>
#include <thread>

#include "host/posix/ChildProcess.h"

namespace tessary {

DateTime PosixClock::LocalTime() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

std::int64_t PosixClock::UnixTime() { return std::time(nullptr); }

std::int64_t PosixClock::Ticks() { return MonotonicMilliseconds(); }

void PosixClock::SleepFor(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace tessary
