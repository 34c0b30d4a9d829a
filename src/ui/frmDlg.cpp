#include "ui/frmDlg.h"

#include "ui/Pickers.h"

namespace tessary {

std::string SaveAs(Run& run, const std::string& fileName, bool confirmOverwrite) {
  return ShowSaveAs(run, fileName.empty() ? "*.pdf" : fileName, confirmOverwrite);
}

}  // namespace tessary
