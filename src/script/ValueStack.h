// The memory of the frames: slots and operands, in segments that never move, because references point into
// them.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "script/Value.h"

namespace tessary::script {

class ValueStack {
 public:
  /// A place to go back to.
  struct Mark {
    std::size_t segment = 0;
    std::size_t used = 0;
  };

  [[nodiscard]] Mark mark() const noexcept { return at_; }
  /// `count` Empty values.
  Value* Allocate(std::size_t count);
  /// Gives back everything allocated since the mark; its values must be Empty again.
  void Release(Mark mark) noexcept { at_ = mark; }

 private:
  static constexpr std::size_t kSegmentSize = 8192;

  struct Segment {
    std::unique_ptr<Value[]> values;
    std::size_t size;
  };
  std::vector<Segment> segments_;
  Mark at_;
};

}  // namespace tessary::script
