// RGB and the studio-range YCbCr of BT.601 at full resolution.
#include "moxcc/ycbcr.h"

#include "frame/entry.h"
#include "models/ycbcr_rules.h"

namespace q4 {
namespace {

// ---- kernels: source, destination, columns of the first rule, first rule, rule of the rest --------------------------

using innerRGBToYCbCr_C3_C3R = Split<C3<Mox8u>, C3<Mox8u>, 16, On<I16, YF2>, On<I16, YF1>>;
template <class Src>
using RGBToPlanes = Split<Src, P3<Mox8u>, 8, On<I16, YF3>, On<I16, YF1>>;

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
using YCbCrToRGB = Split<Src, Dst, 8, On<I16, YI4>, On<I16, YI1>>;
using innerYCbCrToRGB_8u_P3R = Split<P3<Mox8u>, P3<Mox8u>, 4, On<I16, YI6>, On<I16, YI2>>;
using innerYCbCrToRGB_AC4R = AllColumns<AC4<Mox8u>, AC4<Mox8u>, On<I16, YI3>>;
using innerYCbCrToRGB_8u_P3C4R =
    Split<P3<Mox8u>, C4<Mox8u>, 8, WithFourth<On<I16, YI5>, Mox8u>, WithFourth<On<I16, YI1>, Mox8u>>;
using ownYCbCrToBGR_8u_P3C4R = AllColumns<P3<Mox8u>, Reversed<C4<Mox8u>>, WithFourth<On<I16, YI5>, Mox8u>>;

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

// clang-format off
template <> constexpr auto entry<moxiRGBToYCbCr_8u_C3R>    = converts<innerRGBToYCbCr_C3_C3R>;
template <> constexpr auto entry<moxiRGBToYCbCr_8u_AC4R>   = converts<innerRGBToYCbCr_AC4R>;
template <> constexpr auto entry<moxiRGBToYCbCr_8u_C3P3R>  = converts<RGBToPlanes<C3<Mox8u>>, planesFirst>;
template <> constexpr auto entry<moxiRGBToYCbCr_8u_AC4P3R> = converts<RGBToPlanes<AC4<Mox8u>>, planesFirst>;
template <> constexpr auto entry<moxiRGBToYCbCr_8u_P3R>    = converts<RGBToPlanes<P3<Mox8u>>>;

template <> constexpr auto entry<moxiYCbCrToRGB_8u_C3R>    = converts<YCbCrToRGB<C3<Mox8u>, C3<Mox8u>>>;
template <> constexpr auto entry<moxiYCbCrToRGB_8u_AC4R>   = converts<innerYCbCrToRGB_AC4R>;
template <> constexpr auto entry<moxiYCbCrToRGB_8u_P3C3R>  = converts<YCbCrToRGB<P3<Mox8u>, C3<Mox8u>>, planesFirst>;
template <> constexpr auto entry<moxiYCbCrToRGB_8u_P3C4R>  = converts<innerYCbCrToRGB_8u_P3C4R>;
template <> constexpr auto entry<moxiYCbCrToRGB_8u_P3R>    = converts<innerYCbCrToRGB_8u_P3R>;
template <> constexpr auto entry<moxiYCbCrToBGR_8u_P3C3R>  = converts<YCbCrToRGB<P3<Mox8u>, Bgr<Mox8u>>, planesFirst>;
template <> constexpr auto entry<moxiYCbCrToBGR_8u_P3C4R>  = converts<ownYCbCrToBGR_8u_P3C4R, planesFirst>;
// clang-format on

}  // namespace q4

#include "ycbcr.inc"
