// Reference counting for what scripts share: strings, arrays, objects. One thread; nothing is atomic.
#pragma once

#include <cstdint>
#include <utility>

namespace tessary::script {

/// Base of everything that is counted. It ends with its last reference, at that very moment, which is what
/// makes Class_Terminate predictable. Long chains (a list of a million linked objects) end without deep
/// recursion: from kMaxReleaseDepth on, the rest of the chain waits until the objects above it are gone.
class Counted {
 public:
  Counted() = default;
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  virtual ~Counted() = default;

  void AddReference() noexcept { ++references_; }
  void Release() noexcept {
    if (--references_ == 0) End();
  }
  [[nodiscard]] std::uint32_t references() const noexcept { return references_; }

 protected:
  /// Called when the last reference is gone, before the destructor. May make new references that stay: the
  /// object then lives on. Must not throw.
  virtual void LastReferenceGone() noexcept {}

 private:
  void End() noexcept;
  void Finish() noexcept;

  std::uint32_t references_ = 0;
  Counted* nextWaiting_ = nullptr;
};

/// How many counted things may end within each other before the rest waits.
inline constexpr int kMaxReleaseDepth = 100;

/// A counted pointer; may be null.
template <typename T>
class Ref {
 public:
  Ref() noexcept = default;
  Ref(T* target) noexcept : target_(target) {  // NOLINT(google-explicit-constructor)
    if (target_) target_->AddReference();
  }
  Ref(const Ref& other) noexcept : Ref(other.target_) {}
  Ref(Ref&& other) noexcept : target_(std::exchange(other.target_, nullptr)) {}
  template <typename U>
  Ref(const Ref<U>& other) noexcept : Ref(other.get()) {}  // NOLINT(google-explicit-constructor)
  ~Ref() {
    if (target_) target_->Release();
  }
  Ref& operator=(Ref other) noexcept {
    std::swap(target_, other.target_);
    return *this;
  }

  [[nodiscard]] T* get() const noexcept { return target_; }
  T* operator->() const noexcept { return target_; }
  T& operator*() const noexcept { return *target_; }
  explicit operator bool() const noexcept { return target_ != nullptr; }
  /// Gives up the pointer without releasing the reference.
  T* Detach() noexcept { return std::exchange(target_, nullptr); }

 private:
  T* target_ = nullptr;
};

template <typename T, typename... Arguments>
Ref<T> Make(Arguments&&... arguments) {
  return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace tessary::script
