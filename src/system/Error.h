// The one exception of the logic.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

#include "host/Failure.h"

namespace tessary {

/// The program's own error numbers. Others are the platform's (host/Failure.h) or those of the run-time, below.
namespace errors {
inline constexpr std::int32_t kInvalidCall = 5;
inline constexpr std::int32_t kOverflow = 6;
inline constexpr std::int32_t kOutOfRange = 9;
inline constexpr std::int32_t kTypeMismatch = 13;
inline constexpr std::int32_t kKeyExists = 457;
inline constexpr std::int32_t kCommon = 1000;  ///< common failures of the helpers
inline constexpr std::int32_t kSettingsUnreadable = 1002;
inline constexpr std::int32_t kSettingsNotWritable = 1004;
inline constexpr std::int32_t kGhostscriptNotFound = 1005;
inline constexpr std::int32_t kPostScriptMissing = 1006;
inline constexpr std::int32_t kGhostscriptFailed = 1007;
inline constexpr std::int32_t kGhostscriptTimedOut = 1008;
inline constexpr std::int32_t kBackgroundUnusable = 1011;  ///< missing, or no PDF
inline constexpr std::int32_t kGhostscriptOld = 1012;
inline constexpr std::int32_t kPageTag = 1013;
}  // namespace errors

/// A failure on its way to the handler at the entry point. A wrapper that raises it again keeps the number and
/// puts its own words in front of the description, or its name in front of the source.
class Error : public std::exception {
 public:
  Error(std::int32_t number, std::string description, std::string source = {})
      : number_(number), description_(std::move(description)), source_(std::move(source)) {}
  explicit Error(const Failure& failure) : Error(failure.number, failure.text) {}

  [[nodiscard]] std::int32_t number() const { return number_; }
  [[nodiscard]] const std::string& description() const { return description_; }
  [[nodiscard]] const std::string& source() const { return source_; }
  [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::int32_t number_;
  std::string description_;
  std::string source_;
};

/// Raises `failure` as an Error if it is one.
inline void RaiseIf(const Failure& failure) {
  if (failure) throw Error(failure);
}

}  // namespace tessary
