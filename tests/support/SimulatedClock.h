// A clock that only waits and tests move, with things that happen at a moment.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

#include "host/Clock.h"

namespace tessary {

class SimulatedClock : public Clock {
 public:
  /// The date and time at Ticks() == 0, in seconds since 1970 (UTC, which is also the local time here):
  /// 2026-03-02 10:00:00.
  std::int64_t startTime = 1772445600;

  /// Runs `event` when `milliseconds` from now have passed; events of one moment run in the order of their
  /// making.
  void After(std::int64_t milliseconds, std::function<void()> event) {
    events_.emplace(now_ + milliseconds, std::move(event));
  }

  /// Lets time pass, the events that fall due included. 0 runs those that are due now.
  void Advance(std::int64_t milliseconds) {
    const std::int64_t target = now_ + milliseconds;
    while (!events_.empty() && events_.begin()->first <= target) {
      auto node = events_.extract(events_.begin());
      now_ = std::max(now_, node.key());
      node.mapped()();
    }
    now_ = std::max(now_, target);
  }

  /// Milliseconds until the next event, if there is one.
  [[nodiscard]] std::optional<std::int64_t> UntilNextEvent() const {
    if (events_.empty()) return std::nullopt;
    return events_.begin()->first - now_;
  }

  DateTime LocalTime() override {
    using namespace std::chrono;
    const sys_seconds time{seconds{UnixTime()}};
    const auto day = floor<days>(time);
    const year_month_day date{day};
    const hh_mm_ss clock{time - day};
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(clock.hours().count()),
            static_cast<int>(clock.minutes().count()),
            static_cast<int>(clock.seconds().count())};
  }
  std::int64_t UnixTime() override { return startTime + now_ / 1000; }
  std::int64_t Ticks() override { return now_; }
  void SleepFor(int milliseconds) override { Advance(milliseconds); }

 private:
  std::int64_t now_ = 0;
  std::multimap<std::int64_t, std::function<void()>> events_;
};

}  // namespace tessary
