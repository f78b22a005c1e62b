// BGR to subsampled YCbCr of BT.709: 709CSC in studio range, 709HDTV in full range limited to 1 to 254.
#include "moxcc/rec709_encode.h"

#include "video/encode.h"

namespace q4 {
namespace {

// ---- rules: weights of R, G, B --------------------------------------------------------------------------------------

using VL1 = TruncatedTerms<MatrixRow{{5997, 20120, 2032}}, 8, 2112, 7>;
using VL2 = FullPrecision<MatrixRow{{11993, 40239, 4063}}, 0x108000, 16>;

constexpr MatrixRow cbStudio = {{-6619, -22151, 28770}}, crStudio = {{28770, -26149, -2621}};
using VC1 = CbCr<TruncatedTerms<cbStudio, 5, 16400, 7>, TruncatedTerms<crStudio, 5, 16400, 7>>;
using VC2 = CbCr<FullPrecision<cbStudio, 0x2008000, 18>, FullPrecision<crStudio, 0x2008000, 18>>;

/// 0 and 255 are no samples.
template <class Rule>
struct Limited {
    template <class Pixels>
    MOX_INLINE I16 operator()(const Pixels& p) const {
        return max(min(Rule{}(p), splat<I16>(254)), splat<I16>(1));
    }
};

using HL1 = Limited<TruncatedTerms<MatrixRow{{6980, 23429, 2359}}, 8, 64, 7>>;
using HL2 = Limited<FullPrecision<MatrixRow{{13959, 46858, 4719}}, 0x8000, 16>>;

constexpr MatrixRow cbFull = {{-7668, -25821, 33489}}, crFull = {{33489, -30409, -3080}};
constexpr MatrixRow cbFull15 = {{-3834, -12911, 16744}}, crFull15 = {{16744, -15204, -1540}};
// On the sums of four pixels.
using HC1 = CbCr<Limited<TruncatedTerms<cbFull15, 5, 8224, 6>>, Limited<TruncatedTerms<crFull15, 5, 8224, 6>>>;
using HC2 = CbCr<Limited<FullPrecision<cbFull, 0x2008000, 18>>, Limited<FullPrecision<crFull, 0x2008000, 18>>>;
// On the sums of two.
using HP1 = CbCr<Limited<TruncatedTerms<cbFull15, 6, 8224, 6>>, Limited<TruncatedTerms<crFull15, 6, 8224, 6>>>;
using HP2 = CbCr<Limited<FlooredTerms<cbFull15, 6, 8224, 6>>, Limited<FlooredTerms<crFull15, 6, 8224, 6>>>;
using HP3 = CbCr<Limited<FullPrecision<cbFull, 0x1010000, 17>>, Limited<FullPrecision<crFull, 0x100FFFE, 17>>>;
/// On one; its Cr is not written.
using HO1 = Limited<FullPrecision<cbFull, 0x808000, 16>>;
using LastPixel = LumaChroma<HL2, CbCr<HO1, HO1>>;

// ---- kernels --------------------------------------------------------------------------------------------------------

// Source, destination, columns below the limit and their rules, rules of the others, rules of a last odd pixel.

template <class Pixels, class Dst>
using ownBGRToYCbCr420_709CSC_8u_P3R = Encode<Pixels, Dst, Passes<16, 4>, LumaChroma<VL1, VC1>, LumaChroma<VL2, VC2>>;
template <class Pixels>
using ownBGRToYCbCr420_709CSC_8u_P2R =
    Encode<Pixels, SemiPlanar420, Passes<8>, LumaChroma<VL1, VC1>, LumaChroma<VL2, VC2>>;
using ownBGRToYCbCr420_709HDTV_8u_AC4P3R =
    Encode<BGRx, Planar420, Passes<16, 4>, LumaChroma<HL1, HC1>, LumaChroma<HL2, HC2>>;
using myBGRToCbYCr422_709HDTV_8u_C3C2R =
    Encode<BGR, CbYCr422, Passes<32, 8>, LumaChroma<HL1, HP1>, LumaChroma<HL2, HP3>, LastPixel>;
using myBGRToCbYCr422_709HDTV_8u_AC4C2R =
    Encode<BGRx, CbYCr422, Passes<8>, LumaChroma<HL1, HP2>, LumaChroma<HL2, HP3>, LastPixel>;

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

// clang-format off
template <> constexpr auto entry<moxiBGRToYCbCr420_709CSC_8u_C3P3R> =
    converts<ownBGRToYCbCr420_709CSC_8u_P3R<BGR, Planar420>, planesFirst, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiBGRToYCbCr420_709CSC_8u_AC4P3R> =
    converts<ownBGRToYCbCr420_709CSC_8u_P3R<BGRx, Planar420>, planesFirst, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiBGRToYCrCb420_709CSC_8u_C3P3R> =
    converts<ownBGRToYCbCr420_709CSC_8u_P3R<BGR, PlanarYCrCb420>, planesFirst, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiBGRToYCrCb420_709CSC_8u_AC4P3R> =
    converts<ownBGRToYCbCr420_709CSC_8u_P3R<BGRx, PlanarYCrCb420>, planesFirst, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiBGRToYCbCr420_709CSC_8u_C3P2R> =
    converts<ownBGRToYCbCr420_709CSC_8u_P2R<BGR>, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiBGRToYCbCr420_709CSC_8u_AC4P2R> =
    converts<ownBGRToYCbCr420_709CSC_8u_P2R<BGRx>, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiBGRToYCbCr420_709HDTV_8u_AC4P3R> =
    converts<ownBGRToYCbCr420_709HDTV_8u_AC4P3R, planesFirst, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiBGRToCbYCr422_709HDTV_8u_C3C2R>  = converts<myBGRToCbYCr422_709HDTV_8u_C3C2R>;
template <> constexpr auto entry<moxiBGRToCbYCr422_709HDTV_8u_AC4C2R> = converts<myBGRToCbYCr422_709HDTV_8u_AC4C2R>;
// clang-format on

}  // namespace q4

#include "rec709_encode.inc"
