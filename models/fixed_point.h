// Fixed-point colour rules on 16-bit lanes.
//
// A rule is defined by its weights, by the fraction that its terms keep, and by where it rounds; rules of one model
// that differ in one of these only are different rules, and are lines of one table (ycbcr_rules.h, yuv_rules.h). Two
// shapes cover nearly all of them: Terms, whose products are truncated each by itself, and Exact, whose one sum has
// a fraction of 16 bits.
//
// A rule that decodes is used in two ways: by operator() on three samples of the same pixel; and in two steps where
// pixels share their chroma, first chroma() on what they share, then pixel() on each luma sample.
#pragma once

#include "frame/block.h"

namespace q4 {

inline constexpr int one16 = 1 << 16;
inline constexpr int half16 = 1 << 15;

/// (x * weight) >> bits, for x of 16 - bits bits less than a lane has.
template <int bits>
MOX_INLINE I16 truncatedTerm(I16 x, int weight) {
    return mulHi(shl<16 - bits>(x), splat<I16>(int16_t(weight)));
}
/// (128 * x * weight + 16384) >> 15 of a byte.
MOX_INLINE I16 roundedTerm(I16 x, int weight) { return mulHiRound(shl<7>(x), splat<I16>(int16_t(weight))); }

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

template <int constant>
MOX_INLINE I16 plus(I16 x) {
    if constexpr (constant == 0)
        return x;
    else
        return x + splat<I16>(constant);
}

// ---- a matrix with one sum at full precision ------------------------------------------------------------------------

/// Result i is the sum of weight[i][j] * (sample j - base[j]) and offset[i], without its low 16 bits.
struct Matrix {
    int base[3];
    int weight[3][3];
    int offset[3];
};

/// Each weight is split into a whole number and a fraction of a signed 16-bit lane: the sum of the fractions takes 32
/// bits, and all else is exact in 16.
template <Matrix m>
struct Exact {
    static constexpr int whole(int weight) { return (weight + half16) >> 16; }
    static constexpr int fraction(int weight) { return weight - whole(weight) * one16; }
    /// Luma enters each result as a whole number, so that the rest depends on chroma alone.
    static constexpr bool wholeLuma =
        fraction(m.weight[0][0]) == 0 && fraction(m.weight[1][0]) == 0 && fraction(m.weight[2][0]) == 0;

    MOX_INLINE Px<I16, 3> operator()(const Px<I16, 3>& p) const { return pixel(p.c[0], chroma({{p.c[1], p.c[2]}})); }

    MOX_INLINE auto chroma(const Px<I16, 2>& p) const {
        const I16 x[3] = {zero<I16>(), plus<-m.base[1]>(p.c[0]), plus<-m.base[2]>(p.c[1])};
        if constexpr (wholeLuma)
            return Px{sum<0, 1>(x), sum<1, 1>(x), sum<2, 1>(x)};
        else
            return Px<I16, 2>{{x[1], x[2]}};
    }
    template <int n>
    MOX_INLINE Px<I16, 3> pixel(I16 luma, const Px<I16, n>& shared) const {
        const I16 y = plus<-m.base[0]>(luma);
        if constexpr (wholeLuma) {
            return Px{times<whole(m.weight[0][0])>(y) + shared.c[0], times<whole(m.weight[1][0])>(y) + shared.c[1],
                      times<whole(m.weight[2][0])>(y) + shared.c[2]};
        } else {
            const I16 x[3] = {y, shared.c[0], shared.c[1]};
            return Px{sum<0>(x), sum<1>(x), sum<2>(x)};
        }
    }

  private:
    /// Result i of the samples from number `from` on.
    template <int i, int from = 0>
    MOX_INLINE static I16 sum(const I16 (&x)[3]) {
        constexpr auto fractionOf = [](int j) { return j < from ? 0 : fraction(m.weight[i][j]); };
        constexpr auto wholeOf = [](int j) { return j < from ? 0 : whole(m.weight[i][j]); };
        I16 wholes = zero<I16>();
        if constexpr (wholeOf(0) != 0) wholes = wholes + times<wholeOf(0)>(x[0]);
        if constexpr (wholeOf(1) != 0) wholes = wholes + times<wholeOf(1)>(x[1]);
        if constexpr (wholeOf(2) != 0) wholes = wholes + times<wholeOf(2)>(x[2]);

        // The samples with a fraction, in pairs; a single one beside nothing needs no 32 bits.
        constexpr int used = (fractionOf(0) != 0) + (fractionOf(1) != 0) + (fractionOf(2) != 0);
        constexpr int first = fractionOf(0) != 0 ? 0 : fractionOf(1) != 0 ? 1 : 2;
        constexpr int second = fractionOf(1) != 0 && first < 1 ? 1 : 2;
        if constexpr (used == 0 && m.offset[i] == 0) {
            return wholes;
        } else if constexpr (used == 1 && m.offset[i] == 0) {
            return wholes + mulHi(x[first], splat<I16>(fractionOf(first)));
        } else {
            const I16 b = used >= 2 ? x[second] : zero<I16>();
            const I16 weights = pairOf(fractionOf(first), used >= 2 ? fractionOf(second) : 0);
            I32 lo = dotPairs(unpackLo<16>(x[first], b), weights);
            I32 hi = dotPairs(unpackHi<16>(x[first], b), weights);
            if constexpr (used == 3) {
                const I16 third = pairOf(fractionOf(2), 0);
                lo = lo + dotPairs(unpackLo<16>(x[2], zero<I16>()), third);
                hi = hi + dotPairs(unpackHi<16>(x[2], zero<I16>()), third);
            }
            if constexpr (m.offset[i] != 0) {
                lo = lo + splat<I32>(m.offset[i]);
                hi = hi + splat<I32>(m.offset[i]);
            }
            return wholes + narrowI16(shr<16>(lo), shr<16>(hi));
        }
    }

