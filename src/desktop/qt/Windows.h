// The order of the helper's windows.
#pragma once

#include "desktop/qt/Server.h"

namespace tessary {

/// Brings windows to the front when gui wants it.
void ServeWindowOrder(Server& server);

}  // namespace tessary
