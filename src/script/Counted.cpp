#include "script/Counted.h"

namespace tessary::script {

namespace {

// The one process-wide state of the language: how deep the releases of this thread are nested, and who waits.
struct ReleaseState {
  int depth = 0;
  Counted* first = nullptr;
  Counted* last = nullptr;
};

thread_local ReleaseState state;

}  // namespace

void Counted::Finish() noexcept {
  references_ = 1;  // LastReferenceGone may hand out references to this object
  LastReferenceGone();
  if (--references_ == 0) delete this;
}

void Counted::End() noexcept {
  if (state.depth >= kMaxReleaseDepth) {
    (state.last ? state.last->nextWaiting_ : state.first) = this;
    state.last = this;
    return;
  }
  ++state.depth;
  Finish();
  if (state.depth == 1) {
    while (Counted* next = state.first) {
      state.first = next->nextWaiting_;
      if (!state.first) state.last = nullptr;
      next->nextWaiting_ = nullptr;
      next->Finish();
    }
  }
  --state.depth;
}

}  // namespace tessary::script
