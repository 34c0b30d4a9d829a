// What is seen: message boxes, forms, the pickers of the platform, and the message queue behind them all.
#pragma once

#include <cstdint>
#include <string>

#include "host/Failure.h"

namespace tessary {

class Form;  // ui/Form.h; a machine shows it and knows no more of it

/// Values of message boxes, those of the Windows platform; a box takes a sum of them.
namespace box {
inline constexpr std::int32_t kOk = 0, kYesNoCancel = 3, kYesNo = 4, kRetryCancel = 5;               // buttons
inline constexpr std::int32_t kCritical = 16, kQuestion = 32, kExclamation = 48, kInformation = 64;  // icons
inline constexpr std::int32_t kForeground = 65536;
inline constexpr std::int32_t kAnswerOk = 1, kAnswerCancel = 2, kAnswerRetry = 4, kAnswerYes = 6, kAnswerNo = 7;
}  // namespace box

struct BoxAnswer {
  std::int32_t button = box::kAnswerOk;
  bool shown = true;  ///< false: nobody could see the box and the host answered for them
};

/// A question for the name of one file.
struct FilePicker {
  bool saves = false;  ///< for a file to write; nothing is asked about overwriting one
  std::string title;
  std::string filter;    ///< pairs of caption and pattern, all parted by "|": "PDF Documents (*.pdf)|*.pdf|"
  std::string folder;    ///< where it begins; empty: where `fileName` lies
  std::string fileName;  ///< the suggestion; may be empty or a pattern
  bool mustExist = false;
};

class Desktop {
 public:
  virtual ~Desktop() = default;
  /// Shows a message box and waits for its answer. Without a display the text goes to standard error and the
  /// answer is the harmless one of its buttons: OK, Cancel, No. `text` has CR LF line ends.
  virtual BoxAnswer ShowBox(const std::string& text, const std::string& caption, std::int32_t flags) = 0;
  /// Shows a form above all that is shown, and reports to it what the user does until it is unloaded. False:
  /// nobody could see it, and nothing was done with it.
  virtual bool ShowForm(Form& form) = 0;
  /// The full path of the chosen file. Fails with failures::kCancelled, with kInvalidFileName when the
  /// suggestion is no possible name, or with another number where no picker can be shown.
  virtual Result<std::string> PickFile(const FilePicker& picker) = 0;
  /// The chosen colour (red + 256 green + 65536 blue); `color` itself when the user cancelled or nobody was
  /// asked.
  virtual std::int32_t PickColor(const std::string& title, std::int32_t color) = 0;
  /// Handles what waits in the message queue and returns.
  virtual void PumpMessages() = 0;
};

}  // namespace tessary
