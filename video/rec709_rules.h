// BT.709 in studio range, and a full-range matrix for the same primaries.
#pragma once

#include "models/fixed_point.h"

namespace q4 {

// ---- studio range to R, G, B: the weights are 1.164, 1.793, 0.213, 0.534 and 2.115 ----------------------------------

//                                    bits  luma  R by Cr  G by Cb, Cr   B by Cb  offsets of R, G, B  fraction
using VI1 = Terms<TermWeights{{16, 128}, 9, 9535, 14688, -1745, -4375, 17326, {8, 8, 8}, 4}>;
using VI2 = Terms<TermWeights{{16, 128}, 9, 9535, 14688, 1745, 4375, 17326, {8, 8, 8}, 4}>;
using VI3 = Exact<decoding({16, 128}, 76284, 117506, -13959, -34996, 138609, {half16, half16, half16})>;

// ---- full range to R, G, B: the weights are 1, 1.540, 0.183, 0.459 and 1.816 ----------------------------------------

using HI1 = Terms<TermWeights{{0, 128}, 9, TermWeights::plain, 12616, -1499, -3760, 14877, {8, 8, 8}, 4}>;
using HI2 = Terms<TermWeights{{0, 128}, 9, TermWeights::plain, 12616, 1499, 3760, 14877, {8, 8, 8}, 4}>;
using HI3 = Exact<decoding({0, 128}, one16, 100925, -11993, -30081, 119013, {half16, half16, half16})>;

}  // namespace q4
