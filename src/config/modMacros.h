// Macros in settings: `<name>` stands for a value of the job, of the machine, of the environment
// (`<env:NAME>`), or of an expression in the macro language (`<vbs:…>`) that may use the functions of the
// `.vbs` files in the folder "macros" of the program.
//
// What a macro gives is data and is not looked through again: a document's title that looks like a macro stays
// as it is.
#pragma once

#include <string>
#include <string_view>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// The macros that are offered to people: name to label, in the order of showing.
Dictionary GetMacroList(Run& run);

/// `text` with every macro replaced; all of one text show the same time. What is no macro stays as it is, its
/// angle brackets included. With `makeFileSafe` names and titles are made fit for a file name (SafeFileName);
/// folders, environment values and script results never are. Raises what EvaluateMacroScript raises.
std::string ExpandMacros(Run& run, std::string_view text, bool makeFileSafe);

/// The replacement of one macro, given without its angle brackets.
std::string ExpandMacro(Run& run, const std::string& name, const DateTime& time, bool makeFileSafe);

/// The text of an expression's value. The first call starts the macro language and reads the macro files, in
/// the order of their names; of a file that holds the line "REM -- MACRO REGION BEGINS" only what follows it.
/// Raises kComponentMissing where there is no macro language, the language's own number with file, line and
/// position for a file that it does not accept, and its number and text for an expression that fails. After a
/// failed file the language stays, with the files before it.
std::string EvaluateMacroScript(Run& run, const std::string& expression);

/// `text` with the separators outside its macros in the machine's own form. Macros keep theirs: a "\" is an
/// operator of the macro language.
std::string NativeOutsideMacros(const PathStyle& style, std::string_view text);

}  // namespace tessary
