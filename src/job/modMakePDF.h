// The pipeline that every print job passes.
#pragma once

#include <cstdint>
#include <string>

#include "system/Run.h"

namespace tessary {

/// Converts the job's PostScript file and delivers the result: settings, conversion, delivery, balloon,
/// status file, follow-up programs. A straight line without an error handler: whatever is raised below leaves
/// it at once. A delivery that fails is no error and gives exitcodes::kNotDelivered; a cancelled dialog, or no
/// `output`, gives kNothingDone; else kDone. Leaves the job's temporary files, `<temporary
/// folder>/<SessionId>_…`, for the clean-up of the run.
std::int32_t MakePDF(Run& run, const std::string& psFile);

}  // namespace tessary
