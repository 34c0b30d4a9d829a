// Searches a text for a compiled regular expression.
//
// Backtracks on a stack of its own, never on the thread's, and counts its work: a pattern that would need for
// ever, or more memory than the limits in the source allow, ends the search with `RegExpLimitReached`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "script/library/RegExpProgram.h"

namespace tessary::script {

struct RegExpLimitReached {};

/// A part of the text in units, [start, end); `start` is -1 for a group that took no part.
struct RegExpSpan {
  std::ptrdiff_t start = -1, end = -1;
};

class RegExpMatcher {
 public:
  /// Keeps references: `program` and `text` outlive the matcher. One matcher serves one text; its budget of
  /// work is for all of its searches together.
  RegExpMatcher(const RegExpProgram& program, std::u16string_view text);

  /// Looks for the first match that starts at `from` or later. True when found.
  bool Search(std::size_t from);

  /// After a successful search: the whole match for 0, else the group.
  [[nodiscard]] RegExpSpan Group(std::size_t group) const {
    return registers_[2 * group + 1] < 0 ? RegExpSpan{}
                                         : RegExpSpan{registers_[2 * group], registers_[2 * group + 1]};
  }

 private:
  enum class Kind : std::uint8_t { Branch, Register, GreedyRun, LazyRun, EnterLoop, Barrier };
  struct Entry {
    Kind kind;
    std::int32_t where;     ///< an instruction; for Register its number
    std::int32_t position;  ///< in the text; for Register the value to restore
    std::int32_t extra;     ///< GreedyRun: the lowest position; LazyRun: how many more units it may take
  };

  bool MatchAt(std::int32_t start);
  bool Step();
  bool TakeUnit(const RegExpInstruction& instruction);
  bool TakeRun(const RegExpInstruction& run);
  bool TakeBackReference(const RegExpInstruction& instruction);
  bool TakeLoopHead(const RegExpInstruction& head);
  bool TakeLoopNext(const RegExpInstruction& next);
  bool EndLook(const RegExpInstruction& end);
  void EnterLoop(const RegExpInstruction& head);
  bool Backtrack();
  bool ResumeGreedyRun();
  bool ResumeLazyRun();

  [[nodiscard]] bool Fits(const RegExpInstruction& instruction, char16_t unit) const;
  [[nodiscard]] bool CouldStartAt(std::size_t position) const;
  [[nodiscard]] bool IsLineStart(bool multiLine) const;
  [[nodiscard]] bool IsLineEnd(bool multiLine) const;
  [[nodiscard]] bool IsWordEdge() const;
  void Set(std::uint32_t index, std::int32_t value);
  void Push(Kind kind, std::int32_t where, std::int32_t position, std::int32_t extra = 0);
  void Spend(std::size_t work);

  const RegExpProgram& program_;
  std::u16string_view text_;
  std::vector<std::int32_t> registers_;
  std::vector<Entry> stack_;
  std::int32_t at_ = 0;  ///< the current instruction
  std::int32_t position_ = 0;
  std::size_t budget_;
};

}  // namespace tessary::script
