// From the job's PostScript to what will be delivered: one PDF, or images of its pages.
#pragma once

#include <string>

#include "config/Dictionary.h"
#include "job/JobFiles.h"
#include "system/Run.h"

namespace tessary {

/// What a conversion has left in the temporary folder.
struct Product {
  std::string file;       ///< the PDF; of images their name without number and extension
  std::string extension;  ///< of images, without the point; empty for a PDF
  bool isImages = false;
  bool isPageWise = false;  ///< images with a number each, from `file` + "_00000001." + extension on
};

/// Runs every stage that the settings ask for: backgrounds, patched PostScript, header, PDF, merge, images.
/// Images have a number each where `output` holds a page tag. Sets the run's PageCount, of the job
/// without the merge file. Raises the errors of the stages; what they have written stays.
Product ConvertJob(Run& run, Dictionary& config, const JobFiles& files, const std::string& psFile,
                   const std::string& output);

}  // namespace tessary
