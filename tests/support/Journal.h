// What a simulated machine was asked to do, in order.
#pragma once

#include <string>
#include <vector>

namespace tessary {

/// One line for each call that changes something or shows something, such as "replace C:\a.ini",
/// "start cmd /c …" or "box An error occured.". Reads and looks are not in it.
using Journal = std::vector<std::string>;

}  // namespace tessary
