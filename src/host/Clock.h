// The clocks of a machine.
#pragma once

#include <cstdint>

namespace tessary {

struct DateTime {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;  ///< month and day count from 1
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime LocalTime() = 0;
  /// Seconds since 1970-01-01 UTC, the scale of FileInfo::modified.
  virtual std::int64_t UnixTime() = 0;
  /// Milliseconds since some moment; never goes back and does not follow changes of the date.
  virtual std::int64_t Ticks() = 0;
  virtual void SleepFor(int milliseconds) = 0;
};

}  // namespace tessary
