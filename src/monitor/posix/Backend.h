// tessary-backend: what a print server starts for each job of a queue, as root, so that it can become the user
// of the job.
//
// The order of its steps is what it is about. As root it learns whose job this is, and opens the file that the
// server names, if it names one; it becomes that user for good; and only then it reads the job, or makes a
// file. Of the job it takes the title, the user, the number of copies and the documents, and nothing else.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "monitor/posix/JobReport.h"
#include "system/Run.h"

namespace tessary {

/// Without arguments tells `output` the device that it serves. Otherwise prints a job: `arguments` are its
/// number, user, title, number of copies and options, and files if the documents do not come framed (Frames.h)
/// on the standard input. Returns 0 when every document became a PDF, and otherwise the exit code by which the
/// server cancels the job and goes on with the next one. The process is fit for nothing else afterwards.
int RunBackend(Run& run, const std::vector<std::string>& arguments, std::ostream& output, JobReport& report);

}  // namespace tessary
