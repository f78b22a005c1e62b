// RGB and the studio-range YCbCr of BT.601 at full resolution.
#include "moxcc/ycbcr.h"

#include "frame/convert.h"
#include "models/ycbcr_rules.h"

namespace q4 {
namespace {

// ---- kernels: source, destination, columns of the first rule, first rule, rule of the rest --------------------------

using innerRGBToYCbCr_C3_C3R = Split<C3<Mox8u>, C3<Mox8u>, 16, On<I16, YF2>, On<I16, YF1>>;
template <class Src>
using innerRGBToYCbCr_8u_C3P3R = Split<Src, P3<Mox8u>, 8, On<I16, YF3>, On<I16, YF1>>;

/// The columns of the first rule get a fourth byte of 0, the rest keep theirs.
struct innerRGBToYCbCr_AC4R {
    using Src = AC4<Mox8u>;
    using Dst = AC4<Mox8u>;
    MOX_INLINE void row(const SrcRows<1>& src, const DstRows<1>& dst, ptrdiff_t width) const {
        const ptrdiff_t limit = width & -16;
        span<Src, C4<Mox8u>>(src, dst, 0, limit, WithFourth<On<I16, YF2>, Mox8u>{{}, 0});
        span<Src, Dst>(src, dst, limit, width, On<I16, YF1>{});
    }
};

template <class Src, class Dst>
using innerYCbCrToRGB_8u_C3R = Split<Src, Dst, 8, On<I16, YI4>, On<I16, YI1>>;
using innerYCbCrToRGB_8u_P3R = Split<P3<Mox8u>, P3<Mox8u>, 4, On<I16, YI6>, On<I16, YI2>>;
using innerYCbCrToRGB_AC4R = AllColumns<AC4<Mox8u>, AC4<Mox8u>, On<I16, YI3>>;
using innerYCbCrToRGB_8u_P3C4R =
    Split<P3<Mox8u>, C4<Mox8u>, 8, WithFourth<On<I16, YI5>, Mox8u>, WithFourth<On<I16, YI1>, Mox8u>>;
using ownYCbCrToBGR_8u_P3C4R = AllColumns<P3<Mox8u>, Reversed<C4<Mox8u>>, WithFourth<On<I16, YI5>, Mox8u>>;

}  // namespace
}  // namespace q4

// ---- entries --------------------------------------------------------------------------------------------------------

using namespace q4;

MoxStatus moxiRGBToYCbCr_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerRGBToYCbCr_C3_C3R{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiRGBToYCbCr_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerRGBToYCbCr_AC4R{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiRGBToYCbCr_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                  MoxiSize roiSize) {
    return convert<PlanesTested::beforeSize>(innerRGBToYCbCr_8u_C3P3R<C3<Mox8u>>{}, src, srcStep, dstPlanes, dstStep,
                                             roiSize);
}
MoxStatus moxiRGBToYCbCr_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                   MoxiSize roiSize) {
    return convert<PlanesTested::beforeSize>(innerRGBToYCbCr_8u_C3P3R<AC4<Mox8u>>{}, src, srcStep, dstPlanes, dstStep,
                                             roiSize);
}
MoxStatus moxiRGBToYCbCr_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                int32_t dstStep, MoxiSize roiSize) {
    return convert(innerRGBToYCbCr_8u_C3P3R<P3<Mox8u>>{}, srcPlanes, srcStep, dstPlanes, dstStep, roiSize);
}

MoxStatus moxiYCbCrToRGB_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerYCbCrToRGB_8u_C3R<C3<Mox8u>, C3<Mox8u>>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCrToRGB_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerYCbCrToRGB_AC4R{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCrToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                  MoxiSize roiSize) {
    return convert<PlanesTested::beforeSize>(innerYCbCrToRGB_8u_C3R<P3<Mox8u>, C3<Mox8u>>{}, srcPlanes, srcStep, dst,
                                             dstStep, roiSize);
}
MoxStatus moxiYCbCrToRGB_8u_P3C4R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                  MoxiSize roiSize, Mox8u aval) {
    return convert(innerYCbCrToRGB_8u_P3C4R{{{}, aval}, {{}, aval}}, srcPlanes, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCrToRGB_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                int32_t dstStep, MoxiSize roiSize) {
    return convert(innerYCbCrToRGB_8u_P3R{}, srcPlanes, srcStep, dstPlanes, dstStep, roiSize);
}
MoxStatus moxiYCbCrToBGR_8u_P3C3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                  MoxiSize roiSize) {
    return convert<PlanesTested::beforeSize>(innerYCbCrToRGB_8u_C3R<P3<Mox8u>, Reversed<C3<Mox8u>>>{}, srcPlanes,
                                             srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCrToBGR_8u_P3C4R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                  MoxiSize roiSize, Mox8u aval) {
    return convert<PlanesTested::beforeSize>(ownYCbCrToBGR_8u_P3C4R{{{}, aval}}, srcPlanes, srcStep, dst, dstStep,
                                             roiSize);
}
