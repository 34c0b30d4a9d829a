#include <algorithm>
#include <array>
#include <utility>

#include "script/Conversions.h"
#include "script/Interpreter.h"
#include "script/ScriptError.h"
#include "script/library/Library.h"

namespace tessary::script {

// Ends an instruction that called something: its operands from `newTop` on go, the result comes if somebody
// takes it.
void Interpreter::Finish(const Instruction& instruction, Value* newTop, Value result) {
  DropTo(newTop);
  if ((instruction.flags & kStatement) == 0) Push(std::move(result));
}

void Interpreter::CallName(const Instruction& instruction) {
  const Meaning meaning = Find(instruction);
  Value* const arguments = top_ - instruction.count;
  if (meaning.variable && !meaning.isUndefined) {
    const bool isPlainArray = meaning.variable->Is(Type::Array) && (instruction.flags & kStatement) == 0;
    if (isPlainArray) {
      const Array& array = meaning.variable->array();
      const std::size_t element = ElementOf(array, arguments, static_cast<std::size_t>(instruction.count));
      Finish(instruction, arguments, array.elements()[element]);
    } else if (meaning.variable->Is(Type::Object)) {
      IndexValue(instruction, *meaning.variable, arguments);
    } else {
      Raise(kTypeMismatch, SpellingIn(instruction));
    }
    return;
  }
  CallMeaning(instruction, meaning);
}

void Interpreter::CallMeaning(const Instruction& instruction, const Meaning& meaning) {
  const auto count = static_cast<std::size_t>(instruction.count);
  Value* const arguments = top_ - count;
  if (meaning.procedure) {
    Enter(*meaning.procedure, nullptr, arguments, count, arguments, (instruction.flags & kStatement) != 0);
  } else if (meaning.native) {
    CallNative(*meaning.native, instruction);
  } else if (meaning.member) {
    CallMember(*frame_->me, *meaning.member, instruction, arguments);
  } else {
    if (frame_->code->explicitNames) RaiseUndefined(instruction);
    Raise(kTypeMismatch, SpellingIn(instruction));
  }
}

void Interpreter::PlainArguments(Value* arguments, std::size_t count, bool takesObjects) {
  for (std::size_t i = 0; i < count; ++i) {
    if (arguments[i].IsReference()) arguments[i] = Value(arguments[i].Target());
    if (!takesObjects) MakePlain(arguments[i]);
  }
}

void Interpreter::CallNative(const NativeFunction& function, const Instruction& instruction) {
  const auto count = static_cast<std::size_t>(instruction.count);
  Value* const arguments = top_ - count;
  if (instruction.count < function.minArguments ||
      (function.maxArguments >= 0 && instruction.count > function.maxArguments)) {
    Raise(kWrongArguments, function.name);
  }
  PlainArguments(arguments, count, function.takesObjects);
  Value result;
  try {
    result = function.call(*this, {arguments, count});
  } catch (ScriptError& error) {
    if (error.line == 0 && (error.detail.empty() || error.detail[0] == '[')) error.detail = function.name;
    throw;
  }
  Finish(instruction, arguments, std::move(result));
}

// As an argument: an element of an array variable goes by reference.
void Interpreter::CallReference(const Instruction& instruction) {
  const Meaning meaning = Find(instruction);
  if (!meaning.variable || meaning.isUndefined || !meaning.variable->Is(Type::Array))
    return CallName(instruction);
  Value* const arguments = top_ - instruction.count;
  const std::size_t element =
      ElementOf(meaning.variable->array(), arguments, static_cast<std::size_t>(instruction.count));
  Value reference = Value::ReferenceTo(meaning.variable->MutableArray(), element);
  DropTo(arguments);
  Push(std::move(reference));
}

std::size_t Interpreter::ElementOf(const Array& array, Value* arguments, std::size_t count) {
  std::array<std::int32_t, kMaxDimensions> indices;
  if (count > indices.size()) Raise(kSubscript);
  for (std::size_t i = 0; i < count; ++i) {
    const Value& index = arguments[i].Target();
    const bool isWhole = index.Is(Type::Integer) || index.Is(Type::Long);
    indices[i] = isWhole ? static_cast<std::int32_t>(index.whole()) : ToLong(Plain(index));
  }
  return array.Position(indices.data(), count);
}

// base(arguments) as a value. The operands from the arguments on go, and with Index the base below them.
// The base is a copy, since the call may release the original.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void Interpreter::IndexValue(const Instruction& instruction, Value base, Value* arguments) {
  const auto count = static_cast<std::size_t>(instruction.count);
  Value* const newTop =
      instruction.op == Op::Call || instruction.op == Op::CallReference ? arguments : arguments - 1;
  if (base.Is(Type::Array)) {
    const std::size_t element = ElementOf(base.array(), arguments, count);
    return Finish(instruction, newTop, base.array().elements()[element]);
  }
  Object& object = RequireObject(base);
  if (auto* reference = dynamic_cast<ProcedureReference*>(&object)) {
    if (newTop < arguments) *newTop = Value();
    return Enter(reference->procedure(), nullptr, arguments, count, newTop,
                 (instruction.flags & kStatement) != 0);
  }
  PlainArguments(arguments, count, true);
  Finish(instruction, newTop, object.Get(*this, {}, {arguments, count}));
}

