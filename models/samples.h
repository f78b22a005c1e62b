// What float rules do with samples at either end: 16-bit samples as floats from 0 to 65535, and results limited to 0 to
// 1.
#pragma once

#include "frame/block.h"

namespace q4 {

/// What makes a sample of type T start at 0: signed samples stand for unsigned ones less 32768.
template <class T>
inline constexpr int sampleBias = std::is_signed_v<T> ? 32768 : 0;

/// Samples, widened, as floats. The bias is added to the integer, where it is exact in any rounding mode.
template <class T, int C>
MOX_INLINE Px<F32, C> unbiased(const Px<I32, C>& samples) {
    Px<F32, C> floats;
    for (int c = 0; c < C; ++c) floats.c[c] = toF32(samples.c[c] + splat<I32>(sampleBias<T>));
    return floats;
}

// A constant in each lane.
MOX_INLINE F32 operator*(float a, F32 b) { return splat<F32>(a) * b; }
MOX_INLINE F32 operator*(F32 a, float b) { return a * splat<F32>(b); }
MOX_INLINE F32 operator+(F32 a, float b) { return a + splat<F32>(b); }
MOX_INLINE F32 operator-(F32 a, float b) { return a - splat<F32>(b); }
MOX_INLINE F32 operator-(float a, F32 b) { return splat<F32>(a) - b; }
MOX_INLINE F32 operator/(F32 a, float b) { return a / splat<F32>(b); }

/// Columns go by fours where a fourth channel is kept, by eights otherwise.
template <class Layout>
inline constexpr int group8u = Layout::keepsOld ? 4 : 8;

/// To 0 to 1; a NaN passes both tests.
MOX_INLINE F32 clampUnit(F32 v) { return min(splat<F32>(1), max(zero<F32>(), v)); }

}  // namespace q4
