#include <algorithm>
#include <utility>

#include "script/Compiler.h"
#include "script/Object.h"

namespace tessary::script {

void Compiler::DeclareGlobal(NameId name, const Token& place) {
  if (!globals_.insert(name).second) FailAt(1041, place);
}

void Compiler::DeclareLocal(NameId name, const Token& place) {
  const bool isNew = scope_->slots.try_emplace(name, static_cast<int>(code().slots.size())).second;
  if (!isNew || scope_->constants.contains(name)) FailAt(1041, place);
  code().slots.push_back(name);
}

void Compiler::DimStatement() {
  Advance();
  DeclareVariables(true);
}

void Compiler::DeclareVariables(bool isPublic) {
  do {
    DeclareVariable(isPublic);
  } while (AcceptSymbol(','));
}

void Compiler::DeclareVariable(bool isPublic) {
  const Token place = Current();
  const NameId name = ExpectName();
  std::optional<FixedArray> array = ArrayShape();
  std::vector<FixedArray>* arrays = &code().arrays;
  std::int32_t index = static_cast<std::int32_t>(code().slots.size());
  if (class_ && scope_ == &mainScope_) {
    index = class_->fieldCount++;
    const int member = NewMember(name, isPublic, place);
    class_->members[static_cast<std::size_t>(member)].field = index;
    arrays = &class_->arrays;
  } else if (scope_ == &mainScope_) {
    DeclareGlobal(name, place);
    unit_.variables.push_back(name);
    index = static_cast<std::int32_t>(name);
  } else {
    DeclareLocal(name, place);
  }
  if (array) {
    array->place = index;
    arrays->push_back(std::move(*array));
  }
}

// The bounds in parentheses behind a variable's name, if there are parentheses.
std::optional<FixedArray> Compiler::ArrayShape() {
  if (!AcceptSymbol('(')) return std::nullopt;
  FixedArray array;
  if (AcceptSymbol(')')) {
    array.dynamic = true;
    return array;
  }
  do {
    const Value& bound = Current().value;
    const bool isWhole =
        Current().kind == TokenKind::Literal && (bound.Is(Type::Integer) || bound.Is(Type::Long));
    if (!isWhole || bound.whole() < 0) Fail(1026);
    array.bounds.push_back(static_cast<std::int32_t>(bound.whole()));
    Advance();
  } while (AcceptSymbol(','));
  ExpectSymbol(')', 1006);
  return array;
}

void Compiler::ConstStatement() {
  Advance();
  do {
    const Token place = Current();
    const NameId name = ExpectName();
    ExpectSymbol('=', 1011);
    Value value = ConstantValue();
    if (scope_ == &mainScope_) {
      DeclareGlobal(name, place);
      unit_.constants.emplace_back(name, std::move(value));
    } else {
      if (scope_->slots.contains(name) || !scope_->constants.try_emplace(name, std::move(value)).second) {
        FailAt(1041, place);
      }
    }
  } while (AcceptSymbol(','));
}

Value Compiler::ConstantValue() {
  const Nesting nesting(*this);
  if (AcceptSymbol('(')) {
    Value value = ConstantValue();
    ExpectSymbol(')', 1006);
    return value;
  }
  if (AcceptSymbol('+')) return ConstantValue();
  if (IsSymbol('-')) {
    const Token place = Current();
    Advance();
    const Value operand = ConstantValue();
    if (operand.Is(Type::String) || operand.Is(Type::Object)) FailAt(1045, place);
    return Negate(operand);
  }
  const Token token = Current();
  if (token.kind == TokenKind::Literal) {
    Advance();
    return token.value;
  }
  if (token.kind != TokenKind::Name) Fail(1045);
  Advance();
  switch (token.keyword) {
    case Keyword::True:
    case Keyword::False:
      return Value::Boolean(token.keyword == Keyword::True);
    case Keyword::Empty:
      return Value();
    case Keyword::Null:
      return Value::Null();
    case Keyword::Nothing:
      return Value::Nothing();
    default:
      FailAt(1045, token);
  }
}

// Public and Private, outside of classes.
void Compiler::VisibilityStatement() {
  RequireTopLevel();
  const bool isPublic = IsKeyword(Keyword::Public);
  Advance();
  if (IsKeyword(Keyword::Const)) return ConstStatement();
  if (IsKeyword(Keyword::Sub) || IsKeyword(Keyword::Function)) return Procedure(isPublic, false);
  if (IsKeyword(Keyword::Class)) return ClassStatement();
  const bool declaresName = Ahead().kind != TokenKind::Name;
  if (IsKeyword(Keyword::Default) && !declaresName) Fail(1048);
  if (IsKeyword(Keyword::Property) && !declaresName) Fail(1048);
  DeclareVariables(isPublic);
}

void Compiler::Procedure(bool isPublic, bool isDefault) {
  const bool isSub = IsKeyword(Keyword::Sub);
  Advance();
  const Token place = Current();
  const NameId name = ExpectName();
  if (!class_) DeclareGlobal(name, place);
  const Ref<Code> procedure = isSub ? ReadProcedure(Code::Kind::Sub, name, Keyword::Sub, 1016)
                                    : ReadProcedure(Code::Kind::Function, name, Keyword::Function, 1015);
  if (class_) {
    AddMethod(procedure, place, isPublic, isDefault);
  } else {
    unit_.procedures.push_back(procedure);
  }
}

void Compiler::PropertyProcedure(bool isPublic, bool isDefault) {
  Advance();
  Code::Kind kind = Code::Kind::PropertyGet;
  if (IsKeyword(Keyword::Let)) {
    kind = Code::Kind::PropertyLet;
  } else if (IsKeyword(Keyword::Set)) {
    kind = Code::Kind::PropertySet;
  } else if (!IsKeyword(Keyword::Get)) {
    Fail(1049);
  }
  if (isDefault && kind != Code::Kind::PropertyGet) Fail(1058);
  Advance();
  const Token place = Current();
  const NameId name = ExpectName();
  const Ref<Code> procedure = ReadProcedure(kind, name, Keyword::Property, 1050);
  if (kind != Code::Kind::PropertyGet && procedure->parameterCount == 0) FailAt(1054, place);
  AddMethod(procedure, place, isPublic, isDefault);
}

// From the parameters to the End.
Ref<Code> Compiler::ReadProcedure(Code::Kind kind, NameId name, Keyword end, int endError) {
  Scope scope;
  scope.code = Make<Code>();
  scope.code->kind = kind;
  scope.code->name = name;
  scope.code->source = source_;
  Scope* const outer = std::exchange(scope_, &scope);
  Parameters(*scope.code);
  if (kind == Code::Kind::Function || kind == Code::Kind::PropertyGet) {
    scope.code->returnSlot = static_cast<int>(scope.code->slots.size());
    DeclareLocal(name, Current());
  }
  ExpectStatementEnd();
  Statements();
  if (!IsKeyword(Keyword::End)) FailBlockEnd(1014);
  Mark();
  Advance();
  Expect(end, endError);
  Emit({Op::Return}, 0);
  scope_ = outer;
  const Ref<Code> code = scope.code;
  if (class_) {
    methods_.push_back(std::move(scope));
  } else {
    Resolve(scope, nullptr);
  }
  return code;
}

void Compiler::Parameters(Code& procedure) {
  if (!AcceptSymbol('(') || AcceptSymbol(')')) return;
  do {
    const bool byValue = AcceptKeyword(Keyword::ByVal);
    if (!byValue) AcceptKeyword(Keyword::ByRef);
    const Token place = Current();
    DeclareLocal(ExpectName(), place);
    if (AcceptSymbol('(')) ExpectSymbol(')', 1006);
    procedure.byValue.push_back(byValue);
    ++procedure.parameterCount;
  } while (AcceptSymbol(','));
  ExpectSymbol(')', 1006);
}

void Compiler::ClassStatement() {
  if (class_) Fail(1002);
  RequireTopLevel();
  Advance();
  const Token place = Current();
  class_ = Make<ClassType>();
  class_->name = ExpectName();
  DeclareGlobal(class_->name, place);
  ExpectStatementEnd();
  for (SkipSeparators(); !IsKeyword(Keyword::End); SkipSeparators()) {
    ClassMember();
    ExpectStatementEnd();
  }
  Advance();
  Expect(Keyword::Class, 1047);
  for (Scope& method : methods_) Resolve(method, class_.get());
  methods_.clear();
  unit_.classes.push_back(std::exchange(class_, nullptr));
}

void Compiler::ClassMember() {
  const bool isPrivate = IsKeyword(Keyword::Private);
  const bool hasVisibility = isPrivate || IsKeyword(Keyword::Public);
  if (hasVisibility) Advance();
  const Token place = Current();
  const bool isDefault = IsKeyword(Keyword::Default) && Ahead().kind == TokenKind::Name;
  if (isDefault) {
    if (isPrivate || !hasVisibility) Fail(1057);
    Advance();
  }
  if (IsKeyword(Keyword::Sub) || IsKeyword(Keyword::Function)) {
    Procedure(!isPrivate, isDefault);
  } else if (IsKeyword(Keyword::Property) && Ahead().kind == TokenKind::Name) {
    PropertyProcedure(!isPrivate, isDefault);
  } else if (isDefault) {
    FailAt(1056, place);
  } else if (!hasVisibility && IsKeyword(Keyword::Dim)) {
    DimStatement();
  } else if (hasVisibility) {
    DeclareVariables(!isPrivate);
  } else {
    Fail(Current().kind == TokenKind::End ? 1014 : 1002);
  }
}

int Compiler::NewMember(NameId name, bool isPublic, const Token& place) {
  const int member = static_cast<int>(class_->members.size());
  if (!class_->index.try_emplace(name, member).second) FailAt(1041, place);
  ClassType::Member& added = class_->members.emplace_back();
  added.name = name;
  added.isPublic = isPublic;
  return member;
}

void Compiler::AddMethod(const Ref<Code>& procedure, const Token& place, bool isPublic, bool isDefault) {
  const Code::Kind kind = procedure->kind;
  const auto known = class_->index.find(procedure->name);
  const bool isProperty = kind >= Code::Kind::PropertyGet;
  int index = 0;
  if (known != class_->index.end() && isProperty) {
    index = known->second;
  } else {
    index = NewMember(procedure->name, isPublic, place);
  }
  ClassType::Member& member = class_->members[static_cast<std::size_t>(index)];
  if (member.field >= 0 || (member.get && member.get->kind < Code::Kind::PropertyGet)) FailAt(1041, place);
  Ref<Code>& part = kind == Code::Kind::PropertyLet   ? member.let
                    : kind == Code::Kind::PropertySet ? member.set
                                                      : member.get;
  if (part) FailAt(1041, place);
  part = procedure;
  if (kind == Code::Kind::PropertyGet || known == class_->index.end()) member.isPublic = isPublic;
  CheckProperty(member, place);
  if (isDefault) {
    if (class_->defaultMember >= 0) FailAt(1052, place);
    class_->defaultMember = index;
  }
  const bool isInitialize = SameName(names_.Spelling(procedure->name), "Class_Initialize");
  const bool isTerminate = SameName(names_.Spelling(procedure->name), "Class_Terminate");
  if ((isInitialize || isTerminate) && procedure->parameterCount > 0) FailAt(1053, place);
  if (isInitialize) class_->initialize = procedure;
  if (isTerminate) class_->terminate = procedure;
}

// Let and Set take the arguments of Get and the value.
void Compiler::CheckProperty(const ClassType::Member& member, const Token& place) const {
  const int get = member.get ? member.get->parameterCount : -1;
  const int let = member.let ? member.let->parameterCount - 1 : -1;
  const int set = member.set ? member.set->parameterCount - 1 : -1;
  const auto differ = [](int left, int right) { return left >= 0 && right >= 0 && left != right; };
  if (differ(get, let) || differ(get, set) || differ(let, set)) FailAt(1051, place);
}

}  // namespace tessary::script
