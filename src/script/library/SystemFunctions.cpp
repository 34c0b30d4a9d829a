#include "script/library/Arguments.h"
#include "script/library/Library.h"
#include "script/library/Tables.h"

namespace tessary::script {
namespace {

constexpr std::int32_t kUsEnglish = 1033;
constexpr int kUnknownLocale = 447;

Value CreateObject(Context& context, Arguments arguments) {
  const std::string name = ToText(arguments[0]);
  const Ref<Object> object = CreateLibraryObject(context, name);
  if (!object) Raise(kCannotCreate, name);
  return Value::Of(object);
}

Value GetObject(Context&, Arguments) { Raise(kCannotCreate); }

// A script runs where nobody can be asked; hosts without a user answer so.
Value AskNobody(Context&, Arguments) { Raise(kPermissionDenied); }

Value LoadPicture(Context&, Arguments) { Raise(kNotSupported); }

Value GetLocale(Context&, Arguments) { return Value::Long(kUsEnglish); }

// The one locale may be set again; 0 is the default.
Value SetLocale(Context&, Arguments arguments) {
  const Value& wanted = arguments[0];
  const bool byName =
      wanted.Is(Type::String) && (SameName(wanted.string(), "en-us") || wanted.string().empty());
  if (!byName) {
    const std::int32_t number = wanted.Is(Type::String) ? -1 : ToLong(wanted);
    if (number != 0 && number != kUsEnglish) Raise(kUnknownLocale);
  }
  return Value::Long(kUsEnglish);
}

Value ScriptEngine(Context&, Arguments) { return Value::String("VBScript"); }

template <std::int32_t number>
Value Version(Context&, Arguments) {
  return Value::Long(number);
}

constexpr NativeFunction kFunctions[] = {
    {"CreateObject", 1, 2, CreateObject},
    {"GetLocale", 0, 0, GetLocale},
    {"GetObject", 0, 2, GetObject},
    {"InputBox", 1, 7, AskNobody},
    {"LoadPicture", 0, 1, LoadPicture},
    {"MsgBox", 1, 5, AskNobody},
    {"ScriptEngine", 0, 0, ScriptEngine},
    {"ScriptEngineBuildVersion", 0, 0, Version<16384>},
    {"ScriptEngineMajorVersion", 0, 0, Version<5>},
    {"ScriptEngineMinorVersion", 0, 0, Version<8>},
    {"SetLocale", 1, 1, SetLocale},
};

}  // namespace

FunctionTable SystemFunctions() { return kFunctions; }

}  // namespace tessary::script
