// Powers in single precision, within 4 units in the last place.
#pragma once

#include "moxcc/types.h"

namespace q4 {

/// What the kernel returns when a sample was zero with a negative exponent, or negative with an exponent that is no
/// integer. All samples are computed none the less.
inline constexpr int32_t powxDomainCode = 19;

/// dst[i] = src[i] ^ p for len samples; src and dst may be the same. A sample's result depends on the sample and p
/// alone: not on its neighbours, nor on the caller's rounding mode or its treatment of denormals. Returns 0,
/// powxDomainCode, or a status for len below 1 or a null pointer.
int32_t moxsPowx_32f_A21(const Mox32f* src, Mox32f p, Mox32f* dst, int32_t len);

}  // namespace q4
