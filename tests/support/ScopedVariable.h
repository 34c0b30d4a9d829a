// An environment variable that has another value for as long as the object lives.
#pragma once

#include <optional>
#include <stdlib.h>
#include <string>

namespace tessary {

class ScopedVariable {
 public:
  ScopedVariable(const char* name, const std::string& value) : name_(name) {
    if (const char* old = getenv(name)) old_ = old;
    setenv(name, value.c_str(), 1);
  }
  ~ScopedVariable() { old_ ? setenv(name_, old_->c_str(), 1) : unsetenv(name_); }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  const char* name_;
  std::optional<std::string> old_;
};

}  // namespace tessary