    MOX_INLINE static I16 pairOf(int even, int odd) {
        return as<I16>(splat<I32>(int32_t(uint32_t(uint16_t(even)) | uint32_t(uint16_t(odd)) << 16)));
    }
};

/// The matrix that decodes: luma has one weight, R no Cb and B no Cr.
struct Bases {
    int luma, chroma;
};
struct Offsets {
    int r, g, b;
};
inline constexpr Matrix decoding(Bases base, int luma, int rCr, int gCb, int gCr, int bCb, Offsets offset) {
    return {{base.luma, base.chroma, base.chroma},
            {{luma, 0, rCr}, {luma, gCb, gCr}, {luma, bCb, 0}},
            {offset.r, offset.g, offset.b}};
}

// ---- decoding with terms of few fractional bits ---------------------------------------------------------------------

/// Each term, the product of a sample and a weight, is truncated to the fraction of the sum. The weights of G are
/// written as they are used: of a negative one the negative term is truncated, the term of a positive one is truncated,
/// then subtracted.
struct TermWeights {
    Bases base;
    int bits;  // dropped from each product
    int luma;  // plain: luma enters as it is
    int rCr, gCb, gCr, bCb;
    Offsets offset;
    int fraction;

    static constexpr int plain = 0;
};

/// The sums stay within 14 bits, so that no lane overflows.
template <TermWeights w>
struct Terms {
    MOX_INLINE Px<I16, 3> operator()(const Px<I16, 3>& p) const { return pixel(p.c[0], chroma({{p.c[1], p.c[2]}})); }

    MOX_INLINE Px<I16, 3> chroma(const Px<I16, 2>& p) const {
        const I16 u = plus<-w.base.chroma>(p.c[0]), v = plus<-w.base.chroma>(p.c[1]);
        return Px{plus<w.offset.r>(term(v, w.rCr)), plus<w.offset.g>(green<w.gCb>(u) + green<w.gCr>(v)),
                  plus<w.offset.b>(term(u, w.bCb))};
    }
    MOX_INLINE Px<I16, 3> pixel(I16 luma, const Px<I16, 3>& shared) const {
        const I16 y = lumaTerm(luma);
        return Px{shr<w.fraction>(y + shared.c[0]), shr<w.fraction>(y + shared.c[1]), shr<w.fraction>(y + shared.c[2])};
    }

  private:
    MOX_INLINE static I16 term(I16 x, int weight) { return truncatedTerm<w.bits>(x, weight); }
    template <int weight>
    MOX_INLINE static I16 green(I16 x) {
        return weight < 0 ? term(x, weight) : zero<I16>() - term(x, weight);
    }
    MOX_INLINE static I16 lumaTerm(I16 luma) {
        const I16 y = plus<-w.base.luma>(luma);
        return w.luma == TermWeights::plain ? shl<w.fraction>(y) : term(y, w.luma);
    }
};

// ---- encoding with terms of few fractional bits ---------------------------------------------------------------------

/// (the sum of the terms of R, G, B, and the offset) >> fraction.
struct TermSum {
    int weight[3];
    int offset;
    int fraction;
};

/// Terms (x * weight) >> 8 on unsigned lanes, which weights and sums up to 65535 need.
template <TermSum s>
MOX_INLINE I16 sumOfTerms8(const Px<I16, 3>& p) {
    const auto term = [&](int c) { return mulHi(shl<8>(as<U16>(p.c[c])), splat<U16>(uint16_t(s.weight[c]))); };
    return as<I16>(shr<s.fraction>(((term(0) + term(1)) + term(2)) + splat<U16>(s.offset)));
}
/// Terms (x * weight) >> 9.
template <TermSum s>
MOX_INLINE I16 sumOfTerms9(const Px<I16, 3>& p) {
    const auto term = [&](int c) { return truncatedTerm<9>(p.c[c], s.weight[c]); };
    return shr<s.fraction>(((term(0) + term(1)) + term(2)) + splat<I16>(s.offset));
}
/// Terms rounded to the fraction, (128 * x * |weight| + 16384) >> 15, of a negative weight subtracted.
template <TermSum s>
MOX_INLINE I16 sumOfRoundedTerms(const Px<I16, 3>& p) {
    I16 sum = splat<I16>(s.offset);
    for (int c = 0; c < 3; ++c)
        sum = s.weight[c] < 0 ? sum - roundedTerm(p.c[c], -s.weight[c]) : sum + roundedTerm(p.c[c], s.weight[c]);
    return shr<s.fraction>(sum);
}

}  // namespace q4
