#include "script/library/Library.h"

#include <vector>

#include "script/Conversions.h"
#include "script/library/Objects.h"
#include "script/library/Tables.h"

namespace tessary::script {
namespace {

struct LibraryClass {
  std::string_view name;
  Ref<Object> (*make)(Context& context);
};

constexpr LibraryClass kClasses[] = {
    {"Scripting.Dictionary", MakeDictionary},
    {"Scripting.FileSystemObject", MakeFileSystemObject},
    {"VBScript.RegExp", MakeRegExp},
    {"WScript.Shell", MakeShell},
};

}  // namespace

std::string TextArgument(Context& context, const Value& value) {
  const Value plain = context.Plain(value);
  if (plain.Is(Type::Null)) Raise(kTypeMismatch);
  return ToText(plain);
}

std::span<const NativeFunction> LibraryFunctions() {
  static const std::vector<NativeFunction> functions = [] {
    std::vector<NativeFunction> all;
    for (const FunctionTable table :
         {ArrayFunctions(), CharacterFunctions(), ConversionFunctions(), DateFunctions(), FormatFunctions(),
          NumberFunctions(), StringFunctions(), SystemFunctions()}) {
      all.insert(all.end(), table.begin(), table.end());
    }
    return all;
  }();
  return functions;
}

Ref<Object> CreateLibraryObject(Context& context, std::string_view className) {
  for (const LibraryClass& entry : kClasses) {
    if (SameName(entry.name, className)) return entry.make(context);
  }
  return {};
}

Ref<Object> NewLibraryObject(Context& context, std::string_view className) {
  return SameName(className, "RegExp") ? MakeRegExp(context) : Ref<Object>();
}

}  // namespace tessary::script
