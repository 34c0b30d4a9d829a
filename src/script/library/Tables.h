// The tables of library functions, one for each file of them.
#pragma once

#include <span>

#include "script/NativeFunction.h"

namespace tessary::script {

using FunctionTable = std::span<const NativeFunction>;

FunctionTable ArrayFunctions();       ///< Array, Filter, Join, LBound, Split, UBound
FunctionTable CharacterFunctions();   ///< Asc, Chr, Escape, … and those that count bytes
FunctionTable ConversionFunctions();  ///< CInt, …; IsNumeric, …; TypeName, VarType
FunctionTable DateFunctions();        ///< dates and times, and their parts
FunctionTable FormatFunctions();      ///< FormatNumber, …; MonthName, WeekdayName
FunctionTable NumberFunctions();      ///< Abs, …; Hex, Oct; Rnd
FunctionTable StringFunctions();      ///< Left, Mid, …; InStr, Replace, StrComp
FunctionTable SystemFunctions();      ///< CreateObject, MsgBox, ScriptEngine, …

}  // namespace tessary::script
