// The picker of the printer instance whose settings are to be edited.
#pragma once

#include <string>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// The instance to edit. With several on the machine the user is asked; leaving the picker without a choice
/// gives the empty name, as if the default instance had been chosen.
std::string SelectInstance(Run& run);

/// The same among the given instances, see GetInstances. No window comes up for less than two.
std::string SelectInstance(Run& run, const Dictionary& instances);

}  // namespace tessary
