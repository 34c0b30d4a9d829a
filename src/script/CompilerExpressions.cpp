#include <optional>
#include <utility>

#include "script/Compiler.h"
#include "script/Conversions.h"
#include "script/ScriptError.h"

namespace tessary::script {

namespace {

// Binary operators by how tightly they bind. Not stands between the comparisons and And, the minus sign between
// * and ^.
constexpr int kNotLevel = 6;
constexpr int kComparisonLevel = 7;
constexpr int kSignLevel = 13;

struct BinaryOperator {
  Op op = Op::Return;
  int level = 0;  // 0: no binary operator
  Comparison comparison = Comparison::Equal;
};

BinaryOperator FromSymbol(Symbol symbol) {
  switch (static_cast<int>(symbol)) {
    case static_cast<int>(Symbol::NotEqual):
      return {Op::Compare, kComparisonLevel, Comparison::NotEqual};
    case static_cast<int>(Symbol::LessOrEqual):
      return {Op::Compare, kComparisonLevel, Comparison::LessOrEqual};
    case static_cast<int>(Symbol::GreaterOrEqual):
      return {Op::Compare, kComparisonLevel, Comparison::GreaterOrEqual};
    case '=':
      return {Op::Compare, kComparisonLevel, Comparison::Equal};
    case '<':
      return {Op::Compare, kComparisonLevel, Comparison::Less};
    case '>':
      return {Op::Compare, kComparisonLevel, Comparison::Greater};
    case '&':
      return {Op::Concatenate, 8};
    case '+':
      return {Op::Add, 9};
    case '-':
      return {Op::Subtract, 9};
    case '\\':
      return {Op::IntegerDivide, 11};
    case '*':
      return {Op::Multiply, 12};
    case '/':
      return {Op::Divide, 12};
    case '^':
      return {Op::Power, 14};
    default:
      return {};
  }
}

BinaryOperator FromKeyword(Keyword keyword) {
  switch (keyword) {
    case Keyword::Imp:
      return {Op::Imp, 1};
    case Keyword::Eqv:
      return {Op::Eqv, 2};
    case Keyword::Xor:
      return {Op::Xor, 3};
    case Keyword::Or:
      return {Op::Or, 4};
    case Keyword::And:
      return {Op::And, 5};
    case Keyword::Is:
      return {Op::Is, kComparisonLevel};
    case Keyword::Mod:
      return {Op::Modulo, 10};
    default:
      return {};
  }
}

BinaryOperator OperatorOf(const Token& token) {
  if (token.kind == TokenKind::Symbol) return FromSymbol(token.symbol);
  if (token.kind == TokenKind::Name) return FromKeyword(token.keyword);
  return {};
}

std::optional<Value> ConstantOf(Keyword keyword) {
  switch (keyword) {
    case Keyword::True:
      return Value::Boolean(true);
    case Keyword::False:
      return Value::Boolean(false);
    case Keyword::Empty:
      return Value();
    case Keyword::Null:
      return Value::Null();
    case Keyword::Nothing:
      return Value::Nothing();
    default:
      return std::nullopt;
  }
}

}  // namespace

Compiler::OperandKind Compiler::Expression(int minLevel) {
  const Nesting nesting(*this);
  return Continue(Prefix(), minLevel);
}

// Goes on behind a left operand that is emitted already.
Compiler::OperandKind Compiler::Continue(OperandKind left, int minLevel) {
  for (BinaryOperator found = OperatorOf(Current()); found.level >= minLevel && found.level > 0;
       found = OperatorOf(Current())) {
    Advance();
    const OperandKind right = Expression(found.level + 1);
    Instruction instruction{found.op};
    if (found.op == Op::Compare) {
      instruction.a = static_cast<std::int32_t>(found.comparison);
      instruction.b = (left == OperandKind::Literal ? 1 : 0) | (right == OperandKind::Literal ? 2 : 0);
    }
    Emit(instruction, -1);
    left = OperandKind::Computed;
  }
  return left;
}

Compiler::OperandKind Compiler::Prefix() {
  if (AcceptKeyword(Keyword::Not)) {
    Expression(kNotLevel);
    Emit({Op::Not}, 0);
    return OperandKind::Computed;
  }
  if (AcceptSymbol('-')) {
    const bool literal = Expression(kSignLevel) == OperandKind::Literal;
    Emit({Op::Negate}, 0);
    return literal ? OperandKind::Literal : OperandKind::Computed;
  }
  if (AcceptSymbol('+')) {
    const OperandKind kind = Expression(kSignLevel);
    Emit({Op::Plain}, 0);
    return kind;
  }
  return Primary();
}

Compiler::OperandKind Compiler::Primary() {
  if (Current().kind == TokenKind::Literal) {
    EmitConstant(Current().value);
    Advance();
    return OperandKind::Literal;
  }
  if (StartsChain()) {
    EmitLoad(Chain(ChainStart(), false));
    return OperandKind::Computed;
  }
  if (IsSymbol('(')) {
    Advance();
    const OperandKind kind = Expression();
    ExpectSymbol(')', 1006);
    if (!IsSymbol('.') && !IsSymbol('(')) return kind;
    EmitLoad(Chain(Link(), false));
    return OperandKind::Computed;
  }
  if (Current().kind == TokenKind::Name) {
    if (AcceptKeyword(Keyword::New)) {
      New();
      return OperandKind::Computed;
    }
    if (std::optional<Value> constant = ConstantOf(Current().keyword)) {
      EmitConstant(std::move(*constant));
      Advance();
      return OperandKind::Computed;
    }
  }
  Fail(1002);
}

void Compiler::New() {
  Instruction instruction{Op::New};
  instruction.a = static_cast<std::int32_t>(ExpectName());
  Emit(instruction, 1);
}

bool Compiler::StartsChain() const { return IsName() || IsKeyword(Keyword::Me) || IsSymbol('.'); }

Compiler::Link Compiler::ChainStart() {
  Link link;
  if (IsKeyword(Keyword::Me)) {
    Advance();
    Emit({Op::Me}, 1);
  } else if (IsSymbol('.')) {
    const int slot = WithSlot();
    Advance();
    if (slot < 0) {
      Instruction fail{Op::Fail};
      fail.a = 505;
      Emit(fail, 1);
    } else {
      Instruction load{Op::Load, Space::Local};
      load.a = slot;
      Emit(load, 1);
    }
    if (Current().kind != TokenKind::Name) Fail(1010);
    link.kind = Link::Kind::Member;
    link.name = names_.Intern(Current().text);
    Advance();
  } else {
    link.kind = Link::Kind::Name;
    link.name = ExpectName();
  }
  return link;
}

// The slot of the innermost With, negative if there is none.
int Compiler::WithSlot() const {
  int slot = -1;
  for (const Block& block : scope_->blocks) {
    if (block.kind == BlockKind::With) slot = block.slot;
  }
  return slot;
}

// Goes on with a chain of names, members and arguments. All but its last link is emitted.
Compiler::Link Compiler::Chain(Link link, bool statement) {
  for (;;) {
    if (IsSymbol('(') && link.kind != Link::Kind::Value) {
      ExtendByParentheses(link);
    } else if (IsSymbol('(')) {
      Advance();
      link.kind = Link::Kind::Index;
      link.count = Arguments(true);
      link.parentheses = true;
    } else if (IsSymbol('.') && !(statement && StartsArgument())) {
      EmitLoad(link);
      Advance();
      if (Current().kind != TokenKind::Name) Fail(1010);
      link = Link{Link::Kind::Member, names_.Intern(Current().text)};
      Advance();
    } else {
      return link;
    }
  }
}

// Inside a With, a point behind a blank begins the first argument of a call, as in: Show .Title
bool Compiler::StartsArgument() const { return Current().spaceBefore && WithSlot() >= 0; }

void Compiler::ExtendByParentheses(Link& link) {
  if (link.parentheses) {
    EmitReference(link);
    Advance();
    link = Link{Link::Kind::Index};
    link.count = Arguments(true);
    link.parentheses = true;
    return;
  }
  link.tokenBefore = at_;
  link.codeBefore = code().instructions.size();
  link.heightBefore = scope_->height;
  Advance();
  link.count = Arguments(true);
  link.parentheses = true;
}

// Arguments up to the closing parenthesis, or up to the end of the statement; returns how many.
int Compiler::Arguments(bool parentheses) {
  const Nesting nesting(*this);
  int count = 0;
  if (parentheses && AcceptSymbol(')')) return 0;
  do {
    const bool leftOut = IsSymbol(',') || (parentheses ? IsSymbol(')') : IsStatementEnd());
    if (leftOut) {
      EmitConstant(Value::Missing());
    } else {
      Argument();
    }
    ++count;
  } while (AcceptSymbol(','));
  if (parentheses) ExpectSymbol(')', 1006);
  return count;
}

// One argument: a reference if it is nothing but a variable or an element, otherwise a value.
void Compiler::Argument() {
  if (!StartsChain()) {
    Expression();
    return;
  }
  const Link link = Chain(ChainStart(), false);
  if (IsSymbol(',') || IsSymbol(')') || IsStatementEnd() || IsKeyword(Keyword::Else) ||
      IsKeyword(Keyword::End)) {
    EmitReference(link);
    return;
  }
  EmitLoad(link);
  Continue(OperandKind::Computed, 1);
}

void Compiler::EmitLoad(const Link& link, std::uint8_t flags) {
  if (link.parentheses) flags |= kParentheses;
  switch (link.kind) {
    case Link::Kind::Name: {
      const bool call = link.parentheses || (flags & kStatement) != 0;
      EmitNamed(call ? Op::Call : Op::Load, link.name, link.count, flags, 1 - link.count);
      break;
    }
    case Link::Kind::Member:
      EmitNamed(Op::Member, link.name, link.count, flags, -link.count);
      break;
    case Link::Kind::Index:
      EmitNamed(Op::Index, 0, link.count, flags, -link.count);
      break;
    case Link::Kind::Value:
      if ((flags & kStatement) != 0) Fail(1002);
      return;
  }
  if ((flags & kStatement) != 0) --scope_->height;
}

void Compiler::EmitReference(const Link& link) {
  if (link.kind == Link::Kind::Name) {
    EmitNamed(link.parentheses ? Op::CallReference : Op::LoadReference, link.name, link.count,
              link.parentheses ? kParentheses : std::uint8_t{0}, 1 - link.count);
  } else {
    EmitLoad(link);
  }
}

// The value is on the stack behind the link's object and arguments.
void Compiler::EmitStore(const Link& link, bool isSet) {
  const std::uint8_t flags = isSet ? kSet : std::uint8_t{0};
  switch (link.kind) {
    case Link::Kind::Name:
      if (link.parentheses) {
        EmitNamed(Op::StoreIndexed, link.name, link.count, flags, -link.count - 1);
      } else {
        EmitNamed(Op::Store, link.name, 0, flags, -1);
      }
      break;
    case Link::Kind::Member:
      EmitNamed(Op::StoreMember, link.name, link.count, flags, -link.count - 2);
      break;
    case Link::Kind::Index:
      EmitNamed(Op::StoreIndex, 0, link.count, flags, -link.count - 2);
      break;
    case Link::Kind::Value:
      Fail(1002);
  }
}

}  // namespace tessary::script
