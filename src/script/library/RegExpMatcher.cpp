#include "script/library/RegExpMatcher.h"

#include <algorithm>

#include "script/library/Utf16.h"

namespace tessary::script {
namespace {

using Op = RegExpOp;

// A second of work. Honest patterns need a few steps for each unit of the text; nested repetitions can need
// more steps than there are atoms.
constexpr std::size_t kMaxSteps = 100'000'000;
constexpr std::size_t kStepsPerUnit = 100;
// 128 MB: two entries for each unit of a text of four million units.
constexpr std::size_t kMaxStack = 8'000'000;
// A run passes over its units much faster than the instructions come along.
constexpr std::size_t kUnitsPerStep = 16;

bool IsWordUnit(char16_t unit) {
  return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z') ||
         unit == u'_';
}

bool IsLineBreak(char16_t unit) { return unit == u'\n' || unit == u'\r'; }

bool TakesOneUnit(Op op) { return op <= Op::Set; }

}  // namespace

RegExpMatcher::RegExpMatcher(const RegExpProgram& program, std::u16string_view text)
    : program_(program),
      text_(text),
      registers_(program.registers),
      budget_(kMaxSteps + kStepsPerUnit * text.size()) {}

bool RegExpMatcher::Search(std::size_t from) {
  const bool anchored = program_.code.front().op == Op::LineStart && !program_.code.front().flag;
  for (std::size_t start = from; start <= text_.size(); ++start) {
    if (anchored && start > 0) break;
    if (CouldStartAt(start) && MatchAt(static_cast<std::int32_t>(start))) return true;
  }
  return false;
}

bool RegExpMatcher::CouldStartAt(std::size_t position) const {
  const RegExpInstruction* first = program_.code.data();
  if (first->op == Op::Run && first->min > 0) ++first;
  return !TakesOneUnit(first->op) || (position < text_.size() && Fits(*first, text_[position]));
}

bool RegExpMatcher::MatchAt(std::int32_t start) {
  Spend(registers_.size() / kUnitsPerStep);
  std::fill(registers_.begin(), registers_.end(), -1);
  stack_.clear();
  at_ = 0;
  position_ = start;
  while (program_.code[static_cast<std::size_t>(at_)].op != Op::Accept) {
    Spend(1);
    if (!Step() && !Backtrack()) return false;
  }
  registers_[0] = start;
  registers_[1] = position_;
  return true;
}

// Carries out the current instruction and moves on; false when the text does not fit.
bool RegExpMatcher::Step() {
  const RegExpInstruction& instruction = program_.code[static_cast<std::size_t>(at_)];
  switch (instruction.op) {
    case Op::Unit:
    case Op::FoldedUnit:
    case Op::Any:
    case Op::Set:
      return TakeUnit(instruction);
    case Op::LineStart:
      ++at_;
      return IsLineStart(instruction.flag);
    case Op::LineEnd:
      ++at_;
      return IsLineEnd(instruction.flag);
    case Op::WordEdge:
      ++at_;
      return IsWordEdge() != instruction.flag;
    case Op::Save:
      Set(instruction.value, position_);
      ++at_;
      return true;
    case Op::Split:
      Push(Kind::Branch, at_ + (instruction.flag ? 1 : instruction.target), position_);
      at_ += instruction.flag ? instruction.target : 1;
      return true;
    case Op::Jump:
      at_ += instruction.target;
      return true;
    case Op::BackReference:
      return TakeBackReference(instruction);
    case Op::Look:
      Set(instruction.value, static_cast<std::int32_t>(stack_.size()) + (stack_.empty() ? 0 : 1));
      Push(Kind::Barrier, at_, position_);
      ++at_;
      return true;
    case Op::LookEnd:
      return EndLook(instruction);
    case Op::LoopStart:
      Set(instruction.value, 0);
      ++at_;
      return true;
    case Op::LoopHead:
      return TakeLoopHead(instruction);
    case Op::LoopNext:
      return TakeLoopNext(instruction);
    case Op::Run:
      return TakeRun(instruction);
    case Op::Accept:
      break;
  }
  return true;
}

bool RegExpMatcher::Fits(const RegExpInstruction& instruction, char16_t unit) const {
  switch (instruction.op) {
    case Op::Unit:
      return unit == instruction.value;
    case Op::FoldedUnit:
      return unit == instruction.value || LowerOf(unit) == instruction.value;
    case Op::Any:
      return unit != u'\n';
    default:
      return program_.sets[instruction.value].Contains(unit);
  }
}

bool RegExpMatcher::TakeUnit(const RegExpInstruction& instruction) {
  const auto position = static_cast<std::size_t>(position_);
  if (position >= text_.size() || !Fits(instruction, text_[position])) return false;
  ++position_;
  ++at_;
  return true;
}

bool RegExpMatcher::TakeRun(const RegExpInstruction& run) {
  const RegExpInstruction& unit = *(&run + 1);
  const auto start = static_cast<std::size_t>(position_);
  const std::size_t wanted = static_cast<std::size_t>(run.flag ? run.max : run.min);
  const std::size_t limit = start + std::min(wanted, text_.size() - start);
  std::size_t end = start;
  while (end < limit && Fits(unit, text_[end])) ++end;
  Spend((end - start) / kUnitsPerStep);
  if (end - start < static_cast<std::size_t>(run.min)) return false;
  const std::int32_t lowest = position_ + run.min;
  position_ = static_cast<std::int32_t>(end);
  if (run.flag && position_ > lowest) Push(Kind::GreedyRun, at_, position_, lowest);
  if (!run.flag && run.max > run.min) Push(Kind::LazyRun, at_, position_, run.max - run.min);
  at_ += 2;
  return true;
}

bool RegExpMatcher::TakeBackReference(const RegExpInstruction& instruction) {
  ++at_;
  const RegExpSpan group = Group(instruction.value);
  const auto length = static_cast<std::size_t>(group.end - group.start);
  if (group.start < 0 || length == 0) return true;
  const auto position = static_cast<std::size_t>(position_);
  if (text_.size() - position < length) return false;
  Spend(length / kUnitsPerStep);
  const auto same = [&](char16_t a, char16_t b) {
    return a == b || (instruction.flag && LowerOf(a) == LowerOf(b));
  };
  const std::u16string_view taken = text_.substr(static_cast<std::size_t>(group.start), length);
  if (!std::equal(taken.begin(), taken.end(), text_.begin() + position_, same)) return false;
  position_ += static_cast<std::int32_t>(length);
  return true;
}

bool RegExpMatcher::TakeLoopHead(const RegExpInstruction& head) {
  const std::int32_t count = registers_[head.value];
  if (count < head.min) {
    EnterLoop(head);
  } else if (count == head.max) {
    at_ += head.target;
  } else if (head.flag) {
    Push(Kind::Branch, at_ + head.target, position_);
    EnterLoop(head);
  } else {
    Push(Kind::EnterLoop, at_, position_);
    at_ += head.target;
  }
  return true;
}

void RegExpMatcher::EnterLoop(const RegExpInstruction& head) {
  Set(head.value + 1, position_);
  for (std::uint32_t save = head.firstSave; save < head.lastSave; ++save) Set(save, -1);
  ++at_;
}

// An iteration that took nothing would repeat for ever: it stands for all that are still required, and is
// refused when none is.
bool RegExpMatcher::TakeLoopNext(const RegExpInstruction& next) {
  const RegExpInstruction& head = *(&next + next.target);
  const std::int32_t count = registers_[next.value];
  const bool idle = registers_[next.value + 1] == position_;
  if (idle && count >= head.min) return false;
  Set(next.value, idle ? head.min : count + 1);
  at_ += next.target;
  return true;
}

// A look that has matched: forgets its choices, and for a negative one everything it did.
bool RegExpMatcher::EndLook(const RegExpInstruction& end) {
  const auto barrier = static_cast<std::size_t>(registers_[end.value]);
  position_ = stack_[barrier].position;
  if (end.flag) {
    while (stack_.size() > barrier) {
      const Entry entry = stack_.back();
      stack_.pop_back();
      if (entry.kind == Kind::Register) registers_[static_cast<std::size_t>(entry.where)] = entry.position;
    }
    return false;
  }
  const auto first = stack_.begin() + static_cast<std::ptrdiff_t>(barrier);
  Spend((stack_.size() - barrier) / kUnitsPerStep);
  stack_.erase(
      std::remove_if(first, stack_.end(), [](const Entry& entry) { return entry.kind != Kind::Register; }),
      stack_.end());
  ++at_;
  return true;
}

// Goes back to the youngest choice that is left; false when there is none.
bool RegExpMatcher::Backtrack() {
  while (!stack_.empty()) {
    const Entry entry = stack_.back();
    switch (entry.kind) {
      case Kind::Register:
        registers_[static_cast<std::size_t>(entry.where)] = entry.position;
        stack_.pop_back();
        break;
      case Kind::GreedyRun:
        if (ResumeGreedyRun()) return true;
        break;
      case Kind::LazyRun:
        if (ResumeLazyRun()) return true;
        break;
      case Kind::Barrier: {
        const RegExpInstruction& look = program_.code[static_cast<std::size_t>(entry.where)];
        stack_.pop_back();
        if (!look.flag) break;
        position_ = entry.position;
        at_ = entry.where + look.target + 1;
        return true;
      }
      case Kind::Branch:
      case Kind::EnterLoop:
        stack_.pop_back();
        position_ = entry.position;
        at_ = entry.where;
        if (entry.kind == Kind::EnterLoop) EnterLoop(program_.code[static_cast<std::size_t>(at_)]);
        return true;
    }
  }
  return false;
}

// Gives back one unit, or as many as it takes until what follows could fit.
bool RegExpMatcher::ResumeGreedyRun() {
  Entry& entry = stack_.back();
  const RegExpInstruction& next = program_.code[static_cast<std::size_t>(entry.where) + 2];
  const std::int32_t before = entry.position;
  std::int32_t position = before - 1;
  if (TakesOneUnit(next.op)) {
    while (position >= entry.extra && !Fits(next, text_[static_cast<std::size_t>(position)])) --position;
  }
  Spend(static_cast<std::size_t>(before - position) / kUnitsPerStep);
  at_ = entry.where + 2;
  position_ = position;
  entry.position = position;
  const bool fits = position >= entry.extra;
  if (position <= entry.extra) stack_.pop_back();
  return fits;
}

bool RegExpMatcher::ResumeLazyRun() {
  Entry& entry = stack_.back();
  const RegExpInstruction& unit = program_.code[static_cast<std::size_t>(entry.where) + 1];
  const auto position = static_cast<std::size_t>(entry.position);
  if (entry.extra == 0 || position >= text_.size() || !Fits(unit, text_[position])) {
    stack_.pop_back();
    return false;
  }
  --entry.extra;
  at_ = entry.where + 2;
  position_ = ++entry.position;
  return true;
}

bool RegExpMatcher::IsLineStart(bool multiLine) const {
  return position_ == 0 || (multiLine && IsLineBreak(text_[static_cast<std::size_t>(position_ - 1)]));
}

bool RegExpMatcher::IsLineEnd(bool multiLine) const {
  const auto position = static_cast<std::size_t>(position_);
  return position == text_.size() || (multiLine && IsLineBreak(text_[position]));
}

bool RegExpMatcher::IsWordEdge() const {
  const auto position = static_cast<std::size_t>(position_);
  const bool before = position > 0 && IsWordUnit(text_[position - 1]);
  const bool after = position < text_.size() && IsWordUnit(text_[position]);
  return before != after;
}

void RegExpMatcher::Set(std::uint32_t index, std::int32_t value) {
  if (!stack_.empty()) Push(Kind::Register, static_cast<std::int32_t>(index), registers_[index]);
  registers_[index] = value;
}

void RegExpMatcher::Push(Kind kind, std::int32_t where, std::int32_t position, std::int32_t extra) {
  if (stack_.size() >= kMaxStack) throw RegExpLimitReached{};
  stack_.push_back({kind, where, position, extra});
}

void RegExpMatcher::Spend(std::size_t work) {
  if (budget_ < work) throw RegExpLimitReached{};
  budget_ -= work;
}

}  // namespace tessary::script
