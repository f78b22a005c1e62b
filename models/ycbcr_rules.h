// RGB and the studio-range YCbCr of BT.601: luma 16 to 235, chroma 16 to 240 about 128.
#pragma once

#include "models/fixed_point.h"

namespace q4 {

// ---- from R, G, B ---------------------------------------------------------------------------------------------------

/// 0.257, 0.504, 0.098; -0.148, -0.291, 0.439; 0.439, -0.368, -0.071, and 16.5 and 128.5, in units of 1/65536.
using YF1 = Exact<Matrix{
    {0, 0, 0},
    {{{16843, 33030, 6423}}, {{-9699, -19071, 28770}}, {{28770, -24117, -4653}}},
    {0x108000, 0x808000, 0x808000},
}>;

/// Terms rounded to 6 fractional bits.
using YF2 = PerChannel<RoundedTerms<MatrixRow{{4211, 8258, 1606}}, 7, (16 << 6) + 32, 6>,
                       RoundedTerms<MatrixRow{{-2425, -4768, 7193}}, 7, (128 << 6) + 2, 6>,
                       RoundedTerms<MatrixRow{{7193, -6029, -1163}}, 7, (128 << 6) + 2, 6>>;

/// Terms truncated to 8 fractional bits in luma, whose sum takes 16 bits, and to 7 in chroma.
using YF3 = PerChannel<TruncatedTerms<MatrixRow{{16843, 33030, 6423}}, 8, (16 << 8) + 128, 8>,
                       FlooredTerms<MatrixRow{{-9699, -19071, 28770}}, 7, (128 << 7) + 64, 7>,
                       FlooredTerms<MatrixRow{{28770, -24117, -4653}}, 7, (128 << 7) + 64, 7>>;

// ---- to R, G, B -----------------------------------------------------------------------------------------------------

inline constexpr Bases studioRange = {16, 128};
inline constexpr Bases unsubtracted = {0, 0};  // the bases are part of the offsets

// One sum of 16 fractional bits; the weights are 1.164, 1.596, 0.392, 0.813 and 2.017, more or less.
//                                            luma   R by Cr  G by Cb, Cr     B by Cb  offsets of R, G, B
using YI1 = Exact<decoding(studioRange, 76282, 104593, -25689, -53279, 132184, {half16, half16, half16})>;
using YI2 = Exact<decoding(studioRange, 76284, 104595, -25690, -53281, 132186, {half16, half16, half16})>;
using YI3 = Exact<decoding(studioRange, 76284, 104595, -25690, -53281, 132186, {0, 0, 0})>;
using YI9 = Exact<decoding(unsubtracted, 76284, 104595, -25690, -53281, 132186, {-14608761, 8887730, -18140365})>;
using YI13 = Exact<decoding(studioRange, 76294, 104595, -25625, -53281, 132186, {half16, half16, half16})>;

// Terms of 3 or 4 fractional bits.
//                       bits  luma  R by Cr  G by Cb, Cr  B by Cb  offsets of R, G, B  fraction
using YI4 = Terms<TermWeights{studioRange, 9, 4769, 6537, 1605, 3330, 8263, {4, 4, 4}, 3}>;
using YI5 = Terms<TermWeights{studioRange, 9, 9535, 13074, 3211, 6660, 16523, {8, 8, 8}, 4}>;
using YI6 = Terms<TermWeights{studioRange, 9, 9536, 13074, -3203, -6660, 16523, {0, 0, 0}, 4}>;
using YI7 = Terms<TermWeights{unsubtracted, 9, 4768, 6537, 1606, 3330, 8262, {-1783, 1085, -2214}, 3}>;
using YI8 = Terms<TermWeights{studioRange, 9, 4767, 6537, 1605, 3330, 8261, {0, 0, 0}, 3}>;
using YI10 = Terms<TermWeights{studioRange, 9, 9535, 13074, -3211, -6660, 16523, {8, 8, 8}, 4}>;
using YI11 = Terms<TermWeights{unsubtracted, 9, 4769, 6537, 1605, 3330, 8263, {-1779, 1089, -2211}, 3}>;
using YI12 = Terms<TermWeights{unsubtracted, 9, 4768, 6537, 1606, 3330, 8262, {-1779, 1084, -2210}, 3}>;

}  // namespace q4
