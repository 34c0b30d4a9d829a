// Pages that a job wants arranged: some of them, several on a sheet, in another order.
//
// A document reaches the filter as the application made it, with its own page sizes. The print server's filter
// for arranging lays all pages onto the queue's paper, so it is only called for when there is something to do.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/Failure.h"
#include "host/posix/ChildProcess.h"
#include "monitor/Frames.h"

namespace tessary {

/// The name of the print server's filter that the document wants: "pdftopdf", or "pstops" for PostScript. Empty
/// when nothing in `options`, those of a job, asks for it, or when the document was not to be touched (`raw`)
/// or is an image, whose own filter has done it.
std::string ArrangingFilter(std::string_view options, std::string_view contentType);

/// The output of such a filter.
class ArrangedDocument {
 public:
  /// Starts it with the arguments of this filter, as RunFilter gets them. It reads the file that they name, or
  /// the standard input.
  Failure Start(const std::string& filter, const std::vector<std::string>& arguments);

  /// Works as File::Read does. A filter that fails is a failure in the place of the end.
  Result<std::size_t> Read(char* buffer, std::size_t size);

 private:
  ChildProcess child_;
  UniqueFd output_;
};

}  // namespace tessary
