// Subsampled YCbCr of BT.601 to RGB and BGR.
#include "moxcc/ycbcr_decode.h"

#include "models/ycbcr_rules.h"
#include "video/decode.h"

namespace q4 {
namespace {

// ---- kernels: source, destination, columns of the first rule, first rule, rule of the rest, rule of a last odd pixel

template <class Src, class Dst>
using innerYCbCr422ToRGB_C2_C3R = DecodePacked<Src, Dst, 8, YI4, YI1, YI1>;
template <class Src, class Dst>
using innerYCrCbToRGB422_C2R = DecodePacked<Src, Dst, 8, YI7, YI2, YI2>;
using ownYCbCr422ToBGR_8u_C2C4R = DecodePacked<YCbCr422, BGRA, 8, YI8, YI9, YI9>;
using myCbYCr422ToBGR_8u_C2AC4R = DecodePacked<CbYCr422, BGRA, 8, YI10, YI1, YI1>;
template <class Src>
using innerYCbCr422ToRGB_C2_C3P2R = DecodePacked<Src, PlanarRGB, 4, YI6, YI9, YI9>;
/// The last column of an odd width is not written.
template <class Dst>
using ownYCbCr422ToRGB_8u_P3C3R = DecodeCells<Planar422, Dst, Passes<8>, 2, YI4, YI9>;

template <class Dst>
using innerYCbCr420ToRGB_8u_P3C3R = Decode<Planar420, TwoRows<Dst>, 8, YI4, YI2>;
using innerYCbCr420ToBGR_8u_P3C4R = Decode<Planar420, TwoRows<BGRA>, 1, YI11>;
using innerYCrCb420ToRGB_8u_P3C4R = Decode<PlanarYCrCb420, TwoRows<RGBA>, 8, YI5, YI2>;
template <class Dst>
using innerYCbCr420ToRGB_8u_P2R = Decode<SemiPlanar420, TwoRows<Dst>, 1, YI11>;
template <class Dst>
using innerYCrCb420ToRGB_8u_P2R = Decode<SemiPlanarYCrCb420, TwoRows<Dst>, 1, YI12>;

/// Columns that no whole group of four covers take the chroma of the last whole group; three of them by the rule of the
/// others.
template <class Dst_>
struct myYCbCr411ToBGR_8u_P3R {
    using Src = ForDecoding<Planar411>;
    using Dst = Dst_;
    Colours<Dst, YI4> cells;
    Colours<Dst, YI13> rest;

