#include "postscript/modMerge.h"

#include "system/Conversions.h"

namespace tessary {

bool IsMergeRequested(Dictionary& settings) { return !TrimBlanks(settings.Text("mergefile")).empty(); }

}  // namespace tessary
