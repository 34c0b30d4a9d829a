#include <algorithm>

#include "script/library/RegExpReader.h"
#include "script/library/Utf16.h"

namespace tessary::script {
namespace {

using Op = RegExpOp;

constexpr int kSyntaxError = 5017;
constexpr int kUnexpectedQuantifier = 5018;
constexpr int kExpectedParenthesis = 5020;
constexpr int kTooComplex = 28;

// The compiler calls itself for each nested group; 250 levels stay far below the smallest thread stack.
constexpr int kMaxGroupDepth = 250;
// Nested groups copy their code outwards, so that the work is at most depth times size.
constexpr std::size_t kMaxInstructions = 200'000;

// A piece of code with relative jumps, which can therefore be put anywhere.
struct Fragment {
  std::vector<RegExpInstruction> code;
  bool mayBeEmpty = true;
  bool isUnit = false;       ///< a single instruction that takes one unit
  bool isAssertion = false;  ///< takes nothing and cannot be repeated
  std::uint32_t firstGroup = 0, lastGroup = 0;

  [[nodiscard]] std::int32_t Length() const { return static_cast<std::int32_t>(code.size()); }
  void Append(const Fragment& other) {
    if (code.size() + other.code.size() > kMaxInstructions) throw RegExpFailed{kTooComplex};
    code.insert(code.end(), other.code.begin(), other.code.end());
    mayBeEmpty = mayBeEmpty && other.mayBeEmpty;
  }
};

Fragment One(RegExpInstruction instruction) {
  Fragment fragment;
  fragment.code.push_back(instruction);
  return fragment;
}

Fragment Assertion(RegExpInstruction instruction) {
  Fragment fragment = One(instruction);
  fragment.isAssertion = true;
  return fragment;
}

Fragment TakesOne(RegExpInstruction instruction) {
  Fragment fragment = One(instruction);
  fragment.isUnit = true;
  fragment.mayBeEmpty = false;
  return fragment;
}

class Compiler {
 public:
  Compiler(std::u16string pattern, bool ignoreCase, bool multiLine, RegExpProgram& program)
      : reader_(std::move(pattern)), ignoreCase_(ignoreCase), multiLine_(multiLine), program_(program) {}

  void Compile() {
    // Registers of captures come first, so all groups are counted before any other register is given out.
    program_.groups = reader_.CountGroups();
    program_.registers = 2 * (program_.groups + 1);
    Fragment all = ParseAlternatives();
    if (!reader_.AtEnd()) throw RegExpFailed{kSyntaxError};  // a ")" without its "("
    all.code.push_back({});
    program_.code = std::move(all.code);
  }

 private:
  Fragment ParseAlternatives();
  Fragment ParseSequence();
  Fragment ParseAtom();
  Fragment ParseEscape();
  Fragment ParseGroup();
  Fragment ParseLook(bool negative);
  [[nodiscard]] Fragment Unit(char16_t unit) const;
  Fragment Set(RegExpSet set, bool negated);
  Fragment Repeat(const Fragment& body, const RegExpQuantifier& quantifier);
  Fragment Loop(const Fragment& body, const RegExpQuantifier& quantifier);