    template <class... Aval>
    MOX_INLINE static myYCbCr411ToBGR_8u_P3R of(Aval... aval) {
        return {partOf<decltype(cells)>(aval...), partOf<decltype(rest)>(aval...)};
    }
    MOX_INLINE void row(const SrcRows<3>& src, const DstRows<1>& dst, ptrdiff_t width) const {
        const ptrdiff_t whole = width & -4, left = width - whole;
        span<Src, Dst>(src, dst, 0, whole, cells);
        const SrcRows<3> from = {{src.p[0] + whole, src.p[1] + whole / 4 - 1, src.p[2] + whole / 4 - 1}};
        const auto to = fromColumn<Dst>(dst, whole);
        if (left == 3)
            span<Src, Dst>(from, to, 0, left, cells);
        else
            span<Src, Dst>(from, to, 0, left, rest);
    }
};

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

// clang-format off
// Packed 4:2:2.

template <> constexpr auto entry<moxiYCbCr422ToRGB_8u_C2C3R> = converts<innerYCbCr422ToRGB_C2_C3R<YCbCr422, RGB>>;
template <> constexpr auto entry<moxiYCbCr422ToBGR_8u_C2C3R> =
    converts<innerYCbCr422ToRGB_C2_C3R<YCbCr422, BGR>, AtLeast{2, 1}>;
template <> constexpr auto entry<moxiCbYCr422ToRGB_8u_C2C3R> = converts<innerYCbCr422ToRGB_C2_C3R<CbYCr422, RGB>>;
template <> constexpr auto entry<moxiYCrCb422ToRGB_8u_C2C3R> = converts<innerYCrCbToRGB422_C2R<YCrCb422, RGB>>;
template <> constexpr auto entry<moxiYCrCb422ToBGR_8u_C2C3R> = converts<innerYCrCbToRGB422_C2R<YCrCb422, BGR>>;
template <> constexpr auto entry<moxiYCbCr422ToRGB_8u_C2C4R> = converts<innerYCrCbToRGB422_C2R<YCbCr422, RGBA>>;
template <> constexpr auto entry<moxiYCbCr422ToBGR_8u_C2C4R> = converts<ownYCbCr422ToBGR_8u_C2C4R, AtLeast{2, 1}>;
template <> constexpr auto entry<moxiCbYCr422ToBGR_8u_C2C4R> = converts<myCbYCr422ToBGR_8u_C2AC4R>;
template <> constexpr auto entry<moxiYCrCb422ToRGB_8u_C2C4R> = converts<innerYCrCbToRGB422_C2R<YCrCb422, RGBA>>;
template <> constexpr auto entry<moxiYCrCb422ToBGR_8u_C2C4R> = converts<innerYCrCbToRGB422_C2R<YCrCb422, BGRA>>;
template <> constexpr auto entry<moxiYCbCr422ToRGB_8u_C2P3R> = converts<innerYCbCr422ToRGB_C2_C3P2R<YCbCr422>>;
template <> constexpr auto entry<moxiYCrCb422ToRGB_8u_C2P3R> = converts<innerYCbCr422ToRGB_C2_C3P2R<YCrCb422>>;

// Planar 4:2:2 and 4:1:1.

template <> constexpr auto entry<moxiYCbCr422ToRGB_8u_P3C3R> =
    converts<ownYCbCr422ToRGB_8u_P3C3R<RGB>, planesFirst, AtLeast{2, 1}>;
template <> constexpr auto entry<moxiYCbCr422ToBGR_8u_P3C3R> =
    converts<ownYCbCr422ToRGB_8u_P3C3R<BGR>, planesFirst, AtLeast{2, 1}>;
template <> constexpr auto entry<moxiYCbCr411ToBGR_8u_P3C3R> =
    converts<myYCbCr411ToBGR_8u_P3R<BGR>, planesFirst, AtLeast{4, 1}>;
template <> constexpr auto entry<moxiYCbCr411ToBGR_8u_P3C4R> =
    converts<myYCbCr411ToBGR_8u_P3R<BGRA>, planesFirst, AtLeast{4, 1}>;

// Planar 4:2:0.

template <> constexpr auto entry<moxiYCbCr420ToRGB_8u_P3C3R> = converts<innerYCbCr420ToRGB_8u_P3C3R<RGB>>;
template <> constexpr auto entry<moxiYCbCr420ToBGR_8u_P3C3R> = converts<innerYCbCr420ToRGB_8u_P3C3R<BGR>>;
template <> constexpr auto entry<moxiYCbCr420ToBGR_8u_P3C4R> = converts<innerYCbCr420ToBGR_8u_P3C4R>;
template <> constexpr auto entry<moxiYCrCb420ToRGB_8u_P3C4R> = converts<innerYCrCb420ToRGB_8u_P3C4R>;

// Semi-planar 4:2:0.

template <> constexpr auto entry<moxiYCbCr420ToRGB_8u_P2C3R> = converts<innerYCbCr420ToRGB_8u_P2R<RGB>>;
template <> constexpr auto entry<moxiYCbCr420ToRGB_8u_P2C4R> = converts<innerYCbCr420ToRGB_8u_P2R<RGBA>>;
template <> constexpr auto entry<moxiYCbCr420ToBGR_8u_P2C3R> = converts<innerYCbCr420ToRGB_8u_P2R<BGR>>;
template <> constexpr auto entry<moxiYCbCr420ToBGR_8u_P2C4R> = converts<innerYCbCr420ToRGB_8u_P2R<BGRA>>;
template <> constexpr auto entry<moxiYCrCb420ToRGB_8u_P2C3R> = converts<innerYCrCb420ToRGB_8u_P2R<RGB>>;
template <> constexpr auto entry<moxiYCrCb420ToRGB_8u_P2C4R> = converts<innerYCrCb420ToRGB_8u_P2R<RGBA>, sizeFirst>;
template <> constexpr auto entry<moxiYCrCb420ToBGR_8u_P2C3R> = converts<innerYCrCb420ToRGB_8u_P2R<BGR>>;
template <> constexpr auto entry<moxiYCrCb420ToBGR_8u_P2C4R> = converts<innerYCrCb420ToRGB_8u_P2R<BGRA>, sizeFirst>;
// clang-format on

}  // namespace q4

#include "ycbcr_decode.inc"
