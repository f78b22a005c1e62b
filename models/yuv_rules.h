// RGB and full-range YUV: Y of the weights 0.299, 0.587, 0.114, U = 0.492 (B - Y) and V = 0.877 (R - Y) about 128.
#pragma once

#include "models/fixed_point.h"

namespace q4 {

// ---- from R, G, B ---------------------------------------------------------------------------------------------------

/// Y and the two differences by one sum each, then the differences scaled by 0.492 and 0.877. The differences are
/// rounded a little below or above one half.
template <int lumaOffset, int differenceOffset>
struct ScaledDifferences {
    MOX_INLINE Px<I16, 3> operator()(const Px<I16, 3>& p) const {
        const Px<I16, 3> x = Exact<Matrix{
            {0, 0, 0},
            {{{19595, 38470, 7471}}, {{-19595, -38470, one16 - 7471}}, {{one16 - 19595, -38470, -7471}}},
            {lumaOffset, differenceOffset, differenceOffset},
        }>{}(p);
        const I16 scaledV = x.c[2] + mulHi(x.c[2], splat<I16>(57475 - one16));
        return Px{x.c[0], mulHi(x.c[1], splat<I16>(32244)) + splat<I16>(128), scaledV + splat<I16>(128)};
    }
};
using UF1 = ScaledDifferences<half16, half16>;
using UF2 = ScaledDifferences<0, half16 - 1>;

/// Terms truncated to 8 fractional bits in luma, to 6 in chroma. White gives Y 254.
using UF3 = PerChannel<TruncatedTerms<MatrixRow{{19595, 38469, 7471}}, 8, 0, 8>,
                       FlooredTerms<MatrixRow{{-4816, -9469, 14286}}, 7, 128 << 6, 6>,
                       FlooredTerms<MatrixRow{{20152, -16875, -3276}}, 7, 128 << 6, 6>>;

/// Chroma weights of 15 fractional bits.
using UF4 = Exact<Matrix{
    {0, 0, 0},
    {{{19595, 38469, 7471}}, {{2 * -4816, 2 * -9469, 2 * 14286}}, {{2 * 20152, 2 * -16875, 2 * -3276}}},
    {0, 128 * one16, 128 * one16},
}>;

/// Through twice the luma, which keeps one fractional bit.
struct UF5 {
    MOX_INLINE Px<I16, 3> operator()(const Px<I16, 3>& p) const {
        const auto term = [&](int c, int weight) { return truncatedTerm<14>(p.c[c], weight); };
        const I16 twice = ((term(0, 9798) + term(1, 19235)) + term(2, 3736)) + splat<I16>(1);
        const auto scaled = [&](int c, int weight) {
            return mulHi((p.c[c] + p.c[c]) - twice, splat<I16>(int16_t(weight))) + splat<I16>(128);
        };
        return Px{shr<1>(twice), scaled(2, 16121), scaled(0, 28737)};
    }
};

// ---- to R, G, B -----------------------------------------------------------------------------------------------------

inline constexpr Bases fullRange = {0, 128};

// One sum of 16 fractional bits; the weights are 1.140, 0.394, 0.581 and 2.032, more or less.
//                                        luma   R by V  G by U, V       B by U   offsets of R, G, B
using UI1 = Exact<decoding(fullRange, one16, 74711, -25821, -38076, 133169, {half16, 0, half16})>;
using UI2 = Exact<decoding(fullRange, one16, 74711, -25821, -38076, 133169, {half16, half16, half16})>;
using UI3 = Exact<decoding(fullRange, one16, 74710, -25820, -38075, 133168, {0, 0, 0})>;
using UI7 = Exact<decoding(fullRange, one16, 74711, -25821, -38076, 133169, {0, 0, 0})>;
using UI10 = Exact<decoding(fullRange, one16, 9338 * 8, -3227 * 8, -4759 * 8, 16645 * 8, {0, 0, 0})>;

// Terms of no to 4 fractional bits.
//                      bits  luma              R by V  G by U, V  B by U  offsets of R, G, B  fraction
using UI4 = Terms<TermWeights{fullRange, 13, TermWeights::plain, 9339, -3228, -4760, 16646, {0, 0, 0}, 0}>;
using UI5 = Terms<TermWeights{fullRange, 12, TermWeights::plain, 9338, -3227, -4759, 16645, {0, 0, 0}, 1}>;
using UI6 = Terms<TermWeights{fullRange, 9, TermWeights::plain, 4669, 1614, 2380, 8323, {4, 4, 4}, 3}>;
using UI8 = Terms<TermWeights{fullRange, 9, TermWeights::plain, 9338, 3227, 4759, 16646, {8, 8, 8}, 4}>;
using UI9 = Terms<TermWeights{fullRange, 12, TermWeights::plain, 9339, -3228, -4760, 16646, {0, 0, 0}, 1}>;

}  // namespace q4
