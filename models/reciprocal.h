// Reciprocals of vectors, where a conversion is defined by an approximate one.
#pragma once

#include "simd/vec.h"

namespace q4 {

/// rcp(x) after one Newton step, operation by operation.
MOX_INLINE F32 rcp2(F32 x) {
    const F32 r = rcp(x);
    return (r + r) - (x * r) * r;
}

}  // namespace q4
