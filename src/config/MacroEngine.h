// What the macros need of the language that they are written in.
//
// All texts are UTF-8. An engine keeps what its scripts did: variables that one expression leaves behind are
// there for the next.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "config/Dictionary.h"
#include "host/Failure.h"

namespace tessary {

/// Why source code was not accepted.
struct MacroSourceError {
  std::int32_t number = 0;
  std::string description;
  std::int32_t line = 0;    ///< counted from 1
  std::int32_t column = 0;  ///< counted from 0
  std::string text;         ///< the line itself
};

class MacroEngine {
 public:
  virtual ~MacroEngine() = default;
  /// Makes `items` known to all scripts under `name`.
  virtual void AddObject(const std::string& name, std::shared_ptr<Dictionary> items) = 0;
  /// Reads source code and runs what stands outside its functions. Nothing on success.
  virtual std::optional<MacroSourceError> AddCode(const std::string& source) = 0;
  /// The value of `expression` as text, empty where it has no text form; or the error that it ended in.
  virtual Result<std::string> Evaluate(const std::string& expression) = 0;
};

/// Makes an engine of the macro language.
using MacroEngineFactory = std::function<std::unique_ptr<MacroEngine>()>;

}  // namespace tessary
