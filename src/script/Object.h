// Objects that scripts use: those of the library, those of the program, and instances of a script's own
// classes.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "script/ScriptError.h"
#include "script/Value.h"

namespace tessary::script {

class Context;

/// A walk through the items of a collection, for For Each.
class Enumerator {
 public:
  virtual ~Enumerator() = default;
  /// The next item in `item`; false behind the last one.
  virtual bool Next(Value& item) = 0;
};

/// Members are named as the script wrote them, in any case; the empty name asks for the default member.
/// Arguments are plain values (never references); a left-out one is Value::Missing().
class Object : public Counted {
 public:
  /// What TypeName says.
  [[nodiscard]] virtual std::string ClassName() const = 0;
  /// Reads a property or calls a method. Raises kNoSuchMember (438) for one that does not exist,
  /// kWrongArguments (450) for a wrong number of arguments.
  virtual Value Get(Context& context, std::string_view member, std::span<Value> arguments) = 0;
  /// Assigns to a property, by Set if `isSet`. Raises like Get.
  virtual void Put(Context& context, std::string_view member, std::span<Value> arguments, const Value& value,
                   bool isSet) = 0;
  /// For Each. Raises kNotACollection (451) if the object holds no items, which is the default.
  virtual std::unique_ptr<Enumerator> Enumerate(Context& context);
};

/// A member of a native object. `get` reads the property or calls the method, `put` assigns; either may be
/// null.
struct Member {
  std::string_view name;
  int minArguments = 0;
  int maxArguments = 0;  ///< -1: any number
  Value (*get)(Object& self, Context& context, std::span<Value> arguments) = nullptr;
  void (*put)(Object& self, Context& context, std::span<Value> arguments, const Value& value,
              bool isSet) = nullptr;
};

/// An object whose members stand in a table; its first entry is the default member (a nameless first entry:
/// none).
class NativeObject : public Object {
 public:
  Value Get(Context& context, std::string_view member, std::span<Value> arguments) override;
  void Put(Context& context, std::string_view member, std::span<Value> arguments, const Value& value,
           bool isSet) override;

 protected:
  [[nodiscard]] virtual std::span<const Member> Members() const = 0;

 private:
  [[nodiscard]] const Member& FindMember(std::string_view name) const;
};

inline Object* Value::object() const noexcept { return static_cast<Object*>(payload_.counted); }

/// True if both are the same but for the case of ASCII letters.
bool SameName(std::string_view left, std::string_view right) noexcept;

}  // namespace tessary::script
