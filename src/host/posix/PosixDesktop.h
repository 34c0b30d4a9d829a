// Message boxes of a machine without a display.
#pragma once

#include <functional>
#include <utility>

#include "host/Desktop.h"
#include "host/posix/Terminal.h"

namespace tessary {

class PosixDesktop final : public Desktop {
 public:
  /// `runQueue` handles what waits in the message queue; empty: nothing does.
  explicit PosixDesktop(std::function<void()> runQueue = {}) : runQueue_(std::move(runQueue)) {}

  /// Where the boxes go.
  Terminal& terminal() { return terminal_; }

  BoxAnswer ShowBox(const std::string& text, const std::string& caption, std::int32_t flags) override;
  bool ShowForm(Form&) override { return false; }
  Result<std::string> PickFile(const FilePicker&) override;
  std::int32_t PickColor(const std::string&, std::int32_t color) override { return color; }
  void PumpMessages() override {
    if (runQueue_) runQueue_();
  }

 private:
  Terminal terminal_;
  std::function<void()> runQueue_;
};

}  // namespace tessary
