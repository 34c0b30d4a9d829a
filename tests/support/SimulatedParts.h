// The smaller parts of the simulated machine: registry, shell, desktop, system and components. What a test
// wants is set in the public fields; what was asked is recorded beside them.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/Components.h"
#include "host/Desktop.h"
#include "host/MachineSettings.h"
#include "host/Shell.h"
#include "host/System.h"
#include "tests/support/Journal.h"

namespace tessary {

/// The registry, with the 64-bit view beside the plain one.
class SimulatedRegistry : public MachineSettings {
 public:
  enum class View { Both, Plain, View64 };

  /// Sets a value by its full path, "HKEY_LOCAL_MACHINE\SOFTWARE\key\name"; a "\" at the end is the key's
  /// default value.
  void Set(const std::string& path, const std::string& text, View view = View::Both);
  void SetValue(const std::string& path, const RegistryValue& value, View view = View::Both);

  std::vector<std::string> opened;  ///< every key asked for, "64 " in front of one of the 64-bit view
  int openKeys = 0;                 ///< opened and not closed yet

  RegistryKey OpenKey(std::uint32_t root, const std::string& key, std::uint32_t access) override;
  RegistryValue ReadValue(RegistryKey key, const std::string& name) override;
  void Close(RegistryKey key) override;

 private:
  std::map<std::string, std::map<std::string, RegistryValue>> keys_;  ///< all in lower case, view in front
  std::vector<std::string> handles_;
};

class SimulatedDesktop : public Desktop {
 public:
  explicit SimulatedDesktop(Journal& journal) : journal_(journal) {}

  struct Box {
    std::string text;
    std::string caption;
    std::int32_t flags;
  };
  std::vector<Box> boxes;
  std::deque<std::int32_t> answers;       ///< for the next boxes; when it is empty the harmless one is given
  bool attended = true;                   ///< false: nobody sees the boxes
  std::function<void()> onBox;            ///< runs while a box is open
  std::function<void(Form&)> user;        ///< works on a form until it is unloaded; null: nobody sees the forms
  std::vector<FilePicker> pickers;        ///< those shown so far
  std::deque<Result<std::string>> picks;  ///< for the next ones; when it is empty they are cancelled
  std::vector<std::string> colorPickers;  ///< their titles
  std::int32_t pickedColor = -1;          ///< -1: cancelled
  int pumped = 0;
  std::function<void()> onPump;   ///< an event handler that the message queue runs
  std::function<void()> onQueue;  ///< the handlers of the machine itself

  BoxAnswer ShowBox(const std::string& text, const std::string& caption, std::int32_t flags) override;
  bool ShowForm(Form& form) override;
  Result<std::string> PickFile(const FilePicker& picker) override;
  std::int32_t PickColor(const std::string& title, std::int32_t color) override;
  void PumpMessages() override;

 private:
  Journal& journal_;
};

class SimulatedShell : public Shell {
 public:
  explicit SimulatedShell(Journal& journal) : journal_(journal) {}

  std::map<std::int32_t, std::string> specialFolders{
      {folders::kDesktop, R"(C:\Documents and Settings\ann\Desktop)"},
      {folders::kPersonal, R"(C:\Documents and Settings\ann\My Documents)"},
      {folders::kFonts, R"(C:\WINDOWS\Fonts)"}};
  std::vector<FontEntry> fonts;
  std::vector<std::string> opened;
  std::int32_t openResult = 33;

  std::optional<std::string> SpecialFolder(std::int32_t id) override;
  std::vector<FontEntry> InstalledFonts() override { return fonts; }
  std::string FontFile(const std::string& name) override {
    return specialFolders[folders::kFonts] + '\\' + name;
  }
  std::int32_t Open(const std::string& target) override;

 private:
  Journal& journal_;
};

class SimulatedSystem : public System {
 public:
  std::string computerName = "PC";
  std::string userName = "ann";
  VersionRecord version{5, 1, 2600, 2, "Service Pack 3", 3, 0, 256, 1};
  std::set<int> refusedSizes;                      ///< record sizes that Version does not fill
  std::map<std::string, std::string> environment;  ///< names in upper case
  std::string tempPath = "C:\\Temp\\";
  Failure guidFailure;
  std::map<std::int32_t, std::string> errorTexts{{2, "The system cannot find the file specified.\r\n"},
                                                 {5, "Access is denied.\r\n"}};
  int namesAsked = 0;  ///< calls of ComputerName and UserName

  SimulatedSystem();
  std::string ComputerName() override { return ++namesAsked, computerName; }
  std::string UserName() override { return ++namesAsked, userName; }
  std::optional<VersionRecord> Version(int recordSize) override;
  std::string Environment(const std::string& name) override;
  std::string TempPath() override { return tempPath; }
  /// 00000001-0002-0003-0405-060708090A0B at first; the first field counts on.
  Result<Guid> NewGuid() override;
  std::string ErrorText(std::int32_t code) override;

 private:
  std::uint32_t guids_ = 0;
};

class SimulatedComponents : public Components {
 public:
  /// What creating a component gives; one that is not named is missing.
  std::map<std::string, Failure> components{{"Scripting.Dictionary", {}}};
  Failure controlsFailure;
  std::vector<std::string> loadedModules;            ///< all that were ever loaded
  int openModules = 0;                               ///< loaded and not unloaded yet
  std::vector<std::pair<int, int>> startedControls;  ///< record size and class flags of every call

  Failure Create(const std::string& progId) override;
  ModuleHandle LoadModule(const std::string& name) override;
  void UnloadModule(ModuleHandle module) override;
  Failure StartControls(int recordSize, int classes) override;
};

}  // namespace tessary
