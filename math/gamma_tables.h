// The gamma curves as tables: read-only data that a generator in tools/ writes when the library is built.
#pragma once

#include "moxcc/types.h"

namespace q4 {

extern const Mox8u tableFwd8u[256];
extern const Mox8u tableInv8u[256];
extern const Mox16u tableFwd16u[65536];
extern const Mox16u tableInv16u[65536];

}  // namespace q4
