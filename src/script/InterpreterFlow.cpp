#include <utility>

#include "script/Conversions.h"
#include "script/Interpreter.h"
#include "script/ScriptError.h"

namespace tessary::script {

namespace {

// Where a For Each stands.
class Walk final : public Object {
 public:
  explicit Walk(std::unique_ptr<Enumerator> items) : items_(std::move(items)) {}
  bool Next(Value& item) { return items_->Next(item); }
  [[nodiscard]] std::string ClassName() const override { return "Object"; }
  Value Get(Context&, std::string_view, std::span<Value>) override { Raise(kNoSuchMember); }
  void Put(Context&, std::string_view, std::span<Value>, const Value&, bool) override { Raise(kNoSuchMember); }

 private:
  std::unique_ptr<Enumerator> items_;
};

// Keeps the array in shape until the walk is over.
class ArrayWalk final : public Enumerator {
 public:
  explicit ArrayWalk(Array& array) : array_(&array) { array.Lock(); }
  ~ArrayWalk() override { array_->Unlock(); }
  bool Next(Value& item) override {
    if (next_ >= array_->elements().size()) return false;
    item = array_->elements()[next_++];
    return true;
  }

 private:
  Ref<Array> array_;
  std::size_t next_ = 0;
};

bool IsShort(const Value& value) { return value.Is(Type::Integer) || value.Is(Type::Long); }

Value SumOfShorts(const Value& left, const Value& right) {
  const std::int64_t sum = left.whole() + right.whole();
  const bool isLong = left.Is(Type::Long) || right.Is(Type::Long);
  if (isLong && sum == static_cast<std::int32_t>(sum)) return Value::Long(static_cast<std::int32_t>(sum));
  return Value::Whole(sum);
}

template <typename Number>
bool Holds(Comparison comparison, Number left, Number right) {
  switch (comparison) {
    case Comparison::Equal:
      return left == right;
    case Comparison::NotEqual:
      return left != right;
    case Comparison::Less:
      return left < right;
    case Comparison::LessOrEqual:
      return left <= right;
    case Comparison::Greater:
      return left > right;
    case Comparison::GreaterOrEqual:
      break;
  }
  return left >= right;
}

}  // namespace

void Interpreter::MakePlain(Value& value) {
  if (value.Is(Type::Object)) value = Plain(value);
}

template <Value (*operation)(const Value&, const Value&)>
void Interpreter::Binary(const Instruction&) {
  MakePlain(top_[-2]);
  MakePlain(top_[-1]);
  top_[-2] = operation(top_[-2], top_[-1]);
  top_[-1] = Value();
  --top_;
}

template <Value (*operation)(const Value&)>
void Interpreter::Unary(const Instruction&) {
  MakePlain(top_[-1]);
  top_[-1] = operation(top_[-1]);
}

void Interpreter::AddFast(const Instruction& instruction) {
  Value& left = top_[-2];
  const Value& right = top_[-1];
  if (IsShort(left) && IsShort(right)) {
    left = SumOfShorts(left, right);
    --top_;
  } else {
    Binary<Add>(instruction);
  }
}

void Interpreter::CompareFast(const Instruction& instruction) {
  const auto comparison = static_cast<Comparison>(instruction.a);
  Value& left = top_[-2];
  Value& right = top_[-1];
  if (IsShort(left) && IsShort(right)) {
    left = Value::Boolean(Holds(comparison, left.whole(), right.whole()));
    --top_;
    return;
  }
  MakePlain(left);
  MakePlain(right);
  left = Compare(comparison, static_cast<Literal>(instruction.b), left, right);
  right = Value();
  --top_;
}

void Interpreter::Constant(const Instruction& instruction) {
  Push(frame_->code->constants[static_cast<std::size_t>(instruction.a)]);
}

void Interpreter::PlainTop(const Instruction&) { MakePlain(top_[-1]); }

void Interpreter::IsSame(const Instruction&) {
  const Value right = Pop();
  const Value left = Pop();
  if (!left.Is(Type::Object)) Raise(kObjectRequired, Describe(left));
  if (!right.Is(Type::Object)) Raise(kObjectRequired, Describe(right));
  Push(Value::Boolean(left.object() == right.object()));
}

void Interpreter::Jump(const Instruction& instruction) { GoTo(instruction.a); }

// Takes a condition off the stack; Null is not true.
bool Interpreter::Condition() {
  if (top_[-1].Is(Type::Boolean)) return (--top_)->boolean();
  MakePlain(top_[-1]);
  const Value condition = Pop();
  return !condition.Is(Type::Null) && ToBoolean(condition);
}

void Interpreter::JumpIfFalse(const Instruction& instruction) {
  if (!Condition()) GoTo(instruction.a);
}

void Interpreter::JumpIfTrue(const Instruction& instruction) {
  if (Condition()) GoTo(instruction.a);
}

void Interpreter::CaseJump(const Instruction& instruction) {
  MakePlain(top_[-1]);
  const Value test = Pop();
  const Value subject = Pop();
  const Value equal = Compare(Comparison::Equal, static_cast<Literal>(instruction.b), subject, test);
  if (!equal.Is(Type::Null) && equal.boolean()) GoTo(instruction.a);
}

void Interpreter::ForPrepare(const Instruction& instruction) {
  for (Value* operand = top_ - 3; operand < top_; ++operand) {
    MakePlain(*operand);
    *operand = ToNumber(*operand);
    if (operand->Is(Type::Boolean)) *operand = Value::Integer(operand->boolean() ? -1 : 0);
  }
  Value* const slots = frame_->slots + instruction.count;
  slots[1] = Pop();
  slots[0] = Pop();
}

bool Interpreter::WithinLimit(const Value& counter, const Value* limitAndStep) const {
  const Value& limit = limitAndStep[0];
  const Value& step = limitAndStep[1];
  if (IsShort(counter) && IsShort(limit) && IsShort(step)) {
    return step.whole() < 0 ? counter.whole() >= limit.whole() : counter.whole() <= limit.whole();
  }
  const Comparison comparison = ToDouble(step) < 0 ? Comparison::GreaterOrEqual : Comparison::LessOrEqual;
  return Compare(comparison, Literal::None, counter, limit).boolean();
}

void Interpreter::ForTest(const Instruction& instruction) {
  const Value counter = Pop();
  if (!WithinLimit(counter, frame_->slots + instruction.count)) GoTo(instruction.a);
}

void Interpreter::ForNext(const Instruction& instruction) {
  const Instruction& operands = *next_++;
  const Value* const limitAndStep = frame_->slots + operands.a;
  if (limitAndStep[0].Is(Type::Empty)) Raise(kForNotInitialized);
  Value& variable = Writable(instruction);
  const Value& step = limitAndStep[1];
  if (IsShort(variable) && IsShort(step)) {
    variable = SumOfShorts(variable, step);
  } else {
    Value sum = Add(ToNumber(Plain(variable)), step);
    variable = std::move(sum);
  }
  if (WithinLimit(variable, limitAndStep)) GoTo(operands.b);
}

void Interpreter::EachPrepare(const Instruction& instruction) {
  Value collection = Pop();
  Value& target = collection.Target();
  std::unique_ptr<Enumerator> items;
  if (target.Is(Type::Array)) {
    items = std::make_unique<ArrayWalk>(target.MutableArray());
  } else if (target.Is(Type::Object)) {
    if (target.IsNothing()) Raise(kObjectNotSet);
    items = target.object()->Enumerate(*this);
  } else {
    Raise(kNotACollection, Describe(target));
  }
  frame_->slots[instruction.a] = Value::Of(Ref<Object>(new Walk(std::move(items))));
}

void Interpreter::EachNext(const Instruction& instruction) {
  const Value& walk = frame_->slots[instruction.a];
  if (!walk.Is(Type::Object)) Raise(kForNotInitialized);
  Value item;
  if (static_cast<Walk*>(walk.object())->Next(item)) {
    Push(std::move(item));
  } else {
    GoTo(instruction.b);
  }
}

void Interpreter::WithPrepare(const Instruction& instruction) {
  Value object = Pop();
  if (!object.Is(Type::Object)) Raise(kObjectRequired, Describe(object));
  frame_->slots[instruction.a] = std::move(object);
}

void Interpreter::ClearSlot(const Instruction& instruction) { frame_->slots[instruction.a] = Value(); }

void Interpreter::OnErrorResumeNext(const Instruction&) {
  frame_->resumeNext = true;
  err_->Clear();
}

void Interpreter::OnErrorGoTo0(const Instruction&) {
  frame_->resumeNext = false;
  err_->Clear();
}

void Interpreter::FailNow(const Instruction& instruction) {
  if (instruction.b >= 0) Raise(instruction.a, names_.Spelling(static_cast<NameId>(instruction.b)));
  Raise(instruction.a);
}

// In the order of Op.
const Interpreter::Handler Interpreter::kHandlers[] = {
    &Interpreter::Constant,
    &Interpreter::Load,
    &Interpreter::LoadReference,
    &Interpreter::CallName,
    &Interpreter::CallReference,
    &Interpreter::Store,
    &Interpreter::StoreIndexed,
    &Interpreter::AppendTo,
    &Interpreter::Member,
    &Interpreter::StoreMember,
    &Interpreter::Index,
    &Interpreter::StoreIndex,
    &Interpreter::PlainTop,
    &Interpreter::New,
    &Interpreter::Me,
    &Interpreter::Unary<Negate>,
    &Interpreter::Unary<Not>,
    &Interpreter::AddFast,
    &Interpreter::Binary<Subtract>,
    &Interpreter::Binary<Multiply>,
    &Interpreter::Binary<Divide>,
    &Interpreter::Binary<IntegerDivide>,
    &Interpreter::Binary<Modulo>,
    &Interpreter::Binary<Power>,
    &Interpreter::Binary<Concatenate>,
    &Interpreter::Binary<And>,
    &Interpreter::Binary<Or>,
    &Interpreter::Binary<Xor>,
    &Interpreter::Binary<Eqv>,
    &Interpreter::Binary<Imp>,
    &Interpreter::CompareFast,
    &Interpreter::IsSame,
    &Interpreter::Jump,
    &Interpreter::JumpIfFalse,
    &Interpreter::JumpIfTrue,
    &Interpreter::CaseJump,
    &Interpreter::ForPrepare,
    &Interpreter::ForTest,
    &Interpreter::ForNext,
    &Interpreter::Skip,
    &Interpreter::EachPrepare,
    &Interpreter::EachNext,
    &Interpreter::WithPrepare,
    &Interpreter::ClearSlot,
    &Interpreter::ReDim,
    &Interpreter::Erase,
    &Interpreter::OnErrorResumeNext,
    &Interpreter::OnErrorGoTo0,
    &Interpreter::Return,
    &Interpreter::FailNow,
};
}  // namespace tessary::script
