// What the engine takes of the library.
#pragma once

#include <span>
#include <string_view>

#include "script/NativeFunction.h"

namespace tessary::script {

/// All functions but Eval, Execute, ExecuteGlobal and GetRef, which belong to the engine.
std::span<const NativeFunction> LibraryFunctions();

/// vbCrLf, vbString, …
std::span<const NamedConstant> LibraryConstants();

/// What CreateObject gives for a class such as "Scripting.Dictionary", in any case; null if there is none of
/// that name.
Ref<Object> CreateLibraryObject(Context& context, std::string_view className);

/// What New gives for a class that the script itself does not declare: RegExp, in any case. Null for others.
Ref<Object> NewLibraryObject(Context& context, std::string_view className);

}  // namespace tessary::script
