// BT.709 to BGR: studio range at full resolution and 4:2:0, full range from 4:2:2 and 4:2:0.
#include "moxcc/rec709_decode.h"

#include "video/decode.h"
#include "video/rec709_rules.h"

namespace q4 {
namespace {

using BGR = Reversed<C3<Mox8u>>;
using BGRA = Reversed<C4<Mox8u>>;

// ---- kernels: source, destination, columns of the first rule, first rule, rule of the rest, rule of a last odd pixel

using ownYCbCrToBGR_709CSC_8u_P3C3R = AllColumns<P3<Mox8u>, BGR, On<I16, VI1>>;
using ownYCbCrToBGR_709CSC_8u_P3C4R = AllColumns<P3<Mox8u>, BGRA, WithFourth<On<I16, VI2>, Mox8u>>;
using innerYCbCr420ToBGR_709CSC_8u_P3C3R = Decode<Planar420, TwoRows<BGR>, 8, VI1, VI3>;

template <class Dst>
using myCbYCr422ToBGR_709HDTV_8u_C2R = WithOddPixel<Decode<CbYCr422, Dst, 8, HI1, HI3>, HI3>;
using innerYCbCr420ToBGR_709HDTV_8u_P3C4R = Decode<Planar420, TwoRows<BGRA>, 8, HI2, HI3>;

}  // namespace
}  // namespace q4

// ---- entries --------------------------------------------------------------------------------------------------------

using namespace q4;

MoxStatus moxiYCbCrToBGR_709CSC_8u_P3C3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize) {
    return convert<PlanesTested::beforeSize>(ownYCbCrToBGR_709CSC_8u_P3C3R{}, srcPlanes, srcStep, dst, dstStep,
                                             roiSize);
}
MoxStatus moxiYCbCrToBGR_709CSC_8u_P3C4R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize, Mox8u aval) {
    return convert<PlanesTested::beforeSize>(ownYCbCrToBGR_709CSC_8u_P3C4R{{{}, aval}}, srcPlanes, srcStep, dst,
                                             dstStep, roiSize);
}
MoxStatus moxiYCbCr420ToBGR_709CSC_8u_P3C3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                            int32_t dstStep, MoxiSize roiSize) {
    return decode420(innerYCbCr420ToBGR_709CSC_8u_P3C3R{}, srcPlanes, srcSteps, dst, dstStep, roiSize);
}

MoxStatus moxiCbYCr422ToBGR_709HDTV_8u_C2C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize) {
    return convert(myCbYCr422ToBGR_709HDTV_8u_C2R<BGR>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiCbYCr422ToBGR_709HDTV_8u_C2C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize, Mox8u aval) {
    return convert(myCbYCr422ToBGR_709HDTV_8u_C2R<BGRA>{{aval}}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCr420ToBGR_709HDTV_8u_P3C4R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                             int32_t dstStep, MoxiSize roiSize, Mox8u aval) {
    return decode420(innerYCbCr420ToBGR_709HDTV_8u_P3C4R{aval}, srcPlanes, srcSteps, dst, dstStep, roiSize);
}
