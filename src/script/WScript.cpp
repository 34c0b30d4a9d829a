#include "script/WScript.h"

#include <array>

#include "script/Conversions.h"
#include "script/NativeFunction.h"
#include "script/library/Library.h"

namespace tessary::script {

namespace {

// The arguments as one line, parted by blanks.
Value Echo(Object&, Context& context, std::span<Value> arguments) {
  std::string line;
  for (const Value& argument : arguments) {
    if (&argument != &arguments.front()) line += ' ';
    const Value plain = context.Plain(argument);
    if (!plain.Is(Type::Null)) line += ToText(plain);
  }
  if (context.services().echo) context.services().echo(line);
  return {};
}

[[noreturn]] Value QuitNow(Object&, Context& context, std::span<Value> arguments) {
  throw Quit{arguments.empty() ? 0 : ToLong(context.Plain(arguments[0]))};
}

Value Create(Object&, Context& context, std::span<Value> arguments) {
  const std::string className = ToText(context.Plain(arguments[0]));
  const Ref<Object> object = CreateLibraryObject(context, className);
  if (!object) Raise(kCannotCreate, className);
  return Value::Of(object);
}

Value ScriptFullName(Object& self, Context&, std::span<Value>) {
  return Value::String(static_cast<WScriptObject&>(self).scriptFile());
}

Value ScriptName(Object& self, Context&, std::span<Value>) {
  const std::string& file = static_cast<WScriptObject&>(self).scriptFile();
  return Value::String(file.substr(file.find_last_of("/\\") + 1));
}

constexpr std::array kMembers = std::to_array<Member>({
    {"", 0, 0, nullptr, nullptr},
    {"Echo", 0, -1, Echo, nullptr},
    {"Quit", 0, 1, QuitNow, nullptr},
    {"CreateObject", 1, 2, Create, nullptr},
    {"ScriptFullName", 0, 0, ScriptFullName, nullptr},
    {"ScriptName", 0, 0, ScriptName, nullptr},
});

}  // namespace

std::span<const Member> WScriptObject::Members() const { return kMembers; }

}  // namespace tessary::script
