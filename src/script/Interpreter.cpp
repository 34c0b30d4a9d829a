#include "script/Interpreter.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

#include "script/Conversions.h"
#include "script/ScriptError.h"

namespace tessary::script {

// Runs until the frames above `base` are done; the result of the lowest of them.
Value Interpreter::Run(std::size_t base) {
  const std::size_t outerBase = std::exchange(base_, base);
  for (;;) {
    try {
      while (frames_.size() > base) {
        const Instruction& instruction = *next_++;
        (this->*kHandlers[static_cast<std::size_t>(instruction.op)])(instruction);
      }
      base_ = outerBase;
      return std::move(result_);
    } catch (ScriptError& error) {
      if (Recover(error, base)) continue;
      base_ = outerBase;
      throw;
    } catch (const std::bad_alloc&) {
      ScriptError error(kOutOfMemory, std::string(ErrorText(kOutOfMemory)));
      if (Recover(error, base)) continue;
      base_ = outerBase;
      throw error;
    } catch (const Quit&) {
      while (frames_.size() > base) Leave();
      base_ = outerBase;
      throw;
    }
  }
}

// Finds the frame that goes on after errors and prepares it; false if there is none above `base`, which are
// gone then.
bool Interpreter::Recover(ScriptError& error, std::size_t base) {
  if (error.line == 0) Locate(error);
  while (frames_.size() > base) {
    DropTo(frame_->operands);
    if (frame_->resumeNext) {
      err_->Set(error);
      const std::vector<Statement>& statements = frame_->code->statements;
      const auto failed = static_cast<std::int32_t>(next_ - frame_->code->instructions.data()) - 1;
      const auto following = std::ranges::upper_bound(statements, failed, {}, &Statement::start);
      const std::int32_t resume = following == statements.begin() ? -1 : std::prev(following)->resume;
      // The last statement of a code is its return, which does not fail.
      GoTo(resume >= 0 ? resume : following->start);
      return true;
    }
    Leave();
  }
  return false;
}

// The statement that runs.
void Interpreter::Locate(ScriptError& error) const {
  const Code& code = *frame_->code;
  const auto at = static_cast<std::int32_t>(next_ - code.instructions.data()) - 1;
  const auto following = std::ranges::upper_bound(code.statements, at, {}, &Statement::start);
  if (following == code.statements.begin()) return;
  error.line = std::prev(following)->line;
  error.column = std::prev(following)->column;
  error.text = code.source->Line(error.line);
  error.origin = code.source->origin;
  if (error.source.empty()) error.source = "Microsoft VBScript runtime error";
}

// Empties the operands down to `top`, those included that an interrupted instruction left behind its end.
void Interpreter::DropTo(Value* top) noexcept {
  Value* const end = frame_->operands + frame_->code->maxStack;
  for (Value* operand = end; operand-- > top;) *operand = Value();
  top_ = top;
}

// Begins a procedure. The frame that runs goes on behind it with the operands below `returnTop`; the arguments
// are moved away from where they stand.
void Interpreter::Enter(const Ref<Code>& code, Ref<ClassInstance> me, Value* arguments, std::size_t count,
                        Value* returnTop, bool discard) {
  if (static_cast<int>(frames_.size()) >= kMaxCalls) Raise(kOutOfStack);
  if (count != static_cast<std::size_t>(code->parameterCount))
    Raise(kWrongArguments, names_.Spelling(code->name));
  const ValueStack::Mark mark = stack_.mark();
  Value* const slots = stack_.Allocate(code->slots.size() + static_cast<std::size_t>(code->maxStack));
  try {
    BindArguments(*code, slots, arguments);
    for (const FixedArray& array : code->arrays) {
      if (code->kind != Code::Kind::Main && code->kind != Code::Kind::Fragment)
        slots[array.place] = MakeArray(array);
    }
  } catch (...) {
    std::fill_n(slots, code->slots.size(), Value());
    stack_.Release(mark);
    throw;
  }
  if (frame_) {
    frame_->next = next_;
    frame_->top = returnTop;
  }
  Frame& frame = frames_.emplace_back();
  frame.code = code;
  frame.me = std::move(me);
  frame.slots = slots;
  frame.operands = slots + code->slots.size();
  frame.mark = mark;
  frame.discard = discard;
  frame_ = &frame;
  next_ = code->instructions.data();
  top_ = frame.operands;
}

void Interpreter::BindArguments(const Code& code, Value* slots, Value* arguments) {
  for (std::size_t i = 0; i < static_cast<std::size_t>(code.parameterCount); ++i) {
    Value& argument = arguments[i];
    if (!code.byValue[i]) {
      slots[i] = std::move(argument);
    } else {
      slots[i] = ForAssignment(argument.Target(), kRaw);
      argument = Value();
    }
  }
}

// Ends the frame that runs. What its slots held goes first, while its memory still counts as taken: their
// Class_Terminate may run procedures.
void Interpreter::Leave() noexcept {
  DropTo(frame_->operands);
  const std::size_t count = frame_->code->slots.size();
  for (std::size_t i = 0; i < count; ++i) frame_->slots[i] = Value();
  frame_->dynamic.reset();
  Ref<ClassInstance> me = std::move(frame_->me);
  stack_.Release(frame_->mark);
  const Ref<Code> code = std::move(frame_->code);
  frames_.pop_back();
  frame_ = frames_.empty() ? nullptr : &frames_.back();
  next_ = frame_ ? frame_->next : nullptr;
  top_ = frame_ ? frame_->top : nullptr;
}

void Interpreter::Return(const Instruction&) {
  const int slot = frame_->code->returnSlot;
  const bool discard = frame_->discard;
  const bool isLowest = frames_.size() == base_ + 1;
  Value result = slot >= 0 ? std::move(frame_->slots[slot]) : Value();
  Leave();
  if (isLowest) {
    result_ = std::move(result);
  } else if (!discard) {
    Push(std::move(result));
  }
}

// Runs a procedure to its end, from native code that itself runs inside an instruction.
Value Interpreter::RunNested(const Ref<Code>& code, Ref<ClassInstance> me, Value* arguments, std::size_t count,
                             Frame* host) {
  if (nestedRuns_ >= kMaxNestedRuns) Raise(kOutOfStack);
  struct Level {
    explicit Level(int& depth) : depth_(depth) { ++depth_; }
    ~Level() { --depth_; }
    int& depth_;
  } level(nestedRuns_);
  const std::size_t base = frames_.size();
  Enter(code, std::move(me), arguments, count, top_, false);
  frame_->host = host;
  return Run(base);
}

}  // namespace tessary::script