void Interpreter::Index(const Instruction& instruction) {
  Value* const arguments = top_ - instruction.count;
  const Value& base = arguments[-1].Target();
  if (!base.Is(Type::Array) && !base.Is(Type::Object)) Raise(kTypeMismatch, Describe(base));
  IndexValue(instruction, base, arguments);
}

// base(arguments) = value; the value stands behind the arguments.
void Interpreter::StoreElement(Value& base, const Instruction& instruction, Value* arguments) {
  const auto count = static_cast<std::size_t>(instruction.count);
  if (base.Is(Type::Array)) {
    Value value = ForAssignment(std::move(arguments[count]), instruction.flags);
    const std::size_t element = ElementOf(base.array(), arguments, count);
    base.MutableArray().elements()[element] = std::move(value);
    return;
  }
  if (!base.Is(Type::Object)) Raise(kTypeMismatch, Describe(base));
  const Value holder = base;
  PlainArguments(arguments, count, true);
  RequireObject(holder).Put(*this, {}, {arguments, count}, arguments[count], (instruction.flags & kSet) != 0);
}

void Interpreter::StoreIndexed(const Instruction& instruction) {
  Value* const arguments = top_ - instruction.count - 1;
  const Meaning meaning = Find(instruction);
  if (meaning.member) {
    AssignMember(*frame_->me, *meaning.member, instruction, arguments);
    return;
  }
  if (meaning.isUndefined) {
    if (frame_->code->explicitNames) RaiseUndefined(instruction);
    Raise(kTypeMismatch, SpellingIn(instruction));
  }
  if (!meaning.variable) Raise(kIllegalAssignment, SpellingIn(instruction));
  StoreElement(*meaning.variable, instruction, arguments);
  DropTo(arguments);
}

void Interpreter::StoreIndex(const Instruction& instruction) {
  Value* const arguments = top_ - instruction.count - 1;
  StoreElement(arguments[-1].Target(), instruction, arguments);
  DropTo(arguments - 1);
}

Object& Interpreter::RequireObject(const Value& value) const {
  if (!value.Is(Type::Object)) Raise(kObjectRequired, Describe(value));
  if (value.IsNothing()) Raise(kObjectNotSet);
  return *value.object();
}

// The object whose member an instruction is about. An error names the variable that it came from, if that is
// what the instruction before has loaded.
Object& Interpreter::HolderOf(const Instruction& instruction, const Value& value) const {
  const Instruction& before = *(&instruction - 1);
  const bool isOwner = value.Is(Type::Object) && !value.IsNothing();
  if (!isOwner && instruction.count == 0 && before.op == Op::Load && NameIn(before) != 0) {
    Raise(value.IsNothing() ? kObjectNotSet : kObjectRequired, SpellingIn(before));
  }
  return RequireObject(value);
}

void Interpreter::Member(const Instruction& instruction) {
  const auto count = static_cast<std::size_t>(instruction.count);
  Value* const arguments = top_ - count;
  Object& object = HolderOf(instruction, arguments[-1]);
  if (auto* instance = dynamic_cast<ClassInstance*>(&object)) {
    CallMember(*instance, MemberOf(*instance, static_cast<NameId>(instruction.a)), instruction, arguments);
    return;
  }
  PlainArguments(arguments, count, true);
  Value result = object.Get(*this, names_.Spelling(static_cast<NameId>(instruction.a)), {arguments, count});
  Finish(instruction, arguments - 1, std::move(result));
}

