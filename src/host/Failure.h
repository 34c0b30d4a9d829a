// How the machine reports a failure: as a value with a number and a text, never as an exception.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace tessary {

/// Numbers of file failures, those of the Windows run-time that the settings, the log and the delivery are
/// written for. Every host maps its own codes onto them.
namespace failures {
inline constexpr std::int32_t kBadFileName = 52;
inline constexpr std::int32_t kFileNotFound = 53;
inline constexpr std::int32_t kDeviceIo = 57;  ///< also every code that has no number of its own
inline constexpr std::int32_t kFileExists = 58;
inline constexpr std::int32_t kDiskFull = 61;
inline constexpr std::int32_t kTooManyFiles = 67;  ///< no free file handle
inline constexpr std::int32_t kPermissionDenied = 70;
inline constexpr std::int32_t kPathFileAccess = 75;  ///< locked, read-only or forbidden: worth another try
inline constexpr std::int32_t kPathNotFound = 76;
inline constexpr std::int32_t kComponentMissing = 429;
inline constexpr std::int32_t kInvalidFileName = 20477;  ///< a picker's suggestion
inline constexpr std::int32_t kCancelled = 32755;        ///< a picker was closed without a choice
}  // namespace failures

/// The outcome of a call: `number` 0 means that it worked, and `text` is empty then.
struct Failure {
  std::int32_t number = 0;
  std::string text;  ///< the platform's own words, one line, for people

  explicit operator bool() const { return number != 0; }
};

/// A value, or the failure that stands in its place. `value` is default-made when `failure` is set.
template <class T>
struct Result {
  T value{};
  Failure failure;

  Result() = default;
  Result(T v) : value(std::move(v)) {}          // NOLINT(google-explicit-constructor)
  Result(Failure f) : failure(std::move(f)) {}  // NOLINT(google-explicit-constructor)
  [[nodiscard]] bool ok() const { return failure.number == 0; }
};

}  // namespace tessary
