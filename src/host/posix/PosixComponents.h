// The loadable parts of this machine: none. The dictionary component is part of the program itself.
#pragma once

#include "host/Components.h"

namespace tessary {

class PosixComponents final : public Components {
 public:
  Failure Create(const std::string& progId) override;
  ModuleHandle LoadModule(const std::string&) override { return 0; }
  void UnloadModule(ModuleHandle) override {}
  Failure StartControls(int, int) override { return {}; }
};

}  // namespace tessary
