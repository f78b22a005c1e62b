// The logarithm table of the power kernel: read-only data that a generator in tools/ writes when the library is built.
#pragma once

#include "moxcc/types.h"

namespace q4 {

/// Row k: rcp is 1 / (1 + k / 64) rounded to a multiple of 2^-8; logHi + logLo is minus its natural logarithm, logHi
/// rounded down to a multiple of 2^-14.
struct alignas(16) PowxRow {
    Mox32f logHi, logLo, rcp;
    Mox32f unused;  // rows are read as vectors of four
};

extern const PowxRow vspowx_data[65];

}  // namespace q4
