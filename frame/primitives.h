// Plane operations that the families share: copy, fill, maximum, sum, mean. They test their arguments as the exports do
// (null pointers, then sizes; steps are not tested) and answer with a status. Source and destination must not overlap.
#pragma once

#include <cstdint>

#include "moxcc/types.h"

namespace q4 {

MoxStatus moxiCopy_8u_C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
MoxStatus moxiSet_8u_C1R(Mox8u value, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);

/// The greatest sample; NaNs are passed over, and an image of nothing greater gives the most negative finite float.
MoxStatus moxiMax_32f_C1R(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox32f* result);

/// The sum in single precision within a row, in an order that depends on the row's address modulo 16, and in extended
/// precision over the rows.
MoxStatus moxiSum_32f_C1R(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox64f* result);
/// That sum divided by the number of samples; result keeps its value on failure.
MoxStatus moxiMean_32f_C1R(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox64f* result);

}  // namespace q4
