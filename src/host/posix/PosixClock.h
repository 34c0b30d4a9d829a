// The clocks of this machine.
#pragma once

#include "host/Clock.h"

namespace tessary {

class PosixClock final : public Clock {
 public:
  DateTime LocalTime() override;
  std::int64_t UnixTime() override;
  std::int64_t Ticks() override;
  void SleepFor(int milliseconds) override;
};

}  // namespace tessary
