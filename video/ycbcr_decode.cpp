// Subsampled YCbCr of BT.601 to RGB and BGR.
#include "moxcc/ycbcr_decode.h"

#include "models/ycbcr_rules.h"
#include "video/decode.h"

namespace q4 {
namespace {

using RGB = C3<Mox8u>;
using BGR = Reversed<RGB>;
using RGBA = C4<Mox8u>;
using BGRA = Reversed<RGBA>;
using YCrCb422 = Crossed<YCbCr422>;
using YCrCbPlanar420 = Crossed<Planar420>;
using YCrCbSemiPlanar420 = Crossed<SemiPlanar420>;

// ---- kernels: source, destination, columns of the first rule, first rule, rule of the rest, rule of a last odd pixel

template <class Src, class Dst>
using innerYCbCr422ToRGB_C2_C3R = WithOddPixel<Decode<Src, Dst, 8, YI4, YI1>, YI1>;
template <class Src, class Dst>
using innerYCrCbToRGB422_C2R = WithOddPixel<Decode<Src, Dst, 8, YI7, YI2>, YI2>;
using ownYCbCr422ToBGR_8u_C2C4R = WithOddPixel<Decode<YCbCr422, BGRA, 8, YI8, YI9>, YI9>;
using myCbYCr422ToBGR_8u_C2AC4R = WithOddPixel<Decode<CbYCr422, BGRA, 8, YI10, YI1>, YI1>;
template <class Src>
using innerYCbCr422ToRGB_C2_C3P2R = WithOddPixel<Decode<Src, P3<Mox8u>, 4, YI6, YI9>, YI9>;
template <class Dst>
using ownYCbCr422ToRGB_8u_P3C3R = WholePairs<Decode<Planar422, Dst, 8, YI4, YI9>>;

template <class Dst>
using innerYCbCr420ToRGB_8u_P3C3R = Decode<Planar420, TwoRows<Dst>, 8, YI4, YI2>;
using innerYCbCr420ToBGR_8u_P3C4R = Decode<Planar420, TwoRows<BGRA>, 1, YI11>;
using innerYCrCb420ToRGB_8u_P3C4R = Decode<YCrCbPlanar420, TwoRows<RGBA>, 8, YI5, YI2>;
template <class Dst>
using innerYCbCr420ToRGB_8u_P2R = Decode<SemiPlanar420, TwoRows<Dst>, 1, YI11>;
template <class Dst>
using innerYCrCb420ToRGB_8u_P2R = Decode<YCrCbSemiPlanar420, TwoRows<Dst>, 1, YI12>;

/// Columns that no whole group of four covers take the chroma of the last whole group.
template <class Dst_>
struct myYCbCr411ToBGR_8u_P3R : Decode<Planar411, Dst_, 4, YI4> {
    using Src = Wide<Planar411>;
    using Dst = Dst_;
    MOX_INLINE void row(const SrcRows<3>& src, const DstRows<1>& dst, ptrdiff_t width) const {
        const ptrdiff_t whole = width & -4, rest = width - whole;
        Decode<Planar411, Dst, 4, YI4>::row(src, dst, whole);
        const SrcRows<3> from = {{src.p[0] + whole, src.p[1] + whole / 4 - 1, src.p[2] + whole / 4 - 1}};
        const auto to = fromColumn<Dst>(dst, whole);
        if (rest == 3)
            span<Src, Dst>(from, to, 0, rest, this->template colours<YI4>());
        else
            span<Src, Dst>(from, to, 0, rest, this->template colours<YI13>());
    }
};

// ---- entries --------------------------------------------------------------------------------------------------------

inline constexpr MoxiSize onePair = {2, 1};

/// These forms test the size before the pointers.
template <class Kernel>
MoxStatus sizeFirst420(const Kernel& kernel, const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                       int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    if (MoxStatus s = firstOf(sizeAtLeast(roiSize, 1, 1))) return s;
    return decode420(kernel, srcY, srcYStep, srcCbCr, srcCbCrStep, dst, dstStep, roiSize);
}

}  // namespace
}  // namespace q4

using namespace q4;

// Packed 4:2:2.

