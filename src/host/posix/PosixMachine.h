// This machine: the host for Linux.
#pragma once

#include <memory>

#include "host/Host.h"

namespace tessary {

/// What is seen, where that is more than the terminal.
struct Display {
  Desktop& desktop;
  NotificationArea& notificationArea;
  WindowManager& windowManager;
};

/// Owns the interfaces of this machine. Nothing is loaded or looked up before it is asked for.
class PosixMachine {
 public:
  /// Takes the arguments of main(): the raw command line is put together from them so that every value reads
  /// back, but for blanks at its ends. `display` shows what is to be seen, and outlives this object; without
  /// one it goes to the terminal.
  PosixMachine(int argc, const char* const* argv, const Display* display = nullptr);
  ~PosixMachine();
  PosixMachine(const PosixMachine&) = delete;
  PosixMachine& operator=(const PosixMachine&) = delete;

  /// Valid as long as this object.
  [[nodiscard]] Host& host();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace tessary
