// Ownership of a file descriptor, and system calls begun anew when a signal breaks them off.
#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace tessary {

/// Closes its descriptor when it goes. -1 is none.
class UniqueFd {
 public:
  UniqueFd() = default;
  explicit UniqueFd(int fd) : fd_(fd) {}
  ~UniqueFd() { Reset(); }
  UniqueFd(UniqueFd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  UniqueFd& operator=(UniqueFd&& other) noexcept {
    Reset();
    fd_ = std::exchange(other.fd_, -1);
    return *this;
  }

  [[nodiscard]] int Get() const { return fd_; }
  explicit operator bool() const { return fd_ >= 0; }

  /// Closes early. False if that failed, with errno set; the descriptor is gone all the same.
  bool Reset() {
    const int fd = std::exchange(fd_, -1);
    return fd < 0 || close(fd) == 0 || errno == EINTR;
  }

 private:
  int fd_ = -1;
};

/// The result of `call()`, called again as long as it gives -1 because of a signal.
template <class Call>
auto Restarted(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

}  // namespace tessary
