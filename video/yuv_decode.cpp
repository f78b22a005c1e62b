// Subsampled full-range YUV to RGB and BGR.
#include "moxcc/yuv_decode.h"

#include "models/yuv_rules.h"
#include "video/contiguous.h"
#include "video/decode.h"

namespace q4 {
namespace {

// ---- kernels: source, destination, columns of the first rule, first rule, rule of the rest --------------------------

/// The last pixel of an odd width, and that of a row of one pixel, follow rules of their own.
using innerYUV422ToRGB_8u_C2C3R = DecodePacked<YCbCr422, RGB, 16, UI5, UI2, UI2, UI7>;
using innerYUV422ToRGB_8u_P3C3R = Decode<Planar422, RGB, 16, UI5, UI7>;
using innerYUV422ToRGB_8u_P3AC4R = Decode<Planar422, RGBA, 4, UI8, UI7>;
/// The last column of an odd width has a chroma sample and a rule of its own.
using innerYUV422ToRGB_8u_P3R = DecodeCells<Planar422, PlanarRGB, Passes<16>, 2, UI5, UI7, UI10>;

using inner_Q3_YUV420ToRGB_8u_P3C3R = Decode<Planar420, TwoRows<RGB>, 1, UI5>;
using ownYUV420ToBGR_8u_P3C3R = Decode<Planar420, TwoRows<BGR>, 1, UI9>;
using innerYUV420ToRGB_8u_P3R = Decode<Planar420, TwoRows<PlanarRGB>, 1, UI7>;
using innerYUV420ToRGB_8u_P3AC4R = Decode<Planar420, TwoRows<RGBA>, 4, UI8, UI2>;

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

// clang-format off
template <> constexpr auto entry<moxiYUV422ToRGB_8u_C2C3R>  = converts<innerYUV422ToRGB_8u_C2C3R>;
template <> constexpr auto entry<moxiYUV422ToRGB_8u_P3C3R>  = converts<innerYUV422ToRGB_8u_P3C3R>;
template <> constexpr auto entry<moxiYUV422ToRGB_8u_P3AC4R> = converts<innerYUV422ToRGB_8u_P3AC4R>;
template <> constexpr auto entry<moxiYUV422ToRGB_8u_P3R>    = converts<innerYUV422ToRGB_8u_P3R>;
template <> constexpr auto entry<moxiYUV422ToRGB_8u_P3C3> = contiguous<entry<moxiYUV422ToRGB_8u_P3C3R>, steps422, stepRGB, isOneRow>;
template <> constexpr auto entry<moxiYUV422ToRGB_8u_P3> = contiguous<entry<moxiYUV422ToRGB_8u_P3R>, steps422, stepPlane, isOneRow>;

template <> constexpr auto entry<moxiYUV420ToRGB_8u_P3C3R>  = converts<inner_Q3_YUV420ToRGB_8u_P3C3R>;
template <> constexpr auto entry<moxiYUV420ToBGR_8u_P3C3R>  = converts<ownYUV420ToBGR_8u_P3C3R, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiYUV420ToRGB_8u_P3AC4R> = converts<innerYUV420ToRGB_8u_P3AC4R>;
template <> constexpr auto entry<moxiYUV420ToRGB_8u_P3R>    = converts<innerYUV420ToRGB_8u_P3R>;
template <> constexpr auto entry<moxiYUV420ToRGB_8u_P3C3> = contiguous<entry<moxiYUV420ToRGB_8u_P3C3R>, steps420, stepRGB>;
template <> constexpr auto entry<moxiYUV420ToRGB_8u_P3> = contiguous<entry<moxiYUV420ToRGB_8u_P3R>, steps420, stepPlane>;
// clang-format on

}  // namespace q4

#include "yuv_decode.inc"
