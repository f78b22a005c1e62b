// BT.709 to BGR: studio range at full resolution and 4:2:0, full range from 4:2:2 and 4:2:0.
#include "moxcc/rec709_decode.h"

#include "video/decode.h"
#include "video/rec709_rules.h"

namespace q4 {
namespace {

// ---- kernels: source, destination, columns of the first rule, first rule, rule of the rest, rule of a last odd pixel

using ownYCbCrToBGR_709CSC_8u_P3C3R = AllColumns<PlanarRGB, BGR, On<I16, VI1>>;
using ownYCbCrToBGR_709CSC_8u_P3C4R = AllColumns<PlanarRGB, BGRA, WithFourth<On<I16, VI2>, Mox8u>>;
using innerYCbCr420ToBGR_709CSC_8u_P3C3R = Decode<Planar420, TwoRows<BGR>, 8, VI1, VI3>;

template <class Dst>
using myCbYCr422ToBGR_709HDTV_8u_C2R = DecodePacked<CbYCr422, Dst, 8, HI1, HI3, HI3>;
using innerYCbCr420ToBGR_709HDTV_8u_P3C4R = Decode<Planar420, TwoRows<BGRA>, 8, HI2, HI3>;

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

// clang-format off
template <> constexpr auto entry<moxiYCbCrToBGR_709CSC_8u_P3C3R> = converts<ownYCbCrToBGR_709CSC_8u_P3C3R, planesFirst>;
template <> constexpr auto entry<moxiYCbCrToBGR_709CSC_8u_P3C4R> = converts<ownYCbCrToBGR_709CSC_8u_P3C4R, planesFirst>;
template <> constexpr auto entry<moxiYCbCr420ToBGR_709CSC_8u_P3C3R> = converts<innerYCbCr420ToBGR_709CSC_8u_P3C3R>;

template <> constexpr auto entry<moxiCbYCr422ToBGR_709HDTV_8u_C2C3R> = converts<myCbYCr422ToBGR_709HDTV_8u_C2R<BGR>>;
template <> constexpr auto entry<moxiCbYCr422ToBGR_709HDTV_8u_C2C4R> = converts<myCbYCr422ToBGR_709HDTV_8u_C2R<BGRA>>;
template <> constexpr auto entry<moxiYCbCr420ToBGR_709HDTV_8u_P3C4R> = converts<innerYCbCr420ToBGR_709HDTV_8u_P3C4R>;
// clang-format on

}  // namespace q4

#include "rec709_decode.inc"