const ClassType::Member& Interpreter::MemberOf(ClassInstance& instance, NameId name) const {
  const ClassType::Member* const member = instance.type().Find(name);
  const bool isInside = frame_ && frame_->me && &frame_->me->type() == &instance.type();
  if (!member || !(member->isPublic || isInside)) Raise(kNoSuchMember, names_.Spelling(name));
  return *member;
}

// Reads or calls a member of an instance; the instance stands below the arguments if the instruction is
// Op::Member.
void Interpreter::CallMember(ClassInstance& instance, const ClassType::Member& member,
                             const Instruction& instruction, Value* arguments) {
  Value* const newTop = instruction.op == Op::Member ? arguments - 1 : arguments;
  const auto count = static_cast<std::size_t>(instruction.count);
  if (member.field >= 0) {
    const Value& field = instance.fields()[static_cast<std::size_t>(member.field)];
    if (count == 0) return Finish(instruction, newTop, field);
    if (field.Is(Type::Object) || field.Is(Type::Array)) return IndexValue(instruction, field, arguments);
    Raise(kTypeMismatch, names_.Spelling(member.name));
  }
  if (!member.get) Raise(kNoSuchMember, names_.Spelling(member.name));
  Ref<ClassInstance> me(&instance);
  if (newTop < arguments) *newTop = Value();
  Enter(member.get, std::move(me), arguments, count, newTop, (instruction.flags & kStatement) != 0);
}

void Interpreter::StoreMember(const Instruction& instruction) {
  const auto count = static_cast<std::size_t>(instruction.count);
  Value* const arguments = top_ - count - 1;
  Object& object = HolderOf(instruction, arguments[-1]);
  if (auto* instance = dynamic_cast<ClassInstance*>(&object)) {
    AssignMember(*instance, MemberOf(*instance, static_cast<NameId>(instruction.a)), instruction, arguments);
    return;
  }
  PlainArguments(arguments, count, true);
  object.Put(*this, names_.Spelling(static_cast<NameId>(instruction.a)), {arguments, count}, arguments[count],
             (instruction.flags & kSet) != 0);
  DropTo(arguments - 1);
}

// Assigns to a member of an instance; the value stands behind the arguments.
void Interpreter::AssignMember(ClassInstance& instance, const ClassType::Member& member,
                               const Instruction& instruction, Value* arguments) {
  Value* const newTop = instruction.op == Op::StoreMember ? arguments - 1 : arguments;
  const auto count = static_cast<std::size_t>(instruction.count);
  const bool isSet = (instruction.flags & kSet) != 0;
  if (member.field >= 0) {
    Value& field = instance.fields()[static_cast<std::size_t>(member.field)];
    if (count == 0) {
      field = ForAssignment(std::move(arguments[0]), instruction.flags);
    } else {
      StoreElement(field, instruction, arguments);
    }
    return DropTo(newTop);
  }
  const Ref<Code>& code = isSet ? member.set : member.let;
  if (!code) {
    const bool isMethod = member.get && member.get->kind < Code::Kind::PropertyGet;
    Raise(isMethod ? kWrongArguments : kNoSuchMember, names_.Spelling(member.name));
  }
  if (isSet && !arguments[count].Is(Type::Object)) Raise(kObjectRequired, Describe(arguments[count]));
  Ref<ClassInstance> me(&instance);
  if (newTop < arguments) *newTop = Value();
  Enter(code, std::move(me), arguments, count + 1, newTop, true);
}

void Interpreter::New(const Instruction& instruction) {
  const Ref<ClassType> type = At(instruction.a).type;
  if (!type) {
    const std::string_view name = names_.Spelling(static_cast<NameId>(instruction.a));
    const Ref<Object> object = NewLibraryObject(*this, name);
    if (!object) Raise(506, name);
    return Push(Value::Of(object));
  }
  const auto instance = Make<ClassInstance>(static_cast<InstanceOwner&>(*this), type, instances_);
  Push(Value::Of(Ref<Object>(instance)));
  if (type->initialize) Enter(type->initialize, instance, top_, 0, top_, true);
}

void Interpreter::Me(const Instruction&) {
  if (!frame_->me) Raise(kObjectRequired, "Me");
  Push(Value::Of(Ref<Object>(frame_->me)));
}

}  // namespace tessary::script
