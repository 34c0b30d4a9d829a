#include <utility>

#include "script/Conversions.h"
#include "script/Interpreter.h"
#include "script/ScriptError.h"

namespace tessary::script {

Interpreter::Global& Interpreter::GlobalFor(NameId name) {
  if (name >= globals_.size()) globals_.resize(names_.size());
  return globals_[name];
}

// For error messages.
NameId Interpreter::NameIn(const Instruction& instruction) const {
  const auto index = static_cast<std::size_t>(instruction.a);
  switch (instruction.space) {
    case Space::Local:
      return frame_->code->slots[index];
    case Space::Field:
      for (const ClassType::Member& member : frame_->code->owner->members) {
        if (member.field == instruction.a) return member.name;
      }
      return 0;
    case Space::Method:
      return frame_->code->owner->members[index].name;
    default:
      return static_cast<NameId>(instruction.a);
  }
}

Interpreter::Meaning Interpreter::MeaningOf(Global& global) {
  Meaning meaning;
  switch (global.kind) {
    case Global::Kind::Undefined:
      meaning.isUndefined = true;
      break;
    case Global::Kind::Constant:
      meaning.isConstant = true;
      [[fallthrough]];
    case Global::Kind::Variable:
      meaning.variable = &global.value;
      break;
    case Global::Kind::Procedure:
      meaning.procedure = &global.procedure;
      break;
    case Global::Kind::Native:
      meaning.native = global.native;
      break;
  }
  return meaning;
}

Interpreter::Meaning Interpreter::FindGlobal(const Instruction& instruction) {
  Meaning meaning = MeaningOf(At(instruction.a));
  if (meaning.isUndefined && instruction.b >= 0) {
    meaning.variable = &frame_->slots[instruction.b].Target();
    // ReDim declares what it fills.
    meaning.isUndefined = frame_->code->explicitNames && meaning.variable->Is(Type::Empty);
  }
  return meaning;
}

// In the procedure around the fragment that runs, then in what Execute declared there, then in its class, then
// global.
Interpreter::Meaning Interpreter::FindDynamic(const Instruction& instruction) {
  const auto name = static_cast<NameId>(instruction.a);
  Meaning meaning;
  Frame* const host = frame_->host;
  if (!host) return MeaningOf(At(instruction.a));
  const std::vector<NameId>& slots = host->code->slots;
  const bool isCall = instruction.op == Op::Call || instruction.op == Op::CallReference;
  for (std::size_t i = 0; i < slots.size(); ++i) {
    const bool callsItself = isCall && static_cast<int>(i) == host->code->returnSlot;
    if (slots[i] != name || callsItself) continue;
    meaning.variable = &host->slots[i].Target();
    // A name that the procedure never declared may well be a global.
    const bool isDeclared = i < static_cast<std::size_t>(host->code->firstFallback);
    if (isDeclared || At(instruction.a).kind == Global::Kind::Undefined) return meaning;
  }
  if (host->dynamic) {
    if (const auto found = host->dynamic->find(name); found != host->dynamic->end()) {
      meaning.variable = &found->second;
      return meaning;
    }
  }
  if (host->me) {
    if (const ClassType::Member* member = host->me->type().Find(name)) {
      if (member->field < 0) {
        meaning.member = member;
      } else {
        meaning.variable = &host->me->fields()[static_cast<std::size_t>(member->field)];
      }
      return meaning;
    }
  }
  return MeaningOf(At(instruction.a));
}

Interpreter::Meaning Interpreter::Find(const Instruction& instruction) {
  Meaning meaning;
  switch (instruction.space) {
    case Space::Local:
      meaning.variable = &frame_->slots[instruction.a].Target();
      return meaning;
    case Space::Field:
      meaning.variable = &frame_->me->fields()[static_cast<std::size_t>(instruction.a)];
      return meaning;
    case Space::Method:
      meaning.member = &frame_->code->owner->members[static_cast<std::size_t>(instruction.a)];
      return meaning;
    case Space::Global:
      return FindGlobal(instruction);
    default:
      return FindDynamic(instruction);
  }
}

// The variable to write; an undefined one is made.
Value& Interpreter::Variable(const Instruction& instruction, const Meaning& meaning) {
  if (meaning.isUndefined) {
    if (frame_->code->explicitNames && instruction.op != Op::ReDim) RaiseUndefined(instruction);
    if (meaning.variable) return *meaning.variable;
    if (frame_->host) {
      if (!frame_->host->dynamic) frame_->host->dynamic = std::make_unique<DynamicScope>();
      return (*frame_->host->dynamic)[static_cast<NameId>(instruction.a)];
    }
    Global& global = At(instruction.a);
    global.kind = Global::Kind::Variable;
    return global.value;
  }
  if (!meaning.variable || meaning.isConstant) Raise(kIllegalAssignment, SpellingIn(instruction));
  return *meaning.variable;
}

Value& Interpreter::Writable(const Instruction& instruction) {
  if (instruction.space == Space::Local) return frame_->slots[instruction.a].Target();
  return Variable(instruction, Find(instruction));
}

void Interpreter::RaiseUndefined(const Instruction& instruction) const {
  Raise(kUndefinedVariable, SpellingIn(instruction));
}

// A value as an assignment stores it: by Set an object, otherwise what an object stands for. An array whose
// elements are on loan is copied, for its owner may still change it in place.
Value Interpreter::ForAssignment(Value value, std::uint8_t flags) {
  if ((flags & kSet) != 0) {
    if (!value.Is(Type::Object)) Raise(kObjectRequired, Describe(value));
  } else if (value.Is(Type::Object) && (flags & kRaw) == 0) {
    return ForAssignment(Plain(value), flags);
  } else if (value.Is(Type::Array) && value.array().locked()) {
    return Value::Of(value.array().Copy());
  }
  return value;
}

void Interpreter::Load(const Instruction& instruction) {
  if (instruction.space == Space::Local) return Push(frame_->slots[instruction.a].Target());
  const Meaning meaning = Find(instruction);
  if (meaning.isUndefined) {
    if (frame_->code->explicitNames) RaiseUndefined(instruction);
    Push(Value());
  } else if (meaning.variable) {
    Push(*meaning.variable);
  } else {
    CallMeaning(instruction, meaning);
  }
}

void Interpreter::LoadReference(const Instruction& instruction) {
  if (instruction.space == Space::Local) {
    Value& slot = frame_->slots[instruction.a];
    Push(slot.IsReference() ? slot : Value::ReferenceTo(slot));
    return;
  }
  const Meaning meaning = Find(instruction);
  if (meaning.isConstant) {
    Push(*meaning.variable);
  } else if (meaning.variable || meaning.isUndefined) {
    Push(Value::ReferenceTo(Variable(instruction, meaning)));
  } else {
    CallMeaning(instruction, meaning);
  }
}

void Interpreter::Store(const Instruction& instruction) {
  const Meaning meaning = Find(instruction);
  if (meaning.member) {
    AssignMember(*frame_->me, *meaning.member, instruction, top_ - 1);
    return;
  }
  Value& variable = Variable(instruction, meaning);
  if (top_[-1].type() < Type::Object && (instruction.flags & kSet) == 0) {
    variable = std::move(*--top_);
    return;
  }
  Value value = ForAssignment(Pop(), instruction.flags);
  variable = std::move(value);
}

void Interpreter::AppendTo(const Instruction& instruction) {
  const Meaning meaning = Find(instruction);
  Value& old = top_[-2];
  Value& tail = top_[-1];
  MakePlain(tail);
  const bool inPlace = old.Is(Type::String) && meaning.variable && !meaning.isConstant &&
                       meaning.variable->Is(Type::String) && &meaning.variable->text() == &old.text();
  if (inPlace) {
    const std::string* text = tail.Is(Type::String) ? &tail.string() : nullptr;
    const std::string converted = text || tail.Is(Type::Null) ? std::string() : ToText(tail);
    old = Value();  // now the variable's may be the one reference
    meaning.variable->MutableText().Append(text ? *text : converted);
    tail = Value();
    top_ -= 2;
    return;
  }
  MakePlain(old);
  old = Concatenate(old, tail);
  tail = Value();
  --top_;
  Store(instruction);
}

void Interpreter::ReDim(const Instruction& instruction) {
  std::vector<std::int32_t> bounds;
  for (Value* bound = top_ - instruction.count; bound < top_; ++bound) bounds.push_back(ToLong(Plain(*bound)));
  DropTo(top_ - instruction.count);
  Value& variable = Writable(instruction);
  if (!variable.Is(Type::Array)) {
    variable = Value::Of(Make<Array>(bounds));
    return;
  }
  if (variable.array().fixed() || variable.array().locked()) Raise(kArrayLocked, SpellingIn(instruction));
  if ((instruction.flags & kPreserve) != 0) {
    variable.MutableArray().Resize(bounds);
  } else {
    variable = Value::Of(Make<Array>(bounds));
  }
}

void Interpreter::Erase(const Instruction&) {
  const Value reference = Pop();
  Value& variable = const_cast<Value&>(reference.Target());
  if (!variable.Is(Type::Array)) Raise(kTypeMismatch, Describe(variable));
  if (variable.array().fixed()) {
    for (Value& element : variable.MutableArray().elements()) element = Value();
    return;
  }
  if (variable.array().locked()) Raise(kArrayLocked);
  variable = Value::Of(Make<Array>());
}

}  // namespace tessary::script
