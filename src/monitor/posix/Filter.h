// tessaryframe: the last filter of a print queue. Several documents of one job go into one pipe; it puts each
// into a frame (Frames.h), so that the backend knows where it ends and that it is whole.
#pragma once

#include <string>
#include <vector>

#include "monitor/posix/JobReport.h"

namespace tessary {

/// Frames the document that a print server hands over: `arguments` are the job's number, user, title, number of
/// copies and options, and a file unless the document is the standard input. It goes to the standard output as
/// it comes, and no more than a block of it is held. Returns the exit code: 0, also when nobody takes the
/// document any more, and 1 when it could not be read or the call was wrong; the frame stays open then.
int RunFilter(const std::vector<std::string>& arguments, JobReport& report);

}  // namespace tessary
