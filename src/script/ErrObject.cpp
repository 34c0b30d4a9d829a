#include "script/ErrObject.h"

#include <array>

#include "script/Conversions.h"
#include "script/NativeFunction.h"

namespace tessary::script {

namespace {

constexpr std::uint32_t kFacilityMask = 0xFFFF0000U;
constexpr std::uint32_t kControlFacility = 0x800A0000U;

ErrObject& Self(Object& self) { return static_cast<ErrObject&>(self); }

template <std::string ErrObject::*field>
Value GetText(Object& self, Context&, std::span<Value>) {
  return Value::String(Self(self).*field);
}

template <std::string ErrObject::*field>
void PutText(Object& self, Context& context, std::span<Value>, const Value& value, bool) {
  Self(self).*field = ToText(context.Plain(value));
}

template <std::int32_t ErrObject::*field>
Value GetLong(Object& self, Context&, std::span<Value>) {
  return Value::Long(Self(self).*field);
}

template <std::int32_t ErrObject::*field>
void PutLong(Object& self, Context& context, std::span<Value>, const Value& value, bool) {
  Self(self).*field = ToLong(context.Plain(value));
}

Value Clear(Object& self, Context&, std::span<Value>) {
  Self(self).Clear();
  return {};
}

// Raise number, source, description, help file, help context
Value RaiseIt(Object&, Context& context, std::span<Value> arguments) {
  const auto text = [&](std::size_t index) {
    return index < arguments.size() && !arguments[index].IsMissing() ? ToText(context.Plain(arguments[index]))
                                                                     : std::string();
  };
  std::int32_t number = ToLong(context.Plain(arguments[0]));
  if (number == 0) Raise(kInvalidCall);
  const auto bits = static_cast<std::uint32_t>(number);
  if ((bits & kFacilityMask) == kControlFacility) number = static_cast<std::int32_t>(bits & ~kFacilityMask);
  if (number > 0xFFFF) Raise(kInvalidCall);
  ScriptError error(number, text(2), text(1));
  if (error.description.empty()) error.description = ErrorText(number);
  error.helpFile = text(3);
  if (arguments.size() > 4 && !arguments[4].IsMissing())
    error.helpContext = ToLong(context.Plain(arguments[4]));
  throw error;
}

constexpr std::array kMembers = std::to_array<Member>({
    {"Number", 0, 0, GetLong<&ErrObject::number>, PutLong<&ErrObject::number>},
    {"Description", 0, 0, GetText<&ErrObject::description>, PutText<&ErrObject::description>},
    {"Source", 0, 0, GetText<&ErrObject::source>, PutText<&ErrObject::source>},
    {"HelpFile", 0, 0, GetText<&ErrObject::helpFile>, PutText<&ErrObject::helpFile>},
    {"HelpContext", 0, 0, GetLong<&ErrObject::helpContext>, PutLong<&ErrObject::helpContext>},
    {"Clear", 0, 0, Clear, nullptr},
    {"Raise", 1, 5, RaiseIt, nullptr},
});

}  // namespace

std::span<const Member> ErrObject::Members() const { return kMembers; }

void ErrObject::Clear() {
  number = helpContext = 0;
  description.clear();
  source.clear();
  helpFile.clear();
}

void ErrObject::Set(const ScriptError& error) {
  number = error.number;
  description = error.description;
  source = error.source.empty() ? "Microsoft VBScript runtime error" : error.source;
  helpFile = error.helpFile;
  helpContext = error.helpContext;
}

}  // namespace tessary::script
