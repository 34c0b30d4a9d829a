// The dialog "Create PDF": the settings of one job, while the job waits. It changes them in place and answers
// whether the job goes on; it never writes a settings file.
#pragma once

#include <string>

#include "config/modConfig.h"
#include "system/Run.h"
#include "ui/Form.h"

namespace tessary {

class frmPrintConfig {
 public:
  /// Builds the dialog and fills it from `config`, which it shares with the caller.
  frmPrintConfig(Run& run, Settings config);

  /// Shows the dialog until it is closed. True after a successful Save; after anything else `config` may hold
  /// some of what was typed, and the job is to end.
  bool Show();

  /// Fills all controls from the settings.
  void SetConfig();

  /// Brings the name of the output file into its full form, in its field, and writes all controls into
  /// `config`.
  void GetConfig(Dictionary& config);

  /// Checks what GetConfig has written and tells the user about the first thing that is wrong, with the focus
  /// on its field. Asks before an existing file is replaced, unless a save dialog has asked already.
  bool ValidateForm(Dictionary& config);

  /// Enables what has a meaning with what is typed.
  void UpdateControls();

 private:
  void AttachEvents();
  void OutputChanged();
  void LeaveOutput();
  void BrowseOutput();
  void Save();
  bool FailAt(const char* tab, const char* field, const std::string& message);
  bool IsOutputGood(Dictionary& config);
  bool IsAppendGood(Dictionary& config);
  bool IsBackgroundGood(Dictionary& config);

  Run& run_;
  Settings config_;
  Form form_;
  std::string defaultFolder_;  ///< of a name without a folder; ends in a separator, or is empty
  bool accepted_ = false;
};

}  // namespace tessary