MoxStatus moxiYCbCr422ToRGB_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerYCbCr422ToRGB_C2_C3R<YCbCr422, RGB>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCr422ToBGR_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerYCbCr422ToRGB_C2_C3R<YCbCr422, BGR>{}, src, srcStep, dst, dstStep, roiSize, onePair);
}
MoxStatus moxiCbYCr422ToRGB_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerYCbCr422ToRGB_C2_C3R<CbYCr422, RGB>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCrCb422ToRGB_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerYCrCbToRGB422_C2R<YCrCb422, RGB>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCrCb422ToBGR_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerYCrCbToRGB422_C2R<YCrCb422, BGR>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCr422ToRGB_8u_C2C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                     Mox8u aval) {
    return convert(innerYCrCbToRGB422_C2R<YCbCr422, RGBA>{{aval}}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCr422ToBGR_8u_C2C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                     Mox8u aval) {
    return convert(ownYCbCr422ToBGR_8u_C2C4R{{aval}}, src, srcStep, dst, dstStep, roiSize, onePair);
}
MoxStatus moxiCbYCr422ToBGR_8u_C2C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                     Mox8u aval) {
    return convert(myCbYCr422ToBGR_8u_C2AC4R{{aval}}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCrCb422ToRGB_8u_C2C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                     Mox8u aval) {
    return convert(innerYCrCbToRGB422_C2R<YCrCb422, RGBA>{{aval}}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCrCb422ToBGR_8u_C2C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                     Mox8u aval) {
    return convert(innerYCrCbToRGB422_C2R<YCrCb422, BGRA>{{aval}}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCr422ToRGB_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                     MoxiSize roiSize) {
    return convert(innerYCbCr422ToRGB_C2_C3P2R<YCbCr422>{}, src, srcStep, dstPlanes, dstStep, roiSize);
}
MoxStatus moxiYCrCb422ToRGB_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                     MoxiSize roiSize) {
    return convert(innerYCbCr422ToRGB_C2_C3P2R<YCrCb422>{}, src, srcStep, dstPlanes, dstStep, roiSize);
}

// Planar 4:2:2 and 4:1:1.

MoxStatus moxiYCbCr422ToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                     int32_t dstStep, MoxiSize roiSize) {
    return convert<PlanesTested::beforeSize>(ownYCbCr422ToRGB_8u_P3C3R<RGB>{}, srcPlanes, srcSteps, dst, dstStep,
                                             roiSize, onePair);
}
MoxStatus moxiYCbCr422ToBGR_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                     int32_t dstStep, MoxiSize roiSize) {
    return convert<PlanesTested::beforeSize>(ownYCbCr422ToRGB_8u_P3C3R<BGR>{}, srcPlanes, srcSteps, dst, dstStep,
                                             roiSize, onePair);
}
MoxStatus moxiYCbCr411ToBGR_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                     int32_t dstStep, MoxiSize roiSize) {
    return convert<PlanesTested::beforeSize>(myYCbCr411ToBGR_8u_P3R<BGR>{}, srcPlanes, srcSteps, dst, dstStep, roiSize,
                                             {4, 1});
}
MoxStatus moxiYCbCr411ToBGR_8u_P3C4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                     int32_t dstStep, MoxiSize roiSize, Mox8u aval) {
    return convert<PlanesTested::beforeSize>(myYCbCr411ToBGR_8u_P3R<BGRA>{{aval}}, srcPlanes, srcSteps, dst, dstStep,
                                             roiSize, {4, 1});
}

// Planar 4:2:0.

MoxStatus moxiYCbCr420ToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                     int32_t dstStep, MoxiSize roiSize) {
    return decode420(innerYCbCr420ToRGB_8u_P3C3R<RGB>{}, srcPlanes, srcSteps, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCr420ToBGR_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                     int32_t dstStep, MoxiSize roiSize) {
    return decode420(innerYCbCr420ToRGB_8u_P3C3R<BGR>{}, srcPlanes, srcSteps, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCr420ToBGR_8u_P3C4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                     int32_t dstStep, MoxiSize roiSize, Mox8u aval) {
    return decode420(innerYCbCr420ToBGR_8u_P3C4R{aval}, srcPlanes, srcSteps, dst, dstStep, roiSize);
}
MoxStatus moxiYCrCb420ToRGB_8u_P3C4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                     int32_t dstStep, MoxiSize roiSize, Mox8u aval) {
    return decode420(innerYCrCb420ToRGB_8u_P3C4R{aval}, srcPlanes, srcSteps, dst, dstStep, roiSize);
}

// Semi-planar 4:2:0.

MoxStatus moxiYCbCr420ToRGB_8u_P2C3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr, int32_t srcCbCrStep,
                                     Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return decode420(innerYCbCr420ToRGB_8u_P2R<RGB>{}, srcY, srcYStep, srcCbCr, srcCbCrStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCr420ToRGB_8u_P2C4R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr, int32_t srcCbCrStep,
                                     Mox8u* dst, int32_t dstStep, MoxiSize roiSize, Mox8u aval) {
    return decode420(innerYCbCr420ToRGB_8u_P2R<RGBA>{aval}, srcY, srcYStep, srcCbCr, srcCbCrStep, dst, dstStep,
                     roiSize);
}
MoxStatus moxiYCbCr420ToBGR_8u_P2C3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr, int32_t srcCbCrStep,
                                     Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return decode420(innerYCbCr420ToRGB_8u_P2R<BGR>{}, srcY, srcYStep, srcCbCr, srcCbCrStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCr420ToBGR_8u_P2C4R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr, int32_t srcCbCrStep,
                                     Mox8u* dst, int32_t dstStep, MoxiSize roiSize, Mox8u aval) {
    return decode420(innerYCbCr420ToRGB_8u_P2R<BGRA>{aval}, srcY, srcYStep, srcCbCr, srcCbCrStep, dst, dstStep,
                     roiSize);
}
MoxStatus moxiYCrCb420ToRGB_8u_P2C3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr, int32_t srcCbCrStep,
                                     Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return decode420(innerYCrCb420ToRGB_8u_P2R<RGB>{}, srcY, srcYStep, srcCbCr, srcCbCrStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCrCb420ToRGB_8u_P2C4R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr, int32_t srcCbCrStep,
                                     Mox8u* dst, int32_t dstStep, MoxiSize roiSize, Mox8u aval) {
    return sizeFirst420(innerYCrCb420ToRGB_8u_P2R<RGBA>{aval}, srcY, srcYStep, srcCbCr, srcCbCrStep, dst, dstStep,
                        roiSize);
}
MoxStatus moxiYCrCb420ToBGR_8u_P2C3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr, int32_t srcCbCrStep,
                                     Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return decode420(innerYCrCb420ToRGB_8u_P2R<BGR>{}, srcY, srcYStep, srcCbCr, srcCbCrStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCrCb420ToBGR_8u_P2C4R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr, int32_t srcCbCrStep,
                                     Mox8u* dst, int32_t dstStep, MoxiSize roiSize, Mox8u aval) {
    return sizeFirst420(innerYCrCb420ToRGB_8u_P2R<BGRA>{aval}, srcY, srcYStep, srcCbCr, srcCbCrStep, dst, dstStep,
                        roiSize);
}
