// Errors of the macro language, with the numbers and texts that its users know.
#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace tessary::script {

/// An error on its way to the nearest On Error Resume Next or out of the engine.
class ScriptError : public std::exception {
 public:
  ScriptError(int number_, std::string description_, std::string source_ = {})
      : number(number_), description(std::move(description_)), source(std::move(source_)) {}
  [[nodiscard]] const char* what() const noexcept override { return description.c_str(); }
  /// The description with the detail, as in "Variable is undefined: 'x'".
  [[nodiscard]] std::string Message() const {
    return detail.empty() ? description : description + ": '" + detail + "'";
  }

  int number;
  std::string description;
  std::string detail;  ///< the name that the error is about; not part of Err.Description
  std::string source;  ///< empty: the engine fills in the one that fits the number
  std::string helpFile;
  int helpContext = 0;
  /// Where it happened, filled in by the engine; line 0 as long as that is not known.
  int line = 0;        ///< from 1
  int column = 0;      ///< from 0, in bytes
  std::string text;    ///< the source line
  std::string origin;  ///< the name given with the source code, such as a file's
};

/// Thrown by WScript.Quit, through all of the script and out of the engine.
struct Quit {
  int code = 0;
};

/// The text of an error number, "Unknown runtime error" if the language knows none.
std::string_view ErrorText(int number);

/// Raises an error with its text, and a detail such as the name of the variable that is undefined.
[[noreturn]] void Raise(int number);
[[noreturn]] void Raise(int number, std::string_view detail);

// The numbers that code names.
inline constexpr int kInvalidCall = 5;          ///< Invalid procedure call or argument
inline constexpr int kOverflow = 6;             ///< Overflow
inline constexpr int kOutOfMemory = 7;          ///< Out of memory
inline constexpr int kSubscript = 9;            ///< Subscript out of range
inline constexpr int kArrayLocked = 10;         ///< This array is fixed or temporarily locked
inline constexpr int kDivisionByZero = 11;      ///< Division by zero
inline constexpr int kTypeMismatch = 13;        ///< Type mismatch
inline constexpr int kOutOfStack = 28;          ///< Out of stack space
inline constexpr int kFileNotFound = 53;        ///< File not found
inline constexpr int kFileExists = 58;          ///< File already exists
inline constexpr int kInputPastEnd = 62;        ///< Input past end of file
inline constexpr int kPermissionDenied = 70;    ///< Permission denied
inline constexpr int kPathNotFound = 76;        ///< Path not found
inline constexpr int kObjectNotSet = 91;        ///< Object variable not set
inline constexpr int kForNotInitialized = 92;   ///< For loop not initialized
inline constexpr int kInvalidNull = 94;         ///< Invalid use of Null
inline constexpr int kObjectRequired = 424;     ///< Object required
inline constexpr int kCannotCreate = 429;       ///< ActiveX component can't create object
inline constexpr int kNoSuchMember = 438;       ///< Object doesn't support this property or method
inline constexpr int kNotSupported = 445;       ///< Object doesn't support this action
inline constexpr int kWrongArguments = 450;     ///< Wrong number of arguments or invalid property assignment
inline constexpr int kNotACollection = 451;     ///< Object not a collection
inline constexpr int kDuplicateKey = 457;       ///< This key is already associated with an element …
inline constexpr int kUndefinedVariable = 500;  ///< Variable is undefined
inline constexpr int kIllegalAssignment = 501;  ///< Illegal assignment
inline constexpr int kRegExpSyntax = 5017;      ///< Syntax error in regular expression

}  // namespace tessary::script
