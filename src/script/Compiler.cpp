#include "script/Compiler.h"

#include <algorithm>
#include <utility>

#include "script/Lexer.h"
#include "script/ScriptError.h"

namespace tessary::script {

namespace {

bool HasName(Op op) {
  switch (op) {
    case Op::Load:
    case Op::LoadReference:
    case Op::Call:
    case Op::CallReference:
    case Op::Store:
    case Op::StoreIndexed:
    case Op::Append:
    case Op::ForNext:
    case Op::ReDim:
      return true;
    default:
      return false;
  }
}

}  // namespace

Compiler::Compiler(Names& names, Ref<Source> source, CompileMode mode, bool explicitNames)
    : names_(names),
      source_(std::move(source)),
      mode_(mode),
      explicit_(explicitNames),
      tokens_(Tokenize(source_->text)) {
  mainScope_.code = Make<Code>();
  mainScope_.code->kind = mode == CompileMode::Global ? Code::Kind::Main : Code::Kind::Fragment;
  mainScope_.code->source = source_;
  unit_.main = mainScope_.code;
}

Unit Compiler::CompileScript() {
  Statements();
  if (Current().kind != TokenKind::End) FailBlockEnd(1002);
  Mark();
  Emit({Op::Return}, 0);
  Resolve(mainScope_, nullptr);
  unit_.main->explicitNames = explicit_;
  for (const Ref<Code>& procedure : unit_.procedures) procedure->explicitNames = explicit_;
  for (const Ref<ClassType>& type : unit_.classes) {
    for (const ClassType::Member& member : type->members) {
      for (const Ref<Code>& method : {member.get, member.let, member.set}) {
        if (method) method->explicitNames = explicit_;
      }
    }
  }
  return std::move(unit_);
}

Unit Compiler::CompileExpression() {
  SkipSeparators();
  Mark();
  code().returnSlot = NewHiddenSlot();
  Expression();
  Instruction store{Op::Store, Space::Local, kRaw};
  store.a = code().returnSlot;
  Emit(store, -1);
  SkipSeparators();
  if (Current().kind != TokenKind::End) Fail(1025);
  Emit({Op::Return}, 0);
  Resolve(mainScope_, nullptr);
  unit_.main->explicitNames = explicit_;
  return std::move(unit_);
}

const Token& Compiler::Ahead(std::size_t distance) const {
  return tokens_[std::min(at_ + distance, tokens_.size() - 1)];
}

void Compiler::Advance() {
  if (at_ + 1 < tokens_.size()) ++at_;
}

bool Compiler::IsKeyword(Keyword keyword) const {
  return Current().kind == TokenKind::Name && Current().keyword == keyword;
}

bool Compiler::IsSymbol(char symbol) const {
  return Current().kind == TokenKind::Symbol && Current().symbol == SymbolOf(symbol);
}

bool Compiler::IsStatementEnd() const {
  const TokenKind kind = Current().kind;
  if (kind == TokenKind::End || kind == TokenKind::NewLine || kind == TokenKind::Colon) return true;
  return singleLineIfs_ > 0 &&
         (IsKeyword(Keyword::Else) || IsKeyword(Keyword::ElseIf) || IsKeyword(Keyword::End));
}

bool Compiler::AcceptKeyword(Keyword keyword) {
  if (!IsKeyword(keyword)) return false;
  Advance();
  return true;
}

bool Compiler::AcceptSymbol(char symbol) {
  if (!IsSymbol(symbol)) return false;
  Advance();
  return true;
}

void Compiler::Expect(Keyword keyword, int error) {
  if (!AcceptKeyword(keyword)) Fail(error);
}

void Compiler::ExpectSymbol(char symbol, int error) {
  if (!AcceptSymbol(symbol)) Fail(error);
}

void Compiler::ExpectStatementEnd() {
  if (!IsStatementEnd()) Fail(1025);
}

// The words from Default on are names wherever they have no meaning.
bool Compiler::IsName() const {
  return Current().kind == TokenKind::Name &&
         (Current().keyword == Keyword::None || Current().keyword >= Keyword::Default);
}

NameId Compiler::ExpectName() {
  if (!IsName()) Fail(1010);
  const NameId name = names_.Intern(Current().text);
  Advance();
  return name;
}

void Compiler::SkipSeparators() {
  while (Current().kind == TokenKind::NewLine || Current().kind == TokenKind::Colon) Advance();
}

void Compiler::Fail(int error) const { FailAt(error, Current()); }

void Compiler::FailAt(int error, const Token& token) const {
  const int number = token.kind == TokenKind::Bad ? token.error : error;
  ScriptError failure(number, std::string(ErrorText(number)), "Microsoft VBScript compilation error");
  failure.line = token.line;
  failure.column = token.column;
  failure.text = source_->Line(token.line);
  failure.origin = source_->origin;
  throw failure;
}

int Compiler::Emit(Instruction instruction, int effect) {
  scope_->height += effect;
  code().maxStack = std::max(code().maxStack, scope_->height + 1);
  code().instructions.push_back(instruction);
  return Here() - 1;
}

int Compiler::EmitConstant(Value value) {
  Instruction instruction{Op::Constant};
  instruction.a = static_cast<std::int32_t>(code().constants.size());
  code().constants.push_back(std::move(value));
  return Emit(instruction, 1);
}

int Compiler::EmitNamed(Op op, NameId name, int count, std::uint8_t flags, int effect) {
  Instruction instruction{op};
  instruction.flags = flags;
  instruction.count = count;
  instruction.a = static_cast<std::int32_t>(name);
  return Emit(instruction, effect);
}

void Compiler::PatchAll(const std::vector<int>& instructions) {
  for (const int instruction : instructions) Patch(instruction);
}

void Compiler::Truncate(std::size_t size, int height) {
  code().instructions.resize(size);
  scope_->height = height;
}

void Compiler::Mark() { code().statements.push_back({Here(), -1, Current().line, Current().column}); }

int Compiler::NewHiddenSlot(int count) {
  const int slot = static_cast<int>(code().slots.size());
  code().slots.resize(code().slots.size() + static_cast<std::size_t>(count));
  return slot;
}

void Compiler::Resolve(Scope& scope, ClassType* owner) {
  scope.code->owner = owner;
  scope.code->firstFallback = static_cast<int>(scope.code->slots.size());
  for (Instruction& instruction : scope.code->instructions) {
    if (HasName(instruction.op) && instruction.space == Space::Unresolved) Bind(scope, owner, instruction);
  }
}

void Compiler::Bind(Scope& scope, ClassType* owner, Instruction& instruction) {
  const auto name = static_cast<NameId>(instruction.a);
  if (const auto constant = scope.constants.find(name); constant != scope.constants.end()) {
    return BindConstant(scope, constant->second, instruction);
  }
  const bool isCall = instruction.op == Op::Call || instruction.op == Op::CallReference;
  const bool callsItself = isCall && name == scope.code->name && scope.code->returnSlot >= 0;
  if (const auto slot = scope.slots.find(name); slot != scope.slots.end() && !callsItself) {
    instruction.space = Space::Local;
    instruction.a = slot->second;
    return;
  }
  if (owner) {
    if (const auto member = owner->index.find(name); member != owner->index.end()) {
      const int field = owner->members[static_cast<std::size_t>(member->second)].field;
      instruction.space = field >= 0 ? Space::Field : Space::Method;
      instruction.a = field >= 0 ? field : member->second;
      return;
    }
  }
  if (scope.code->kind == Code::Kind::Fragment) {
    instruction.space = Space::Dynamic;
    return;
  }
  instruction.space = Space::Global;
  if (scope.code->kind == Code::Kind::Main) return;
  const auto [fallback, isNew] = scope.fallbacks.try_emplace(name, static_cast<int>(scope.code->slots.size()));
  if (isNew) scope.code->slots.push_back(name);
  instruction.b = fallback->second;
}

void Compiler::BindConstant(Scope& scope, const Value& value, Instruction& instruction) {
  const NameId name = static_cast<NameId>(instruction.a);
  if (instruction.op == Op::Load || instruction.op == Op::LoadReference) {
    instruction.op = Op::Constant;
    instruction.a = static_cast<std::int32_t>(scope.code->constants.size());
    scope.code->constants.push_back(value);
    return;
  }
  const bool isCall = instruction.op == Op::Call || instruction.op == Op::CallReference;
  instruction.op = Op::Fail;
  instruction.a = isCall ? kTypeMismatch : kIllegalAssignment;
  instruction.b = static_cast<std::int32_t>(name);
}

}  // namespace tessary::script
