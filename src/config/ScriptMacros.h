// The macro language behind the macros in settings.
#pragma once

#include "config/MacroEngine.h"
#include "host/Host.h"

namespace tessary {

/// Makes engines whose scripts see the files, the environment and the clock of `host`, which must outlive them.
MacroEngineFactory MakeScriptMacros(Host& host);

}  // namespace tessary
