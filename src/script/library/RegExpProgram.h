// A regular expression, compiled: a list of instructions for RegExpMatcher.
//
// The syntax is that of VBScript's RegExp: alternatives, groups "( )", "(?: )", "(?= )", "(?! )", the
// quantifiers
// * + ? {n} {n,} {n,m} and their lazy forms, sets, ^ $ \b \B, the classes \d \D \w \W \s \S, \f \n \r \t \v \cX
// \xHH \uHHHH, octal escapes and back references. A "." matches everything but a line feed. Text is matched in
// UTF-16 units.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessary::script {

enum class RegExpOp : std::uint8_t {
  Unit,           ///< one unit equal to `value`
  FoldedUnit,     ///< the same without regard to case; `value` is in lower case
  Any,            ///< one unit that is no line feed
  Set,            ///< one unit of sets[value]
  LineStart,      ///< `flag`: also behind a line end
  LineEnd,        ///< `flag`: also before a line end
  WordEdge,       ///< `flag`: the opposite
  Save,           ///< registers[value] = position
  Split,          ///< goes on at the next instruction, later at `target`; with `flag` the other way round
  Jump,           ///< to `target`
  BackReference,  ///< the text of group `value`; `flag`: without regard to case
  Look,           ///< looks ahead with what follows up to LookEnd at `target`; `flag`: it must not match
  LookEnd,        ///< `value`: the register of its Look
  LoopStart,      ///< registers[value] = 0, the iterations so far
  LoopHead,       ///< leaves to `target` or goes through the body again; `flag`: as often as possible
  LoopNext,       ///< the end of a body: back to the LoopHead at `target`
  Run,  ///< the next instruction, which takes one unit, `min` to `max` times; `flag`: as often as possible
  Accept,
};

struct RegExpInstruction {
  RegExpOp op = RegExpOp::Accept;
  bool flag = false;
  std::int32_t target = 0;  ///< relative to this instruction
  std::uint32_t value = 0;
  std::int32_t min = 0, max = 0;
  std::uint32_t firstSave = 0, lastSave = 0;  ///< LoopHead: the captures in its body, [first, last)
};

/// The units that a set, or a class outside of one, takes.
class RegExpSet {
 public:
  void Add(char16_t first, char16_t last) { ranges_.emplace_back(first, last); }
  void Add(const RegExpSet& other) {
    ranges_.insert(ranges_.end(), other.ranges_.begin(), other.ranges_.end());
  }
  void AddAllBut(const RegExpSet& other);
  /// To be called once, after the last Add.
  void Finish(bool negated, bool ignoreCase);
  [[nodiscard]] bool Contains(char16_t unit) const { return unit < ascii_.size() ? ascii_[unit] : Find(unit); }

 private:
  [[nodiscard]] bool Find(char16_t unit) const;
  [[nodiscard]] bool InRanges(char16_t unit) const;

  std::vector<std::pair<char16_t, char16_t>> ranges_;
  std::array<bool, 128> ascii_{};
  bool negated_ = false, ignoreCase_ = false;
};

struct RegExpProgram {
  std::vector<RegExpInstruction> code;
  std::vector<RegExpSet> sets;
  std::uint32_t groups = 0;     ///< capturing groups, the whole match not counted
  std::uint32_t registers = 0;  ///< the captures' starts and ends first, then what loops and looks need
};

/// Compiles `pattern` into `program`. Returns 0, or the number of the script error: 5017 to 5021, or 28 when
/// groups are nested deeper, or the program grows larger, than the limits in the source allow.
int CompileRegExp(std::string_view pattern, bool ignoreCase, bool multiLine, RegExpProgram& program);

}  // namespace tessary::script
