// What is seen: message boxes and the message queue behind everything that is shown.
#pragma once

#include <cstdint>
#include <string>

namespace tessary {

/// Values of message boxes, those of the Windows platform; a box takes a sum of them.
namespace box {
inline constexpr std::int32_t kOk = 0, kRetryCancel = 5, kYesNo = 4;                                 // buttons
inline constexpr std::int32_t kCritical = 16, kQuestion = 32, kExclamation = 48, kInformation = 64;  // icons
inline constexpr std::int32_t kForeground = 65536;
inline constexpr std::int32_t kAnswerOk = 1, kAnswerCancel = 2, kAnswerRetry = 4, kAnswerYes = 6, kAnswerNo = 7;
}  // namespace box

struct BoxAnswer {
  std::int32_t button = box::kAnswerOk;
  bool shown = true;  ///< false: nobody could see the box and the host answered for them
};

class Desktop {
 public:
  virtual ~Desktop() = default;
  /// Shows a message box and waits for its answer. Without a display the text goes to standard error and the
  /// answer is the harmless one of its buttons: OK, Cancel, No. `text` has CR LF line ends.
  virtual BoxAnswer ShowBox(const std::string& text, const std::string& caption, std::int32_t flags) = 0;
  /// Handles what waits in the message queue and returns.
  virtual void PumpMessages() = 0;
};

}  // namespace tessary
