// The dialog "Options": the stored settings of one printer instance, outside any job. It reads the settings
// file itself and writes it back on OK.
#pragma once

#include <string>

#include "config/modConfig.h"
#include "system/Run.h"
#include "ui/Form.h"

namespace tessary {

class frmOptions {
 public:
  /// Builds the dialog for the run's instance and fills it from the instance's settings; a file for one single
  /// job is left alone. Raises what LoadConfig raises.
  explicit frmOptions(Run& run);

  /// Shows the dialog until it is closed. True if OK has saved the settings. Where nobody can see it a message
  /// says so and names the file, which stays as it is. Raises what AcceptSettings raises.
  bool Show();

  /// Fills all controls from the settings.
  void SetConfig();

  /// Writes all controls into `config`. Nothing is checked: the output may stay a template with macros.
  void GetConfig(Dictionary& config);

  /// Writes the settings file, keys without a control included. Raises kSettingsNotWritable; the file then is
  /// as it was.
  void AcceptSettings();

 private:
  void AttachEvents();
  void ShowTab();
  void BrowseOutput();
  void AppendMacro(const std::string& field);
  void Save();
  void Reset();

  Run& run_;
  Settings config_;
  std::string settingsFile_;
  Form form_;
  bool saved_ = false;
};

}  // namespace tessary
