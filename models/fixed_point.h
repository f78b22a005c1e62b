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

#include "models/weighted_sum.h"

namespace q4 {

/// (x * weight) >> bits, for x of 16 - bits bits less than a lane has.
template <int bits>
MOX_INLINE I16 truncatedTerm(I16 x, int weight) {
    return mulHi(shl<16 - bits>(x), splat<I16>(int16_t(weight)));
}
template <int constant>
MOX_INLINE I16 plus(I16 x) {
    if constexpr (constant == 0)
        return x;
    else
        return x + splat<I16>(constant);
}

// ---- a matrix with one sum at full precision ------------------------------------------------------------------------

/// Result i is the sum of row[i].weight[j] * (sample j - base[j]) and offset[i], without its low 16 bits.
struct Matrix {
    int base[3];
    MatrixRow row[3];
    int offset[3];
};

template <Matrix m>
struct Exact {
    /// Luma enters each result as a whole number, so that the rest depends on chroma alone.
    static constexpr bool wholeLuma = fractionPart(m.row[0].weight[0]) == 0 && fractionPart(m.row[1].weight[0]) == 0 &&
                                      fractionPart(m.row[2].weight[0]) == 0;

    MOX_INLINE Px<I16, 3> operator()(const Px<I16, 3>& p) const { return pixel(p.c[0], chroma({{p.c[1], p.c[2]}})); }

    MOX_INLINE auto chroma(const Px<I16, 2>& p) const {
        const Px x = {zero<I16>(), plus<-m.base[1]>(p.c[0]), plus<-m.base[2]>(p.c[1])};
        if constexpr (wholeLuma)
            return Px{sum<0, 1>(x), sum<1, 1>(x), sum<2, 1>(x)};
        else
            return Px<I16, 2>{{x.c[1], x.c[2]}};
    }
    template <int n>
    MOX_INLINE Px<I16, 3> pixel(I16 luma, const Px<I16, n>& shared) const {
        const I16 y = plus<-m.base[0]>(luma);
        if constexpr (wholeLuma) {
            return Px{times<wholePart(m.row[0].weight[0])>(y) + shared.c[0],
                      times<wholePart(m.row[1].weight[0])>(y) + shared.c[1],
                      times<wholePart(m.row[2].weight[0])>(y) + shared.c[2]};
        } else {
            const Px x = {y, shared.c[0], shared.c[1]};
            return Px{sum<0>(x), sum<1>(x), sum<2>(x)};
        }
    }

  private:
    /// Result i of the samples from number `from` on.
    template <int i, int from = 0>
    MOX_INLINE static I16 sum(const Px<I16, 3>& x) {
        constexpr MatrixRow row = {{from > 0 ? 0 : m.row[i].weight[0], m.row[i].weight[1], m.row[i].weight[2]}};
        return FullPrecision<row, m.offset[i], 16>{}(x);
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
            {{{luma, 0, rCr}}, {{luma, gCb, gCr}}, {{luma, bCb, 0}}},
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
        return Px{plus<w.offset.r - common>(term(v, w.rCr)),
                  plus<w.offset.g - common>(green<w.gCb>(u) + green<w.gCr>(v)),
                  plus<w.offset.b - common>(term(u, w.bCb))};
    }
    MOX_INLINE Px<I16, 3> pixel(I16 luma, const Px<I16, 3>& shared) const {
        const I16 y = lumaTerm(luma);
        return Px{shr<w.fraction>(y + shared.c[0]), shr<w.fraction>(y + shared.c[1]), shr<w.fraction>(y + shared.c[2])};
    }

  private:
    /// An offset that all have is added to luma, once.
    static constexpr int common = w.offset.r == w.offset.g && w.offset.g == w.offset.b ? w.offset.r : 0;

    MOX_INLINE static I16 term(I16 x, int weight) { return truncatedTerm<w.bits>(x, weight); }
    template <int weight>
    MOX_INLINE static I16 green(I16 x) {
        return weight < 0 ? term(x, weight) : zero<I16>() - term(x, weight);
    }
    MOX_INLINE static I16 lumaTerm(I16 luma) {
        const I16 y = plus<-w.base.luma>(luma);
        return plus<common>(w.luma == TermWeights::plain ? shl<w.fraction>(y) : term(y, w.luma));
    }
};

}  // namespace q4