  RegExpReader reader_;
  int depth_ = 0;
  std::uint32_t opened_ = 0;  ///< capturing groups so far
  bool ignoreCase_, multiLine_;
  RegExpProgram& program_;
};

Fragment Compiler::ParseAlternatives() {
  if (++depth_ > kMaxGroupDepth) throw RegExpFailed{kTooComplex};
  std::vector<Fragment> alternatives(1, ParseSequence());
  while (reader_.Accept(u"|")) alternatives.push_back(ParseSequence());
  --depth_;
  if (alternatives.size() == 1) return std::move(alternatives.front());

  std::int32_t size = alternatives.back().Length();
  for (std::size_t i = 0; i + 1 < alternatives.size(); ++i) size += alternatives[i].Length() + 2;
  Fragment all;
  for (const Fragment& alternative : alternatives) {
    const bool last = &alternative == &alternatives.back();
    if (!last) all.code.push_back({.op = Op::Split, .target = alternative.Length() + 2});
    all.Append(alternative);
    if (!last) all.code.push_back({.op = Op::Jump, .target = size - all.Length()});
  }
  all.mayBeEmpty =
      std::any_of(alternatives.begin(), alternatives.end(), [](auto& one) { return one.mayBeEmpty; });
  return all;
}

Fragment Compiler::ParseSequence() {
  Fragment sequence;
  while (!reader_.AtEnd() && reader_.Peek() != u'|' && reader_.Peek() != u')') {
    const std::uint32_t firstGroup = opened_;
    Fragment atom = ParseAtom();
    atom.firstGroup = firstGroup;
    atom.lastGroup = opened_;
    if (const auto quantifier = reader_.ReadQuantifier()) {
      if (atom.isAssertion) throw RegExpFailed{kUnexpectedQuantifier};
      atom = Repeat(atom, *quantifier);
    }
    sequence.Append(atom);
  }
  return sequence;
}

Fragment Compiler::ParseAtom() {
  if (reader_.ReadQuantifier()) throw RegExpFailed{kUnexpectedQuantifier};
  const char16_t unit = reader_.Next();
  switch (unit) {
    case u'^':
      return Assertion({.op = Op::LineStart, .flag = multiLine_});
    case u'$':
      return Assertion({.op = Op::LineEnd, .flag = multiLine_});
    case u'.':
      return TakesOne({.op = Op::Any});
    case u'(':
      return ParseGroup();
    case u'\\':
      return ParseEscape();
    case u'[': {
      bool negated = false;
      RegExpSet set = reader_.ReadSet(negated);
      return Set(std::move(set), negated);
    }
    default:
      return Unit(unit);
  }
}

Fragment Compiler::ParseEscape() {
  if (reader_.AtEnd()) throw RegExpFailed{kSyntaxError};
  if (reader_.Accept(u"b")) return Assertion({.op = Op::WordEdge});
  if (reader_.Accept(u"B")) return Assertion({.op = Op::WordEdge, .flag = true});
  if (auto set = reader_.ReadClass()) return Set(std::move(*set), false);
  if (const auto group = reader_.ReadBackReference(opened_)) {
    return One({.op = Op::BackReference, .flag = ignoreCase_, .value = *group});
  }
  return Unit(reader_.ReadEscapedUnit());
}

Fragment Compiler::ParseGroup() {
  if (reader_.Accept(u"?=")) return ParseLook(false);
  if (reader_.Accept(u"?!")) return ParseLook(true);
  const bool captures = !reader_.Accept(u"?:");
  if (captures && reader_.Peek() == u'?') throw RegExpFailed{kSyntaxError};
  const std::uint32_t group = captures ? ++opened_ : 0;
  Fragment inner = ParseAlternatives();
  if (!reader_.Accept(u")")) throw RegExpFailed{kExpectedParenthesis};
  if (!captures) {
    inner.isUnit = inner.isAssertion = false;
    return inner;
  }
  Fragment fragment = One({.op = Op::Save, .value = 2 * group});
  fragment.Append(inner);
  fragment.code.push_back({.op = Op::Save, .value = 2 * group + 1});
  fragment.mayBeEmpty = inner.mayBeEmpty;
  return fragment;
}

Fragment Compiler::ParseLook(bool negative) {
  const Fragment inner = ParseAlternatives();
  if (!reader_.Accept(u")")) throw RegExpFailed{kExpectedParenthesis};
  const std::uint32_t barrier = program_.registers++;
  Fragment fragment = One({.op = Op::Look, .flag = negative, .target = inner.Length() + 1, .value = barrier});
  fragment.Append(inner);
  fragment.code.push_back({.op = Op::LookEnd, .flag = negative, .value = barrier});
  return fragment;
}

Fragment Compiler::Unit(char16_t unit) const {
  const char16_t lower = LowerOf(unit);
  const bool cased = ignoreCase_ && (lower != unit || UpperOf(unit) != unit);
  return cased ? TakesOne({.op = Op::FoldedUnit, .value = lower}) : TakesOne({.op = Op::Unit, .value = unit});
}

Fragment Compiler::Set(RegExpSet set, bool negated) {
  set.Finish(negated, ignoreCase_);
  program_.sets.push_back(std::move(set));
  return TakesOne({.op = Op::Set, .value = static_cast<std::uint32_t>(program_.sets.size() - 1)});
}

Fragment Compiler::Repeat(const Fragment& body, const RegExpQuantifier& quantifier) {
  const std::int32_t length = body.Length();
  const bool once = quantifier.min == 0 && quantifier.max == 1 && !body.mayBeEmpty;
  // A body that always moves on needs no check for an idle iteration, and one that captures nothing no count.
  const bool simple = quantifier.max == RegExpQuantifier::kUnlimited && quantifier.min <= 1 &&
                      !body.mayBeEmpty && body.firstGroup == body.lastGroup;
  Fragment all;
  if (body.isUnit) {
    all = One({.op = Op::Run, .flag = quantifier.greedy, .min = quantifier.min, .max = quantifier.max});
    all.Append(body);
  } else if (once) {
    all = One({.op = Op::Split, .flag = !quantifier.greedy, .target = length + 1});
    all.Append(body);
  } else if (simple) {
    if (quantifier.min == 0) all.code.push_back({.op = Op::Jump, .target = length + 1});
    all.Append(body);
    all.code.push_back({.op = Op::Split, .flag = quantifier.greedy, .target = -length});
  } else {
    all = Loop(body, quantifier);
  }
  all.mayBeEmpty = quantifier.min == 0 || body.mayBeEmpty;
  return all;
}

Fragment Compiler::Loop(const Fragment& body, const RegExpQuantifier& quantifier) {
  const std::int32_t length = body.Length();
  const std::uint32_t counter = program_.registers;
  program_.registers += 2;
  Fragment all = One({.op = Op::LoopStart, .value = counter});
  all.code.push_back({.op = Op::LoopHead,
                      .flag = quantifier.greedy,
                      .target = length + 2,
                      .value = counter,
                      .min = quantifier.min,
                      .max = quantifier.max,
                      .firstSave = 2 * (body.firstGroup + 1),
                      .lastSave = 2 * (body.lastGroup + 1)});
  all.Append(body);
  all.code.push_back({.op = Op::LoopNext, .target = -length - 1, .value = counter});
  return all;
}

}  // namespace

int CompileRegExp(std::string_view pattern, bool ignoreCase, bool multiLine, RegExpProgram& program) {
  program = {};
  try {
    Compiler(ToUtf16(pattern), ignoreCase, multiLine, program).Compile();
  } catch (const RegExpFailed& failed) {
    return failed.number;
  }
  return 0;
}

}  // namespace tessary::script
