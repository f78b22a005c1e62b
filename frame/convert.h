// The usual entries: one source, one destination, each a picture of interleaved pixels or an array of planes.
#pragma once

#include "frame/checks.h"
#include "frame/kernel.h"

namespace q4 {

/// When the pointers in plane arrays are tested. The arrays themselves are tested first of all.
enum class PlanesTested { afterSize, beforeSize };

/// A picture in a layout: p points to pixels, or to the layout's plane pointers; step is one step, or those of all
/// planes.
template <class Layout, class T, class Step>
MOX_INLINE auto imageOf(T* p, Step step) {
    if constexpr (std::is_pointer_v<T>)
        return image<Layout::planes>(p, step);
    else
        return image(p, step);
}

/// The pointers behind an argument, if it is an array of planes.
template <int n, class T>
inline auto anyPlanesNotNull(T* p) {
    if constexpr (std::is_pointer_v<T>)
        return planesNotNull<n>(p);
    else
        return [] { return moxStatusOk; };
}

/// The pointers, the pointers in plane arrays and the size, in the order asked for.
template <PlanesTested planes, int srcPlanes, int dstPlanes, class S, class D>
MoxStatus checkPicture(S* src, D* dst, MoxiSize roiSize, MoxiSize smallest = {1, 1}) {
    const auto size = sizeAtLeast(roiSize, smallest.width, smallest.height);
    const auto srcInner = anyPlanesNotNull<srcPlanes>(src);
    const auto dstInner = anyPlanesNotNull<dstPlanes>(dst);
    if constexpr (planes == PlanesTested::afterSize) return firstOf(notNull(src, dst), size, srcInner, dstInner);
    return firstOf(notNull(src, dst), srcInner, dstInner, size);
}

/// Tests the arguments and runs a row kernel over the picture. Steps are bytes.
template <PlanesTested planes = PlanesTested::afterSize, class Kernel, class S, class SrcStep, class D, class DstStep>
MoxStatus convert(const Kernel& kernel, S* src, SrcStep srcStep, D* dst, DstStep dstStep, MoxiSize roiSize,
                  MoxiSize smallest = {1, 1}) {
    using Src = typename Kernel::Src;
    using Dst = typename Kernel::Dst;
    if (MoxStatus s = checkPicture<planes, Src::planes, Dst::planes>(src, dst, roiSize, smallest)) return s;
    eachRow(kernel, imageOf<Src>(src, srcStep), imageOf<Dst>(dst, dstStep), roiSize);
    return moxStatusOk;
}

}  // namespace q4
