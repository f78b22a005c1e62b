// RGB and full-range YUV at full resolution.
#include "moxcc/yuv.h"

#include "frame/convert.h"
#include "models/yuv_rules.h"

namespace q4 {
namespace {

// ---- kernels: source, destination, columns of the first rule, first rule, rule of the rest --------------------------

using innerRGBToYUV_8u_C3R = Split<C3<Mox8u>, C3<Mox8u>, 16, On<I16, UF3>, On<I16, UF2>>;
using innerRGBToYUV_8u_AC4R = AllColumns<AC4<Mox8u>, AC4<Mox8u>, On<I16, UF1>>;
using innerRGBToYUV_8u_C3P3R = Split<C3<Mox8u>, P3<Mox8u>, 8, On<I16, UF3>, On<I16, UF2>>;
using innerRGBToYUV_8u_P3R = Split<P3<Mox8u>, P3<Mox8u>, 16, On<I16, UF3>, On<I16, UF4>>;
using myRGBToYUV_8u_AC4P4R = Split<C4<Mox8u>, P4<Mox8u>, 8, FourthCopied<On<I16, UF5>>, FourthCopied<On<I16, UF1>>>;

using innerYUVToRGB_8u_C3R = Split<C3<Mox8u>, C3<Mox8u>, 8, On<I16, UI4>, On<I16, UI1>>;
using innerYUVToRGB_8u_AC4R = AllColumns<AC4<Mox8u>, AC4<Mox8u>, On<I16, UI1>>;
using ownYUVToRGB_8u_C3C4R =
    Split<C3<Mox8u>, C4<Mox8u>, 8, WithFourth<On<I16, UI6>, Mox8u>, WithFourth<On<I16, UI2>, Mox8u>>;
using innerYUVToRGB_8u_P3C3R = Split<P3<Mox8u>, C3<Mox8u>, 16, On<I16, UI5>, On<I16, UI3>>;
using innerYUVToRGB_8u_P3R = AllColumns<P3<Mox8u>, P3<Mox8u>, On<I16, UI3>>;

}  // namespace
}  // namespace q4

// ---- entries --------------------------------------------------------------------------------------------------------

using namespace q4;

MoxStatus moxiRGBToYUV_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerRGBToYUV_8u_C3R{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiRGBToYUV_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerRGBToYUV_8u_AC4R{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiRGBToYUV_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                MoxiSize roiSize) {
    return convert(innerRGBToYUV_8u_C3P3R{}, src, srcStep, dstPlanes, dstStep, roiSize);
}
MoxStatus moxiRGBToYUV_8u_AC4P4R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                 MoxiSize roiSize) {
    return convert(myRGBToYUV_8u_AC4P4R{}, src, srcStep, dstPlanes, dstStep, roiSize);
}
MoxStatus moxiRGBToYUV_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                              MoxiSize roiSize) {
    return convert(innerRGBToYUV_8u_P3R{}, srcPlanes, srcStep, dstPlanes, dstStep, roiSize);
}

MoxStatus moxiYUVToRGB_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerYUVToRGB_8u_C3R{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYUVToRGB_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerYUVToRGB_8u_AC4R{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYUVToRGB_8u_C3C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                Mox8u aval) {
    return convert(ownYUVToRGB_8u_C3C4R{{{}, aval}, {{}, aval}}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYUVToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                MoxiSize roiSize) {
    return convert(innerYUVToRGB_8u_P3C3R{}, srcPlanes, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYUVToRGB_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                              MoxiSize roiSize) {
    return convert(innerYUVToRGB_8u_P3R{}, srcPlanes, srcStep, dstPlanes, dstStep, roiSize);
}
