// RGB and full-range YUV at full resolution.
#include "moxcc/yuv.h"

#include "frame/entry.h"
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

// ---- entries --------------------------------------------------------------------------------------------------------

// clang-format off
template <> constexpr auto entry<moxiRGBToYUV_8u_C3R>    = converts<innerRGBToYUV_8u_C3R>;
template <> constexpr auto entry<moxiRGBToYUV_8u_AC4R>   = converts<innerRGBToYUV_8u_AC4R>;
template <> constexpr auto entry<moxiRGBToYUV_8u_C3P3R>  = converts<innerRGBToYUV_8u_C3P3R>;
template <> constexpr auto entry<moxiRGBToYUV_8u_AC4P4R> = converts<myRGBToYUV_8u_AC4P4R>;
template <> constexpr auto entry<moxiRGBToYUV_8u_P3R>    = converts<innerRGBToYUV_8u_P3R>;

template <> constexpr auto entry<moxiYUVToRGB_8u_C3R>    = converts<innerYUVToRGB_8u_C3R>;
template <> constexpr auto entry<moxiYUVToRGB_8u_AC4R>   = converts<innerYUVToRGB_8u_AC4R>;
template <> constexpr auto entry<moxiYUVToRGB_8u_C3C4R>  = converts<ownYUVToRGB_8u_C3C4R>;
template <> constexpr auto entry<moxiYUVToRGB_8u_P3C3R>  = converts<innerYUVToRGB_8u_P3C3R>;
template <> constexpr auto entry<moxiYUVToRGB_8u_P3R>    = converts<innerYUVToRGB_8u_P3R>;
// clang-format on

}  // namespace q4

#include "yuv.inc"
