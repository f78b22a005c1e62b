// The usual entry: one source image, one destination image, no planes and no step tests.
#pragma once

#include "frame/checks.h"
#include "frame/kernel.h"

namespace q4 {

/// Tests the pointers, then the size, and runs a row kernel over the picture. Steps are bytes.
template <class Kernel, class S, class D>
MoxStatus convert(const Kernel& kernel, const S* src, ptrdiff_t srcStep, D* dst, ptrdiff_t dstStep, MoxiSize roiSize) {
    if (MoxStatus s = firstOf(notNull(src, dst), sizeAtLeast(roiSize, 1, 1))) return s;
    eachRow(kernel, image(src, srcStep), image(dst, dstStep), roiSize);
    return moxStatusOk;
}

}  // namespace q4
