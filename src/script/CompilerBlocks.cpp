#include <utility>

#include "script/Compiler.h"

namespace tessary::script {

void Compiler::EmitSlot(Op op, int slot, int effect) {
  Instruction instruction{op, Space::Local, kRaw};
  instruction.a = slot;
  Emit(instruction, effect);
}

// Without a target the jump is to be patched.
int Compiler::EmitJump(Op op, int effect, int target) {
  Instruction instruction{op};
  instruction.a = target;
  return Emit(instruction, effect);
}

void Compiler::OpenBlock(BlockKind kind, int slot) { scope_->blocks.push_back({kind, slot, {}}); }

// Everything that leaves the block goes on here.
void Compiler::CloseBlock() {
  const Block block = std::move(scope_->blocks.back());
  scope_->blocks.pop_back();
  PatchAll(block.exits);
  if (block.slot >= 0) {
    Mark();
    EmitSlot(Op::ClearSlot, block.slot, 0);
  }
}

void Compiler::IfStatement() {
  Advance();
  Expression();
  const int skip = EmitJump(Op::JumpIfFalse, -1);
  Expect(Keyword::Then, 1017);
  const bool isBlock = Current().kind == TokenKind::NewLine || Current().kind == TokenKind::End;
  if (isBlock) {
    OpenBlock(BlockKind::Plain);
    BlockIf(skip);
    CloseBlock();
  } else {
    SingleLineIf(skip);
  }
}

void Compiler::SingleLineIf(int skip) {
  const Nesting nesting(*this);
  ++singleLineIfs_;
  OpenBlock(BlockKind::Plain);
  SingleLineBranch();
  std::vector<int> exits;
  while (skip >= 0 && (IsKeyword(Keyword::Else) || IsKeyword(Keyword::ElseIf))) {
    const bool isElse = IsKeyword(Keyword::Else);
    Mark();
    exits.push_back(EmitJump(Op::Jump, 0));
    Patch(std::exchange(skip, -1));
    Advance();
    if (!isElse) {
      Mark();
      Expression();
      skip = EmitJump(Op::JumpIfFalse, -1);
      Expect(Keyword::Then, 1017);
    }
    SingleLineBranch();
  }
  if (skip >= 0) Patch(skip);
  PatchAll(exits);
  if (IsKeyword(Keyword::End) && Ahead().keyword == Keyword::If) {
    Advance();
    Advance();
  }
  CloseBlock();
  --singleLineIfs_;
}

void Compiler::SingleLineBranch() {
  for (;;) {
    while (Current().kind == TokenKind::Colon) Advance();
    if (Current().kind == TokenKind::NewLine || Current().kind == TokenKind::End || AtBlockEnd()) return;
    OneStatement();
    ExpectStatementEnd();
  }
}

void Compiler::BlockIf(int skip) {
  std::vector<int> exits;
  for (;;) {
    Statements();
    const bool isElse = IsKeyword(Keyword::Else);
    if (!isElse && !IsKeyword(Keyword::ElseIf)) break;
    if (skip < 0) Fail(1002);  // behind Else
    Mark();
    exits.push_back(EmitJump(Op::Jump, 0));
    Patch(std::exchange(skip, -1));
    Advance();
    if (!isElse) {
      Mark();
      Expression();
      skip = EmitJump(Op::JumpIfFalse, -1);
      Expect(Keyword::Then, 1017);
    }
  }
  if (!IsKeyword(Keyword::End)) FailBlockEnd(1014);
  Advance();
  Expect(Keyword::If, 1012);
  if (skip >= 0) Patch(skip);
  PatchAll(exits);
}

void Compiler::SelectStatement() {
  const std::size_t statement = code().statements.size() - 1;
  Advance();
  Expect(Keyword::Case, 1021);
  const bool literal = Expression() == OperandKind::Literal;
  const int slot = NewHiddenSlot();
  Emit({Op::Plain}, 0);
  EmitSlot(Op::Store, slot, -1);
  ExpectStatementEnd();
  OpenBlock(BlockKind::Plain, slot);
  SkipSeparators();
  std::vector<int> exits;
  while (IsKeyword(Keyword::Case)) CaseClause(slot, literal, exits);
  if (!IsKeyword(Keyword::End)) FailBlockEnd(exits.empty() ? 1021 : 1014);
  Advance();
  Expect(Keyword::Select, 1022);
  PatchAll(exits);
  code().statements[statement].resume = Here();
  CloseBlock();
}

void Compiler::CaseClause(int slot, bool literal, std::vector<int>& exits) {
  Mark();
  const std::size_t statement = code().statements.size() - 1;
  Advance();
  int next = -1;
  if (!AcceptKeyword(Keyword::Else)) {
    std::vector<int> hits;
    do {
      EmitSlot(Op::Load, slot, 1);
      const bool isLiteral = Expression() == OperandKind::Literal;
      const int jump = EmitJump(Op::CaseJump, -2);
      code().instructions[static_cast<std::size_t>(jump)].b = (literal ? 1 : 0) | (isLiteral ? 2 : 0);
      hits.push_back(jump);
    } while (AcceptSymbol(','));
    next = EmitJump(Op::Jump, 0);
    PatchAll(hits);
  }
  code().statements[statement].resume = Here();
  Statements();
  Mark();
  exits.push_back(EmitJump(Op::Jump, 0));
  if (next >= 0) Patch(next);
}

void Compiler::ForStatement() {
  Advance();
  if (AcceptKeyword(Keyword::Each)) {
    ForEachLoop();
  } else {
    ForLoop();
  }
  if (!IsKeyword(Keyword::Next)) FailBlockEnd(1020);
  Advance();
}

void Compiler::ForLoop() {
  const int slot = NewHiddenSlot(2);
  const NameId name = ExpectName();
  if (IsSymbol('(') || IsSymbol('.')) Fail(1040);
  ExpectSymbol('=', 1011);
  EmitSlot(Op::ClearSlot, slot, 0);
  Expression();
  Expect(Keyword::To, 1013);
  Expression();
  if (AcceptKeyword(Keyword::Step)) {
    Expression();
  } else {
    EmitConstant(Value::Integer(1));
  }
  Instruction prepare{Op::ForPrepare};
  prepare.count = slot;
  Emit(prepare, -2);
  EmitNamed(Op::Store, name, 0, 0, -1);
  EmitNamed(Op::Load, name, 0, 0, 1);
  const int test = EmitJump(Op::ForTest, -1);
  code().instructions[static_cast<std::size_t>(test)].count = slot;
  ExpectStatementEnd();

  const int body = Here();
  OpenBlock(BlockKind::For);
  Statements();
  Mark();
  EmitNamed(Op::ForNext, name, 0, 0, 0);
  Instruction operands{Op::Operands};
  operands.a = slot;
  operands.b = body;
  Emit(operands, 0);
  Patch(test);
  if (IsKeyword(Keyword::Next)) CloseBlock();
}

// The test stands behind the body, so that after an error in the head the body runs once and the test ends the
// loop.
void Compiler::ForEachLoop() {
  const int slot = NewHiddenSlot();
  const NameId name = ExpectName();
  if (IsSymbol('(') || IsSymbol('.')) Fail(1040);
  Expect(Keyword::In, 1046);
  EmitSlot(Op::ClearSlot, slot, 0);
  Argument();
  EmitSlot(Op::EachPrepare, slot, -1);
  const int toTest = EmitJump(Op::Jump, 0);
  ExpectStatementEnd();

  const int body = Here();
  OpenBlock(BlockKind::For, slot);
  Statements();
  Patch(toTest);
  Mark();
  const std::size_t statement = code().statements.size() - 1;
  EmitSlot(Op::EachNext, slot, 1);
  const auto test = static_cast<std::size_t>(Here() - 1);
  EmitNamed(Op::Store, name, 0, kRaw, -1);
  EmitJump(Op::Jump, 0, body);
  code().instructions[test].b = Here();
  code().statements[statement].resume = Here();
  if (IsKeyword(Keyword::Next)) CloseBlock();
}

void Compiler::DoStatement() {
  Advance();
  const int top = Here();
  OpenBlock(BlockKind::Do);
  const bool testsFirst = IsKeyword(Keyword::While) || IsKeyword(Keyword::Until);
  if (testsFirst) LoopCondition(false, top);
  if (!IsStatementEnd()) Fail(testsFirst ? 1025 : 1028);
  Statements();
  if (!IsKeyword(Keyword::Loop)) FailBlockEnd(1019);
  Mark();
  Advance();
  if (!testsFirst && (IsKeyword(Keyword::While) || IsKeyword(Keyword::Until))) {
    LoopCondition(true, top);
  } else {
    EmitJump(Op::Jump, 0, top);
  }
  CloseBlock();
}

// Before the body it leaves the loop, behind the body it goes back to the top.
void Compiler::LoopCondition(bool isRepeat, int top) {
  const bool isWhile = IsKeyword(Keyword::While);
  Advance();
  Expression();
  const int jump = EmitJump(isWhile == isRepeat ? Op::JumpIfTrue : Op::JumpIfFalse, -1, top);
  if (!isRepeat) scope_->blocks.back().exits.push_back(jump);
}

void Compiler::WhileStatement() {
  Advance();
  const int top = Here();
  Expression();
  OpenBlock(BlockKind::Plain);
  const int leave = EmitJump(Op::JumpIfFalse, -1);
  ExpectStatementEnd();
  Statements();
  if (!IsKeyword(Keyword::Wend)) FailBlockEnd(1018);
  Mark();
  Advance();
  EmitJump(Op::Jump, 0, top);
  Patch(leave);
  CloseBlock();
}

void Compiler::WithStatement() {
  Advance();
  Expression();
  const int slot = NewHiddenSlot();
  EmitSlot(Op::WithPrepare, slot, -1);
  ExpectStatementEnd();
  OpenBlock(BlockKind::With, slot);
  Statements();
  if (!IsKeyword(Keyword::End)) FailBlockEnd(1014);
  Advance();
  Expect(Keyword::With, 1029);
  CloseBlock();
}

}  // namespace tessary::script
