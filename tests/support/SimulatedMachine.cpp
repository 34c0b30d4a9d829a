#include "tests/support/SimulatedMachine.h"

#include <gtest/gtest.h>

namespace tessary {

SimulatedMachine::SimulatedMachine() {
  files.Put(host_.programFile, "MZ");
  files.PutFolder(R"(C:\Temp)");
  files.PutFolder(system.environment["APPDATA"]);
  desktop.onQueue = [this] { notificationArea.RunQueue(); };
  for (const auto& [id, folder] : shell.specialFolders) files.PutFolder(folder);
}

SimulatedMachine::~SimulatedMachine() {
  EXPECT_EQ(registry.openKeys, 0) << "a registry key was left open";
  EXPECT_EQ(spooler.openHandles, 0) << "a printer was left open";
  EXPECT_EQ(files.OpenHandles(), 0) << "a file was left open";
  EXPECT_FALSE(notificationArea.iconIsThere) << "the icon was left in the notification area";
}

}  // namespace tessary
