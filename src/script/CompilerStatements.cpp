#include <algorithm>

#include "script/Compiler.h"
#include "script/Object.h"

namespace tessary::script {

void Compiler::Statements() {
  const Nesting nesting(*this);
  for (;;) {
    SkipSeparators();
    if (Current().kind == TokenKind::End || AtBlockEnd()) return;
    OneStatement();
    ExpectStatementEnd();
  }
}

bool Compiler::AtBlockEnd() const {
  if (Current().kind != TokenKind::Name) return false;
  switch (Current().keyword) {
    case Keyword::End:
    case Keyword::Else:
    case Keyword::ElseIf:
    case Keyword::Case:
    case Keyword::Next:
    case Keyword::Loop:
    case Keyword::Wend:
      return true;
    default:
      return false;
  }
}

bool Compiler::IsOpen(BlockKind kind) const {
  return std::ranges::any_of(scope_->blocks, [kind](const Block& block) { return block.kind == kind; });
}

// The text ends a block that it did not begin, or not this one.
void Compiler::FailBlockEnd(int expected) const {
  if (IsKeyword(Keyword::Loop) && !IsOpen(BlockKind::Do)) Fail(1038);
  if (IsKeyword(Keyword::Next) && !IsOpen(BlockKind::For)) Fail(1055);
  Fail(expected);
}

void Compiler::OneStatement() {
  if (IsName() || IsKeyword(Keyword::Me) || IsSymbol('.')) {
    const bool isErase = Current().keyword == Keyword::Erase && Ahead().kind == TokenKind::Name;
    const bool isProperty = Current().keyword == Keyword::Property && Ahead().kind == TokenKind::Name;
    if (isProperty && !class_) Fail(1048);
    Mark();
    if (isErase) {
      EraseStatement();
    } else {
      NameStatement();
    }
  } else if (Current().kind == TokenKind::Name) {
    Mark();
    KeywordStatement(Current().keyword);
  } else {
    Fail(Current().kind == TokenKind::Literal ? 1024 : 1002);
  }
  sawStatement_ = true;
}

void Compiler::KeywordStatement(Keyword keyword) {
  struct Entry {
    Keyword keyword;
    void (Compiler::*read)();
  };
  static constexpr Entry kStatements[] = {
      {Keyword::Call, &Compiler::CallStatement},
      {Keyword::Class, &Compiler::ClassStatement},
      {Keyword::Const, &Compiler::ConstStatement},
      {Keyword::Dim, &Compiler::DimStatement},
      {Keyword::Do, &Compiler::DoStatement},
      {Keyword::Exit, &Compiler::ExitStatement},
      {Keyword::For, &Compiler::ForStatement},
      {Keyword::If, &Compiler::IfStatement},
      {Keyword::Let, &Compiler::LetStatement},
      {Keyword::On, &Compiler::OnErrorStatement},
      {Keyword::Option, &Compiler::OptionStatement},
      {Keyword::Private, &Compiler::VisibilityStatement},
      {Keyword::Public, &Compiler::VisibilityStatement},
      {Keyword::ReDim, &Compiler::ReDimStatement},
      {Keyword::Select, &Compiler::SelectStatement},
      {Keyword::Set, &Compiler::SetStatement},
      {Keyword::While, &Compiler::WhileStatement},
      {Keyword::With, &Compiler::WithStatement},
  };
  for (const Entry& entry : kStatements) {
    if (entry.keyword == keyword) return (this->*entry.read)();
  }
  if (keyword == Keyword::Sub || keyword == Keyword::Function) {
    RequireTopLevel();
    Procedure(true, false);
  } else if (keyword == Keyword::Stop) {
    Advance();  // for a debugger, which there is not
  } else {
    Fail(1002);
  }
}

// Procedures and classes stand outside of procedures and blocks.
void Compiler::RequireTopLevel() const {
  if (scope_ != &mainScope_ || !scope_->blocks.empty()) Fail(1002);
}

void Compiler::NameStatement() {
  Link link = Chain(ChainStart(), true);
  if (AcceptSymbol('=')) {
    Assignment(link, false);
  } else {
    CallWithoutParentheses(link);
  }
}

// A call as a statement. What looked like a list of arguments in parentheses is the beginning of the first
// argument: in f (x), y and f (x) + 1, but also in f (x), whose argument goes by value for that.
void Compiler::CallWithoutParentheses(Link& link) {
  const bool firstParentheses = link.parentheses && link.kind != Link::Kind::Index;
  if (firstParentheses && (link.count == 1 || !IsStatementEnd())) {
    at_ = link.tokenBefore;
    Truncate(link.codeBefore, link.heightBefore);
    link.parentheses = false;
    link.count = Arguments(false);
  } else if (firstParentheses && link.count > 1) {
    Fail(1044);
  } else if (!IsStatementEnd()) {
    if (link.parentheses) Fail(1025);
    link.count = Arguments(false);
  }
  EmitLoad(link, kStatement);
}

void Compiler::Assignment(const Link& link, bool isSet) {
  if (!isSet && AppendAssignment(link)) return;
  Expression();
  EmitStore(link, isSet);
}

// s = s & a & b appends a & b to s in place, so that a text built in a loop costs its length and not the square
// of it.
bool Compiler::AppendAssignment(const Link& link) {
  const Token& old = Current();
  const Token& sign = Ahead();
  if (link.kind != Link::Kind::Name || link.parentheses || !IsName() || sign.kind != TokenKind::Symbol ||
      sign.symbol != SymbolOf('&') || names_.Intern(old.text) != link.name) {
    return false;
  }
  const std::size_t tokenBefore = at_;
  const std::size_t codeBefore = code().instructions.size();
  const int heightBefore = scope_->height;
  constexpr int kTighterThanJoin = 9;
  at_ += 2;
  EmitNamed(Op::Load, link.name, 0, 0, 1);
  Expression(kTighterThanJoin);
  while (AcceptSymbol('&')) {
    Expression(kTighterThanJoin);
    Emit({Op::Concatenate}, -1);
  }
  if (IsStatementEnd()) {
    EmitNamed(Op::Append, link.name, 0, 0, -2);
    return true;
  }
  at_ = tokenBefore;
  Truncate(codeBefore, heightBefore);
  return false;
}

void Compiler::LetStatement() {
  Advance();
  const Link link = Chain(ChainStart(), false);
  ExpectSymbol('=', 1011);
  Assignment(link, false);
}

void Compiler::SetStatement() {
  Advance();
  const Link link = Chain(ChainStart(), false);
  ExpectSymbol('=', 1011);
  Assignment(link, true);
}

void Compiler::CallStatement() {
  Advance();
  if (!StartsChain()) Fail(1010);
  const Link link = Chain(ChainStart(), false);
  if (link.kind == Link::Kind::Value) Fail(1002);
  ExpectStatementEnd();
  EmitLoad(link, kStatement);
}

void Compiler::OnErrorStatement() {
  Advance();
  Expect(Keyword::Error, 1002);
  if (AcceptKeyword(Keyword::Resume)) {
    Expect(Keyword::Next, 1020);
    Emit({Op::OnErrorResumeNext}, 0);
    return;
  }
  Expect(Keyword::GoTo, 1002);
  const bool isZero =
      Current().kind == TokenKind::Literal && Current().value.Is(Type::Integer) && Current().value.whole() == 0;
  if (!isZero) Fail(1002);
  Advance();
  Emit({Op::OnErrorGoTo0}, 0);
}

void Compiler::OptionStatement() {
  if (sawStatement_ || scope_ != &mainScope_) Fail(1024);
  Advance();
  Expect(Keyword::Explicit, 1002);
  explicit_ = true;
}

void Compiler::ExitStatement() {
  struct Procedure {
    Keyword keyword;
    bool (*fits)(Code::Kind);
  };
  static constexpr Procedure kProcedures[] = {
      {Keyword::Sub, [](Code::Kind kind) { return kind == Code::Kind::Sub; }},
      {Keyword::Function, [](Code::Kind kind) { return kind == Code::Kind::Function; }},
      {Keyword::Property, [](Code::Kind kind) { return kind >= Code::Kind::PropertyGet; }},
  };
  Advance();
  if (IsKeyword(Keyword::For)) return ExitBlock(BlockKind::For);
  if (IsKeyword(Keyword::Do)) return ExitBlock(BlockKind::Do);
  for (const Procedure& procedure : kProcedures) {
    if (!IsKeyword(procedure.keyword)) continue;
    if (!procedure.fits(code().kind)) Fail(1039);
    Advance();
    Emit({Op::Return}, 0);
    return;
  }
  Fail(1039);
}

void Compiler::ExitBlock(BlockKind kind) {
  if (!IsOpen(kind)) Fail(1039);
  Advance();
  for (auto block = scope_->blocks.rbegin(); block != scope_->blocks.rend(); ++block) {
    if (block->kind == kind) {
      block->exits.push_back(EmitJump(Op::Jump, 0));
      return;
    }
    if (block->slot >= 0) EmitSlot(Op::ClearSlot, block->slot, 0);
  }
}

void Compiler::EraseStatement() {
  Advance();
  do {
    if (!StartsChain()) Fail(1010);
    EmitReference(Chain(ChainStart(), false));
    Emit({Op::Erase}, -1);
  } while (AcceptSymbol(','));
}

void Compiler::ReDimStatement() {
  Advance();
  const bool preserve = IsKeyword(Keyword::Preserve) && Ahead().kind == TokenKind::Name;
  if (preserve) Advance();
  do {
    const NameId name = ExpectName();
    ExpectSymbol('(', 1005);
    int count = 0;
    do {
      Expression();
      ++count;
    } while (AcceptSymbol(','));
    ExpectSymbol(')', 1006);
    EmitNamed(Op::ReDim, name, count, preserve ? kPreserve : std::uint8_t{0}, -count);
  } while (AcceptSymbol(','));
}

}  // namespace tessary::script
