// From tokens to instructions, in one pass; names are bound when the procedure or class around them ends,
// because a Dim counts for its whole procedure and a member for its whole class.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "script/Code.h"
#include "script/Names.h"
#include "script/Operators.h"
#include "script/Token.h"

namespace tessary::script {

/// How deep parentheses and blocks may be nested: the compiler recurses, and a text of a million brackets must
/// end in error 1001 instead of the process.
inline constexpr int kMaxNesting = 400;

/// Where the text runs.
enum class CompileMode {
  Global,  ///< on its own: its variables are global
  Local,   ///< inside a procedure that runs: names are looked up there first
};

/// The compiler of one text. Every syntax error is thrown as a ScriptError with its place.
class Compiler {
 public:
  Compiler(Names& names, Ref<Source> source, CompileMode mode, bool explicitNames);
  Unit CompileScript();
  /// The text is one expression; its value is what the code returns.
  Unit CompileExpression();

 private:
  // What Exit and a premature jump have to leave.
  enum class BlockKind { Plain, For, Do, With };
  struct Block {
    BlockKind kind = BlockKind::Plain;
    int slot = -1;           // cleared on leaving, if not negative
    std::vector<int> exits;  // jumps to patch
  };

  // A procedure under construction.
  struct Scope {
    Ref<Code> code;
    std::unordered_map<NameId, int> slots;
    std::unordered_map<NameId, int> fallbacks;  // slots of names that may turn out to be global
    std::unordered_map<NameId, Value> constants;
    std::vector<Block> blocks;
    int height = 0;
  };

  // The last link of a chain such as a.b(1).c, not emitted yet: it may be read, called or assigned to.
  struct Link {
    enum class Kind { Name, Member, Index, Value } kind = Kind::Value;
    NameId name = 0;
    int count = 0;
    bool parentheses = false;
    // The state before the parentheses, for reading them again as the first argument of a call without any.
    std::size_t tokenBefore = 0;
    std::size_t codeBefore = 0;
    int heightBefore = 0;
  };

  enum class OperandKind { Computed, Literal };

  // Tokens: Compiler.cpp.
  const Token& Current() const { return tokens_[at_]; }
  const Token& Ahead(std::size_t distance = 1) const;
  void Advance();
  bool IsKeyword(Keyword keyword) const;
  bool IsSymbol(char symbol) const;
  bool IsStatementEnd() const;
  bool AcceptKeyword(Keyword keyword);
  bool AcceptSymbol(char symbol);
  void Expect(Keyword keyword, int error);
  void ExpectSymbol(char symbol, int error);
  void ExpectStatementEnd();
  NameId ExpectName();
  bool IsName() const;
  void SkipSeparators();
  [[noreturn]] void Fail(int error) const;
  [[noreturn]] void FailAt(int error, const Token& token) const;

  // Emitting: Compiler.cpp.
  Code& code() { return *scope_->code; }
  int Emit(Instruction instruction, int effect);
  int EmitConstant(Value value);
  int EmitNamed(Op op, NameId name, int count, std::uint8_t flags, int effect);
  int Here() const { return static_cast<int>(scope_->code->instructions.size()); }
  void Patch(int instruction) { code().instructions[static_cast<std::size_t>(instruction)].a = Here(); }
  void PatchAll(const std::vector<int>& instructions);
  void Truncate(std::size_t size, int height);
  void Mark();
  int NewHiddenSlot(int count = 1);
  void Resolve(Scope& scope, ClassType* owner);
  void Bind(Scope& scope, ClassType* owner, Instruction& instruction);
  void BindConstant(Scope& scope, const Value& value, Instruction& instruction);

  // Expressions: CompilerExpressions.cpp.
  OperandKind Expression(int minLevel = 1);
  OperandKind Continue(OperandKind left, int minLevel);
  OperandKind Prefix();
  OperandKind Primary();
  Link Chain(Link link, bool statement);
  Link ChainStart();
  void ExtendByParentheses(Link& link);
  void EmitLoad(const Link& link, std::uint8_t flags = 0);
  void EmitReference(const Link& link);
  void EmitStore(const Link& link, bool isSet);
  int Arguments(bool parentheses);
  void Argument();
  bool StartsChain() const;
  bool StartsArgument() const;
  int WithSlot() const;
  void New();

  // Statements: CompilerStatements.cpp.
  void Statements();
  void OneStatement();
  void KeywordStatement(Keyword keyword);
  bool AtBlockEnd() const;
  [[noreturn]] void FailBlockEnd(int expected) const;
  bool IsOpen(BlockKind kind) const;
  void RequireTopLevel() const;
  void NameStatement();
  void CallWithoutParentheses(Link& link);
  void Assignment(const Link& link, bool isSet);
  bool AppendAssignment(const Link& link);
  void LetStatement();
  void SetStatement();
  void CallStatement();
  void OnErrorStatement();
  void OptionStatement();
  void ExitStatement();
  void ExitBlock(BlockKind kind);
  void EraseStatement();
  void ReDimStatement();

  // Blocks: CompilerBlocks.cpp.
  void IfStatement();
  void SingleLineIf(int skip);
  void SingleLineBranch();
  void BlockIf(int skip);
  void SelectStatement();
  void CaseClause(int slot, bool literal, std::vector<int>& exits);
  void ForStatement();
  void ForLoop();
  void ForEachLoop();
  void DoStatement();
  void LoopCondition(bool isRepeat, int top);
  void WhileStatement();
  void WithStatement();
  void EmitSlot(Op op, int slot, int effect);
  int EmitJump(Op op, int effect, int target = -1);
  void OpenBlock(BlockKind kind, int slot = -1);
  void CloseBlock();

  // Declarations: CompilerDeclarations.cpp.
  void DimStatement();
  void DeclareVariables(bool isPublic);
  void DeclareVariable(bool isPublic);
  std::optional<FixedArray> ArrayShape();
  void ConstStatement();
  Value ConstantValue();
  void VisibilityStatement();
  void Procedure(bool isPublic, bool isDefault);
  void PropertyProcedure(bool isPublic, bool isDefault);
  Ref<Code> ReadProcedure(Code::Kind kind, NameId name, Keyword end, int endError);
  void Parameters(Code& procedure);
  void ClassStatement();
  void ClassMember();
  void AddMethod(const Ref<Code>& procedure, const Token& place, bool isPublic, bool isDefault);
  int NewMember(NameId name, bool isPublic, const Token& place);
  void CheckProperty(const ClassType::Member& member, const Token& place) const;
  void DeclareGlobal(NameId name, const Token& place);
  void DeclareLocal(NameId name, const Token& place);

  Names& names_;
  Ref<Source> source_;
  CompileMode mode_;
  bool explicit_;
  std::vector<Token> tokens_;
  std::size_t at_ = 0;
  int nesting_ = 0;
  Unit unit_;
  Scope mainScope_;
  Scope* scope_ = &mainScope_;
  std::unordered_set<NameId> globals_;  // what this text declares outside of procedures
  Ref<ClassType> class_;                // the class under construction
  std::vector<Scope> methods_;          // its methods, bound at its end
  int singleLineIfs_ = 0;               // how many are open
  bool sawStatement_ = false;

  friend class Nesting;
};

/// Counts one level of nesting while it lives.
class Nesting {
 public:
  explicit Nesting(Compiler& compiler) : compiler_(compiler) {
    if (++compiler_.nesting_ > kMaxNesting) compiler_.Fail(1001);
  }
  ~Nesting() { --compiler_.nesting_; }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;

 private:
  Compiler& compiler_;
};

}  // namespace tessary::script
