// The platform's own dialogs for files and colours. Without a display each is answered as if it had been
// cancelled, and the log says so where the machine tells the two apart.
#pragma once

#include <string>

#include "system/Run.h"

namespace tessary {

/// Asks for a file to read. `title` is a tagged text; empty after a cancel and after any failure.
std::string BrowseForFile(Run& run, const std::string& title, const std::string& fileName, bool mustExist);

/// Asks for the file to save the document to; empty after a cancel and after any failure. `fileName` may name a
/// folder to begin in. With `confirmOverwrite` a file that exists is asked about until the user agrees or
/// cancels.
std::string ShowSaveAs(Run& run, const std::string& fileName, bool confirmOverwrite);

/// The question before `fileName` is replaced.
std::string GetOverwriteQuestion(Run& run, const std::string& fileName);

/// Asks for the colour of the watermark, beginning with `currentText`, which a cancel gives back. Both are
/// colour texts.
std::string BrowseColor(Run& run, const std::string& currentText);

}  // namespace tessary
