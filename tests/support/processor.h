// What rules take from the processor: conversions of values beyond 32 bits, and the approximate reciprocal.
#ifndef SUPPORT_PROCESSOR_H
#define SUPPORT_PROCESSOR_H

#if defined(__x86_64__)
#include <immintrin.h>
#else
#include <bit>
#include <climits>
#include <cmath>
#include <cstdint>
#endif

namespace moxtest {

#if defined(__x86_64__)

inline float rcp(float x) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x))); }
/// To an integer, in the rounding mode; INT_MIN for what has no place.
inline int nearest(float x) { return _mm_cvtss_si32(_mm_set_ss(x)); }
inline int truncated(float x) { return _mm_cvttss_si32(_mm_set_ss(x)); }

#else

/// Of the middle of one of 2,048 intervals of the mantissa, to the nearest multiple of 2^-13.
inline float rcp(float x) {
    const uint32_t bits = std::bit_cast<uint32_t>(x);
    const float sign = std::copysign(1.0f, x);
    if (std::isnan(x)) return x;
    if (!std::isnormal(x)) return std::isinf(x) ? sign * 0 : sign * INFINITY;
    const double middle = 1 + (2 * (bits >> 12 & 0x7FF) + 1) / 4096.0;
    const int exponent = 127 - int(bits >> 23 & 0xFF);
    const float magnitude = std::ldexp(float(uint32_t(0x2000 / middle + 0.5)), exponent - 13);
    return std::isnormal(magnitude) ? sign * magnitude : sign * 0;
}
inline int converted(float whole) { return whole >= -0x1p31f && whole < 0x1p31f ? int(whole) : INT_MIN; }
inline int nearest(float x) { return converted(std::nearbyint(x)); }
inline int truncated(float x) { return converted(std::trunc(x)); }

#endif

}  // namespace moxtest

#endif
