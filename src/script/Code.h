// Compiled source: instructions for a stack machine, and the classes that the source declares.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "script/Counted.h"
#include "script/Names.h"
#include "script/Value.h"

namespace tessary::script {

/// In the comments, the stack before the instruction stands in brackets, its top last; `count` arguments as
/// "args".
enum class Op : std::uint8_t {
  Constant,       ///< push constants[a]
  Load,           ///< push the variable, or what the function gives
  LoadReference,  ///< the same for an argument: push a reference if it is a variable
  Call,           ///< [args] push an element of the array variable, or call the procedure
  CallReference,  ///< the same for an argument: a reference to the element
  Store,          ///< [value] name = value; kSet for Set
  StoreIndexed,   ///< [args value] name(args) = value
  Append,         ///< [old tail] name = name & tail, in place where `old` still is its content
  Member,         ///< [object args] push object.member(args); the member's name in a
  StoreMember,    ///< [object args value] object.member(args) = value
  Index,          ///< [base args] push base(args)
  StoreIndex,     ///< [base args value] base(args) = value
  Plain,          ///< [value] push the default value of an object
  New,            ///< push a new instance of the class named by a
  Me,
  Negate,
  Not,
  Add,
  Subtract,
  Multiply,
  Divide,
  IntegerDivide,
  Modulo,
  Power,
  Concatenate,
  And,
  Or,
  Xor,
  Eqv,
  Imp,
  Compare,  ///< Comparison in a, Literal in b
  Is,
  Jump,         ///< to a
  JumpIfFalse,  ///< [condition] to a
  JumpIfTrue,   ///< [condition] to a
  CaseJump,     ///< [subject test] to a if equal; Literal in b
  ForPrepare,   ///< [start limit step] keeps limit and step in the slots count and count + 1, leaves the start
  ForTest,      ///< [counter] to a if beyond the limit
  ForNext,      ///< counts the variable on and jumps to b of the following instruction if within the limit
  Operands,     ///< not run: slot in a and target in b of the instruction before
  EachPrepare,  ///< [collection] keeps a walk in slot a
  EachNext,     ///< push the next item of the walk in slot a, or jump to b
  WithPrepare,  ///< [object] keeps it in slot a
  ClearSlot,    ///< slot a
  ReDim,        ///< [bounds] gives the variable a new array; kPreserve keeps elements
  Erase,        ///< [reference]
  OnErrorResumeNext,
  OnErrorGoTo0,
  Return,
  Fail,  ///< raise the error a about the name b
};

/// Where a name lives, decided when the whole procedure and class have been read.
enum class Space : std::uint8_t {
  Unresolved,
  Local,    ///< slot a
  Field,    ///< field a of the instance
  Method,   ///< member a of the instance's class
  Global,   ///< name a among the globals; inside a procedure slot b if there is no such global
  Dynamic,  ///< name a, looked up when it runs: text that Execute and Eval run inside a procedure
};

inline constexpr std::uint8_t kSet = 1;        ///< an assignment by Set
inline constexpr std::uint8_t kStatement = 2;  ///< nobody takes the result
inline constexpr std::uint8_t kPreserve = 4;
inline constexpr std::uint8_t kParentheses = 8;  ///< the name was followed by parentheses, perhaps empty ones
inline constexpr std::uint8_t kRaw = 16;         ///< the value is stored as it is, object or not

struct Instruction {
  Op op = Op::Return;
  Space space = Space::Unresolved;
  std::uint8_t flags = 0;
  std::int32_t count = 0;
  std::int32_t a = 0;
  std::int32_t b = -1;
};

/// A statement begins; after an error in it, On Error Resume Next goes on at `resume`, or if that is negative,
/// with the next statement. The operand stack is empty there.
struct Statement {
  std::int32_t start = 0;
  std::int32_t resume = -1;
  int line = 0;
  int column = 0;
};

struct Source : Counted {
  Source(std::string_view text_, std::string_view origin_) : text(text_), origin(origin_) {}
  /// The text of a line counted from 1.
  [[nodiscard]] std::string Line(int line) const;
  std::string text;
  std::string origin;
};

/// Dim name(bounds), done when the procedure begins.
struct FixedArray {
  std::int32_t place = 0;  ///< a slot, a field, or in main code a NameId
  bool dynamic = false;    ///< Dim name()
  std::vector<std::int32_t> bounds;
};

struct ClassType;

/// One procedure, property, or the text outside of them.
struct Code : Counted {
  enum class Kind : std::uint8_t { Main, Fragment, Sub, Function, PropertyGet, PropertyLet, PropertySet };

  Kind kind = Kind::Main;
  NameId name = 0;
  bool explicitNames = false;  ///< Option Explicit
  int parameterCount = 0;      ///< the first slots
  std::vector<bool> byValue;   ///< for each parameter
  int returnSlot = -1;         ///< of a function
  int maxStack = 0;            ///< operands at most
  std::vector<NameId> slots;   ///< their names, 0 for hidden ones
  int firstFallback = 0;       ///< from here on slots of names that were never declared
  std::vector<Instruction> instructions;
  std::vector<Value> constants;
  std::vector<Statement> statements;
  std::vector<FixedArray> arrays;
  Ref<Source> source;
  ClassType* owner = nullptr;  ///< the class, alive as long as its instances
};

/// A class of a script.
struct ClassType : Counted {
  struct Member {
    NameId name = 0;
    bool isPublic = true;
    int field = -1;  ///< a variable, if not negative
    Ref<Code> get;   ///< or a Sub, a Function
    Ref<Code> let;
    Ref<Code> set;
  };

  /// Null if there is no such member.
  const Member* Find(NameId member) const;

  NameId name = 0;
  std::vector<Member> members;
  std::unordered_map<NameId, int> index;
  std::vector<FixedArray> arrays;
  int fieldCount = 0;
  int defaultMember = -1;
  Ref<Code> initialize;
  Ref<Code> terminate;
};

/// What one piece of source text declares and does.
struct Unit {
  Ref<Code> main;
  std::vector<Ref<Code>> procedures;
  std::vector<Ref<ClassType>> classes;
  std::vector<NameId> variables;
  std::vector<std::pair<NameId, Value>> constants;
};

}  // namespace tessary::script
