// The date and the time as library functions take and make them.
#pragma once

#include <cstdint>

#include "script/NativeFunction.h"
#include "script/library/DateSerial.h"

namespace tessary::script {

/// The clock of the services; the day 0 where there is none.
LocalTime Now(Context& context);
int ThisYear(Context& context);

/// The serial of a clock's time.
double SerialOf(const LocalTime& time);

/// The date that a value holds; like ToDate, but a text may leave the year out.
double DateOf(Context& context, const Value& value);

}  // namespace tessary::script
