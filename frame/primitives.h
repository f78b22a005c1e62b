// Plane and vector operations that the families share: copy, fill, maximum, sum, mean, adding a constant. They test
// their arguments as the exports do (null pointers, then sizes; steps are not tested) and answer with a status. Source
// and destination must not overlap.
#pragma once

#include <cstdint>

#include "moxcc/types.h"

namespace q4 {

MoxStatus moxiCopy_8u_C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
/// The same row by row through moxsCopy_8u, for rows of any width.
MoxStatus moxiCopy_8u_C1R_L(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
MoxStatus moxiSet_8u_C1R(Mox8u value, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/// The greatest sample; NaNs are passed over, and an image of nothing greater gives the most negative finite float.
MoxStatus moxiMax_32f_C1R(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox32f* result);

/// The one summation in use.
inline constexpr int32_t sumHint = 1;
/// The sum in single precision within a row, in an order that depends on the row's address modulo 16, and in extended
/// precision over the rows.
MoxStatus moxiSum_32f_C1R(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox64f* result, int32_t hint);
/// That sum divided by the number of samples; result keeps its value on failure.
MoxStatus moxiMean_32f_C1R(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox64f* result, int32_t hint);

MoxStatus moxsCopy_8u(const Mox8u* src, Mox8u* dst, int32_t len);
MoxStatus moxsCopy_32f(const Mox32f* src, Mox32f* dst, int32_t len);
MoxStatus moxsCopy_32s(const Mox32s* src, Mox32s* dst, int32_t len);
MoxStatus moxsSet_32f(Mox32f value, Mox32f* dst, int32_t len);
/// dst = src + value; a value of 0 or -0 copies the bits, so that -0 stays -0.
MoxStatus moxsAddC_32f(const Mox32f* src, Mox32f value, Mox32f* dst, int32_t len);
/// dst = src - value; a value of 0 or -0 copies the bits.
MoxStatus moxsSubC_32f(const Mox32f* src, Mox32f value, Mox32f* dst, int32_t len);

/// Unchecked copy of len >= 1 bytes; with nonTemporal, past the cache where that is safe and worth while.
void ownccCopy_8u_C1_Q2(const Mox8u* src, Mox8u* dst, int32_t len, int nonTemporal);

}  // namespace q4
