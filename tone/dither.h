// What the dither methods share: the depths, and levels between which samples are rounded.
#pragma once

#include <type_traits>

#include "frame/kernel.h"
#include "moxcc/types.h"

namespace q4 {

/// A depth of the dither family: samples of S to samples of D.
template <class S, class D>
struct Depth {
    static constexpr bool real = std::is_same_v<S, Mox32f>;
    /// A source value is the sample and this; it runs from 0 to `full`.
    static constexpr int32_t bias = std::is_same_v<S, Mox16s> ? 32768 : 0;
    static constexpr Mox32f full = real ? 1 : sizeof(S) == 1 ? 255 : 65535;
    /// As many as the destination has values.
    static constexpr int32_t mostLevels = sizeof(D) == 1 ? 256 : 65536;
    static constexpr int32_t dstBias = std::is_same_v<D, Mox16s> ? 32768 : 0;
    /// The depths that in some methods add a half before a level is truncated to a sample.
    static constexpr bool addsHalf = std::is_signed_v<S> && !std::is_same_v<S, D>;

    using Lane = std::conditional_t<real, F32, I32>;

    MOX_INLINE static F32 value(F32 sample) { return sample; }
    MOX_INLINE static F32 value(I32 sample) { return toF32(sample + splat<I32>(bias)); }

    /// A level in the source's unit as a sample, not yet saturated.
    template <bool plusHalf = false>
    MOX_INLINE static I32 sample(F32 level) {
        if constexpr (real) level = level * splat<F32>(mostLevels - 1);
        if constexpr (plusHalf) level = level + splat<F32>(0.5f);
        I32 y = truncate(level);
        if constexpr (!real && sizeof(S) > sizeof(D)) y = shr<8>(y);
        return y - splat<I32>(dstBias);
    }
};

/// Evenly spaced levels.
struct Levels {
    Mox32f step, invStep;

    /// count levels from 0 to full.
    static Levels over(Mox32f full, int32_t count) {
        const Mox32f last = Mox32f(count - 1);
        return {full / last, last / full};
    }

    struct Rounded {
        F32 level, error;
    };
    /// The level below, or the next one where what is left of the value is above the threshold.
    MOX_INLINE Rounded round(F32 value, F32 threshold) const {
        const F32 below = toF32(truncate(value * splat<F32>(invStep))) * splat<F32>(step);
        const F32 next = below + splat<F32>(step);
        const F32 rest = value - below;
        const F32 up = lt(threshold, rest);
        return {select(up, next, below), select(up, value - next, rest)};
    }
};

/// The caller's buffer from its first address on a cache line.
inline uint8_t* workspace(Mox8u* buffer) { return buffer + (-reinterpret_cast<uintptr_t>(buffer) & 63); }

}  // namespace q4
