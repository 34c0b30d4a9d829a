// How library functions are written and found.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "script/Object.h"
#include "script/Services.h"
#include "script/Value.h"

namespace tessary::script {

/// What a native function or member gets of the engine that runs it.
class Context {
 public:
  virtual ~Context() = default;
  virtual Services& services() = 0;
  /// The value itself, or for an object the value of its default member (again, until it is no object). Raises
  /// 91 for Nothing, 438 if there is no default member.
  virtual Value Plain(const Value& value) = 0;
  /// Calls what GetRef gave, or an object's default member.
  virtual Value Call(const Value& procedure, std::span<Value> arguments) = 0;

  std::uint32_t randomState = 0x50000;  ///< where the sequence of Rnd stands
};

/// A function of the library. Arguments arrive as plain values: no references, and, unless `takesObjects`, no
/// objects: an object is replaced by the value of its default member before the call.
struct NativeFunction {
  std::string_view name;
  int minArguments;
  int maxArguments;  ///< -1: any number
  Value (*call)(Context& context, std::span<Value> arguments);
  bool takesObjects = false;
};

struct NamedConstant {
  std::string_view name;
  Value value;
};

}  // namespace tessary::script
