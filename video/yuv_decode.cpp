// Subsampled full-range YUV to RGB and BGR.
#include "moxcc/yuv_decode.h"

#include "models/yuv_rules.h"
#include "video/contiguous.h"
#include "video/decode.h"

namespace q4 {
namespace {

using RGB = C3<Mox8u>;
using BGR = Reversed<RGB>;
using RGB0 = C4<Mox8u>;
using Planes = P3<Mox8u>;

// ---- kernels: source, destination, columns of the first rule, first rule, rule of the rest --------------------------

/// The last pixel of an odd width, and that of a row of one pixel, follow rules of their own.
using innerYUV422ToRGB_8u_C2C3R = WithOddPixel<Decode<YCbCr422, RGB, 16, UI5, UI2>, UI2, UI7>;
using innerYUV422ToRGB_8u_P3C3R = Decode<Planar422, RGB, 16, UI5, UI7>;
using innerYUV422ToRGB_8u_P3AC4R = Decode<Planar422, RGB0, 4, UI8, UI7>;

/// The last column of an odd width has a chroma sample and a rule of its own.
struct innerYUV422ToRGB_8u_P3R : Decode<Planar422, Planes, 16, UI5, UI7> {
    MOX_INLINE void row(const SrcRows<3>& src, const DstRows<3>& dst, ptrdiff_t width) const {
        const ptrdiff_t even = width & -2;
        Decode::row(src, dst, even);
        span<Src, Dst>(src, dst, even, width, colours<UI10>());
    }
};

using inner_Q3_YUV420ToRGB_8u_P3C3R = Decode<Planar420, TwoRows<RGB>, 1, UI5>;
using ownYUV420ToBGR_8u_P3C3R = Decode<Planar420, TwoRows<BGR>, 1, UI9>;
using innerYUV420ToRGB_8u_P3R = Decode<Planar420, TwoRows<Planes>, 1, UI7>;
using innerYUV420ToRGB_8u_P3AC4R = Decode<Planar420, TwoRows<RGB0>, 4, UI8, UI2>;

}  // namespace
}  // namespace q4

using namespace q4;

MoxStatus moxiYUV422ToRGB_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerYUV422ToRGB_8u_C2C3R{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYUV422ToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst, int32_t dstStep,
                                   MoxiSize roiSize) {
    return convert(innerYUV422ToRGB_8u_P3C3R{}, srcPlanes, srcSteps, dst, dstStep, roiSize);
}
MoxStatus moxiYUV422ToRGB_8u_P3AC4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst, int32_t dstStep,
                                    MoxiSize roiSize) {
    return convert(innerYUV422ToRGB_8u_P3AC4R{}, srcPlanes, srcSteps, dst, dstStep, roiSize);
}
MoxStatus moxiYUV422ToRGB_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                 int32_t dstStep, MoxiSize roiSize) {
    return convert(innerYUV422ToRGB_8u_P3R{}, srcPlanes, srcSteps, dstPlanes, dstStep, roiSize);
}
MoxStatus moxiYUV422ToRGB_8u_P3C3(const Mox8u* const* srcPlanes, Mox8u* dst, MoxiSize roiSize) {
    return convert(innerYUV422ToRGB_8u_P3C3R{}, srcPlanes, natural422(roiSize.width).planes, dst,
                   3 * ptrdiff_t(roiSize.width), joinedRows(roiSize));
}
MoxStatus moxiYUV422ToRGB_8u_P3(const Mox8u* const* srcPlanes, Mox8u* const* dstPlanes, MoxiSize roiSize) {
    return convert(innerYUV422ToRGB_8u_P3R{}, srcPlanes, natural422(roiSize.width).planes, dstPlanes, roiSize.width,
                   joinedRows(roiSize));
}

MoxStatus moxiYUV420ToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst, int32_t dstStep,
                                   MoxiSize roiSize) {
    return decode420(inner_Q3_YUV420ToRGB_8u_P3C3R{}, srcPlanes, srcSteps, dst, dstStep, roiSize);
}
MoxStatus moxiYUV420ToBGR_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst, int32_t dstStep,
                                   MoxiSize roiSize) {
    return decode420(ownYUV420ToBGR_8u_P3C3R{}, srcPlanes, srcSteps, dst, dstStep, roiSize, {2, 2});
}
MoxStatus moxiYUV420ToRGB_8u_P3AC4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst, int32_t dstStep,
                                    MoxiSize roiSize) {
    return decode420(innerYUV420ToRGB_8u_P3AC4R{}, srcPlanes, srcSteps, dst, dstStep, roiSize);
}
MoxStatus moxiYUV420ToRGB_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                 int32_t dstStep, MoxiSize roiSize) {
    return decode420(innerYUV420ToRGB_8u_P3R{}, srcPlanes, srcSteps, dstPlanes, dstStep, roiSize);
}
MoxStatus moxiYUV420ToRGB_8u_P3C3(const Mox8u* const* srcPlanes, Mox8u* dst, MoxiSize roiSize) {
    return decode420(inner_Q3_YUV420ToRGB_8u_P3C3R{}, srcPlanes, natural420(roiSize.width).planes, dst,
                     3 * ptrdiff_t(roiSize.width), roiSize);
}
MoxStatus moxiYUV420ToRGB_8u_P3(const Mox8u* const* srcPlanes, Mox8u* const* dstPlanes, MoxiSize roiSize) {
    return decode420(innerYUV420ToRGB_8u_P3R{}, srcPlanes, natural420(roiSize.width).planes, dstPlanes, roiSize.width,
                     roiSize);
}
