#include "host/posix/cups/Cups.h"

#include <dlfcn.h>

namespace tessary {

Cups::Cups() : library_(dlopen("libcups.so.2", RTLD_NOW | RTLD_LOCAL)), complete_(library_ != nullptr) {}

Cups::Symbol Cups::Find(const char* name) {
  void* address = library_ != nullptr ? dlsym(library_, name) : nullptr;
  complete_ = complete_ && address != nullptr;
  return {address};
}

}  // namespace tessary
