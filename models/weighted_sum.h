// Weighted sums of three samples in fixed point, on 16-bit lanes: one row of a colour matrix, applied to the channels
// of a pixel or to their sums over a few pixels. The rules differ in where they round.
#pragma once

#include "frame/block.h"

namespace q4 {

inline constexpr int one16 = 1 << 16;
inline constexpr int half16 = 1 << 15;

/// The weights of samples 0, 1 and 2.
struct MatrixRow {
    int weight[3];

    constexpr MatrixRow operator*(int factor) const {
        return {{weight[0] * factor, weight[1] * factor, weight[2] * factor}};
    }
    /// Whether all magnitudes are below a limit.
    constexpr bool within(int limit) const {
        for (int w : weight)
            if (w <= -limit || w >= limit) return false;
        return true;
    }
    /// The row of f(weight).
    template <class F>
    constexpr MatrixRow map(F f) const {
        return {{f(weight[0]), f(weight[1]), f(weight[2])}};
    }
};

// ---- samples --------------------------------------------------------------------------------------------------------
//
// Rules read sample c of what they are applied to as scaled<scale>(x, c), its value times 2^scale. Other kinds of
// pixels than vectors of wide samples have a scaled() of their own, which may cost less than to widen and then to
// shift.

template <int scale>
MOX_INLINE I16 scaled(const Px<I16, 3>& x, int c) {
    if constexpr (scale == 0)
        return x.c[c];
    else
        return shl<scale>(x.c[c]);
}

template <class Pixels>
MOX_INLINE Px<I16, 3> wideSamples(const Pixels& x) {
    return {{scaled<0>(x, 0), scaled<0>(x, 1), scaled<0>(x, 2)}};
}

// ---- one sum of all bits --------------------------------------------------------------------------------------------

/// A multiple by one of the small factors that rules need.
template <int factor>
MOX_INLINE I16 times(I16 x) {
    if constexpr (factor == -2) return zero<I16>() - (x + x);
    if constexpr (factor == -1) return zero<I16>() - x;
    if constexpr (factor == 0) return zero<I16>();
    if constexpr (factor == 1) return x;
    if constexpr (factor == 2) return x + x;
    static_assert(factor >= -2 && factor <= 2);
}

/// Sums of 32 bits, of the samples in the low halves of the lanes and of those in the high halves.
struct WideSum {
    I32 lo, hi;
};

/// The sum for weights of 16 bits, and an offset. Weights of 0 cost nothing.
template <MatrixRow row, int offset = 0>
MOX_INLINE WideSum wideSum(const Px<I16, 3>& x) {
    constexpr const int(&w)[3] = row.weight;
    constexpr int used = (w[0] != 0) + (w[1] != 0) + (w[2] != 0);
    constexpr int first = w[0] != 0 ? 0 : w[1] != 0 ? 1 : 2;
    constexpr int second = w[1] != 0 && first < 1 ? 1 : 2;
    const auto pairOf = [](int even, int odd) {
        return as<I16>(splat<I32>(int32_t(uint32_t(uint16_t(even)) | uint32_t(uint16_t(odd)) << 16)));
    };

    const I16 a = x.c[first], b = used >= 2 ? x.c[second] : zero<I16>();
    const I16 weights = pairOf(w[first], used >= 2 ? w[second] : 0);
    WideSum sum = {dotPairs(unpackLo<16>(a, b), weights), dotPairs(unpackHi<16>(a, b), weights)};
    if constexpr (used == 3) {
        const I16 third = pairOf(w[2], 0);
        sum.lo = sum.lo + dotPairs(unpackLo<16>(x.c[2], zero<I16>()), third);
        sum.hi = sum.hi + dotPairs(unpackHi<16>(x.c[2], zero<I16>()), third);
    }
    if constexpr (offset != 0) sum.lo = sum.lo + splat<I32>(offset), sum.hi = sum.hi + splat<I32>(offset);
    return sum;
}

// Weights in units of 1/65536 may need more than 16 bits: they are a whole number and a fraction of 16 bits.
inline constexpr int wholePart(int weight) { return (weight + half16) >> 16; }
inline constexpr int fractionPart(int weight) { return weight - wholePart(weight) * one16; }

/// (weighted sum + offset) >> shift, for a shift of 16 or more. The sum of the fractions takes 32 bits, all else is
/// exact in 16.
template <MatrixRow row, int offset, int shift>
struct FullPrecision {
    template <class Pixels>
    MOX_INLINE I16 operator()(const Pixels& pixels) const {
        const Px<I16, 3> x = wideSamples(pixels);
        constexpr MatrixRow whole = row.map(wholePart), fraction = row.map(fractionPart);
        constexpr int used = (fraction.weight[0] != 0) + (fraction.weight[1] != 0) + (fraction.weight[2] != 0);
        I16 sum = zero<I16>();
        if constexpr (used == 1 && offset == 0) {
            constexpr int only = fraction.weight[0] != 0 ? 0 : fraction.weight[1] != 0 ? 1 : 2;
            sum = mulHi(x.c[only], splat<I16>(int16_t(fraction.weight[only])));
        } else if constexpr (used > 0 || offset != 0) {
            const WideSum wide = wideSum<fraction, offset>(x);
            sum = narrowI16(shr<16>(wide.lo), shr<16>(wide.hi));
        }
        if constexpr (whole.weight[0] != 0) sum = sum + times<whole.weight[0]>(x.c[0]);
        if constexpr (whole.weight[1] != 0) sum = sum + times<whole.weight[1]>(x.c[1]);
        if constexpr (whole.weight[2] != 0) sum = sum + times<whole.weight[2]>(x.c[2]);
        if constexpr (shift == 16)
            return sum;
        else
            return shr<shift - 16>(sum);
    }
};

// ---- terms that are cut off each by itself --------------------------------------------------------------------------
//
// (the sum of the terms + offset) >> shift. Terms and sums have 16 bits; a signed factor x << scale has 15.

namespace detail {
/// A negative weight subtracts the term of its magnitude.
template <MatrixRow row, int offset, class Term>
MOX_INLINE I16 sumOfMagnitudes(const Term& term) {
    I16 sum = splat<I16>(offset);
    for (int c = 0; c < 3; ++c) sum = row.weight[c] < 0 ? sum - term(c, -row.weight[c]) : sum + term(c, row.weight[c]);
    return sum;
}
}  // namespace detail

/// Terms ((x << scale) * weight + 16384) >> 15.
template <MatrixRow row, int scale, int offset, int shift>
struct RoundedTerms {
    // The same product from less of a scale, which may be had for less.
    static constexpr bool lessScale = scale == 7 && row.within(1 << 14);
    template <class Pixels>
    MOX_INLINE I16 operator()(const Pixels& x) const {
        return shr<shift>(detail::sumOfMagnitudes<row, offset>([&](int c, int weight) {
            return mulHiRound(scaled<scale - lessScale>(x, c), splat<I16>(int16_t(weight << lessScale)));
        }));
    }
};

/// Terms ((x << scale) * weight) >> 16 of unsigned factors and weights up to 65535. Without a negative weight, the sum
/// too is unsigned.
template <MatrixRow row, int scale, int offset, int shift>
struct TruncatedTerms {
    template <class Pixels>
    MOX_INLINE I16 operator()(const Pixels& x) const {
        const I16 sum = detail::sumOfMagnitudes<row, offset>([&](int c, int weight) {
            return as<I16>(mulHi(as<U16>(scaled<scale>(x, c)), splat<U16>(uint16_t(weight))));
        });
        if constexpr (row.weight[0] < 0 || row.weight[1] < 0 || row.weight[2] < 0)
            return shr<shift>(sum);
        else
            return as<I16>(shr<shift>(as<U16>(sum)));
    }
};

/// Terms ((x << scale) * weight) >> 16, towards minus infinity: a negative weight is negative before it is cut off.
template <MatrixRow row, int scale, int offset, int shift>
struct FlooredTerms {
    template <class Pixels>
    MOX_INLINE I16 operator()(const Pixels& x) const {
        const auto term = [&](int c) { return mulHi(scaled<scale>(x, c), splat<I16>(int16_t(row.weight[c]))); };
        return shr<shift>(((term(0) + term(1)) + term(2)) + splat<I16>(offset));
    }
};

// ---- all results of a pixel -----------------------------------------------------------------------------------------

/// A rule for each result.
template <class... Rule>
struct PerChannel {
    template <class Pixels>
    MOX_INLINE Px<I16, int(sizeof...(Rule))> operator()(const Pixels& x) const {
        return {{Rule{}(x)...}};
    }
};

}  // namespace q4
