#include "system/modComCtl.h"

namespace tessary {

namespace {
constexpr int kRecordSize = 8;
constexpr int kExtendedComboBoxes = 512;  // ICC_USEREX_CLASSES
}  // namespace

bool InitCommonControls(Run& run) {
  return !run.host.components.StartControls(kRecordSize, kExtendedComboBoxes);
}

}  // namespace tessary
