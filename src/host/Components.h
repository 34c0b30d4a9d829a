// Loadable parts of the platform.
#pragma once

#include <cstdint>
#include <string>

#include "host/Failure.h"

namespace tessary {

/// A loaded module; 0 is none.
using ModuleHandle = std::uint64_t;

class Components {
 public:
  virtual ~Components() = default;
  /// Tests that a component can be created. kComponentMissing when the machine does not have it.
  virtual Failure Create(const std::string& progId) = 0;
  virtual ModuleHandle LoadModule(const std::string& name) = 0;
  virtual void UnloadModule(ModuleHandle module) = 0;
  /// Starts the common controls with a record of `recordSize` bytes and the given class flags.
  virtual Failure StartControls(int recordSize, int classes) = 0;
};

}  // namespace tessary
