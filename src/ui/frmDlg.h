// The save dialog of a job, alone or ahead of the dialog Create PDF.
#pragma once

#include <string>

#include "system/Run.h"

namespace tessary {

/// Asks for the file to save the document to, which may begin as a file, a folder or nothing. Empty after a
/// cancel.
std::string SaveAs(Run& run, const std::string& fileName, bool confirmOverwrite);

}  // namespace tessary
