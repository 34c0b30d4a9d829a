// What `gui` answers to whoever started it.
#pragma once

#include <cstdint>

namespace tessary::exitcodes {

inline constexpr std::int32_t kDone = 0;          ///< the run did what it was started for
inline constexpr std::int32_t kError = 1;         ///< the error handler ran
inline constexpr std::int32_t kNotDelivered = 2;  ///< the document could not be delivered
inline constexpr std::int32_t kNothingDone = 3;   ///< the user cancelled, or there was nothing to do

}  // namespace tessary::exitcodes
