#include "script/ValueStack.h"

#include <algorithm>

namespace tessary::script {

Value* ValueStack::Allocate(std::size_t count) {
  while (at_.segment < segments_.size() && segments_[at_.segment].size - at_.used < count) {
    ++at_.segment;
    at_.used = 0;
  }
  if (at_.segment == segments_.size()) {
    const std::size_t size = std::max(count, kSegmentSize);
    segments_.push_back({std::make_unique<Value[]>(size), size});
  }
  Value* const values = segments_[at_.segment].values.get() + at_.used;
  at_.used += count;
  return values;
}

}  // namespace tessary::script
