// The words of the language.
#pragma once

#include <cstdint>
#include <string_view>

#include "script/Value.h"

namespace tessary::script {

enum class TokenKind : std::uint8_t {
  End,      ///< of the text
  NewLine,  ///< or a colon
  Colon,
  Name,     ///< an identifier, or a keyword
  Literal,  ///< a number, string or date
  Symbol,
  Bad,  ///< what no token begins with; `error` says why
};

/// The reserved words, and those with a meaning in their place only (from Default on).
enum class Keyword : std::uint8_t {
  None,
  And,
  ByRef,
  ByVal,
  Call,
  Case,
  Class,
  Const,
  Dim,
  Do,
  Each,
  Else,
  ElseIf,
  Empty,
  End,
  Eqv,
  Exit,
  False,
  For,
  Function,
  GoTo,
  If,
  Imp,
  In,
  Is,
  Let,
  Loop,
  Me,
  Mod,
  New,
  Next,
  Not,
  Nothing,
  Null,
  On,
  Option,
  Or,
  Private,
  Public,
  ReDim,
  Resume,
  Select,
  Set,
  Stop,
  Sub,
  Then,
  To,
  True,
  Until,
  Wend,
  While,
  With,
  Xor,
  Default,
  Erase,
  Error,
  Explicit,
  Get,
  Preserve,
  Property,
  Step,
};

/// Symbols of one character are that character.
enum class Symbol : std::uint8_t { None, NotEqual = 1, LessOrEqual = 2, GreaterOrEqual = 3 };
constexpr Symbol SymbolOf(char character) noexcept { return static_cast<Symbol>(character); }

struct Token {
  TokenKind kind = TokenKind::End;
  Keyword keyword = Keyword::None;
  Symbol symbol = Symbol::None;
  bool spaceBefore = false;
  int line = 1;           ///< from 1
  int column = 0;         ///< from 0, in bytes
  int error = 0;          ///< of Bad
  std::string_view text;  ///< of Name, without brackets
  Value value;            ///< of Literal
};

}  // namespace tessary::script
