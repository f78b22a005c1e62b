// BGR to subsampled YCbCr of BT.709: 709CSC in studio range, 709HDTV in full range limited to 1 to 254.
#include "moxcc/rec709_encode.h"

#include "video/encode.h"

namespace q4 {
namespace {

// ---- rules: weights of R, G, B --------------------------------------------------------------------------------------

using VL1 = TruncatedTerms<MatrixRow{{5997, 20120, 2032}}, 8, 2112, 7>;
using VL2 = FullPrecision<MatrixRow{{11993, 40239, 4063}}, 0x108000, 16>;

constexpr MatrixRow cbStudio = {{-6619, -22151, 28770}}, crStudio = {{28770, -26149, -2621}};
using VC1 = Chroma<TruncatedTerms<cbStudio, 5, 16400, 7>, TruncatedTerms<crStudio, 5, 16400, 7>>;
using VC2 = Chroma<FullPrecision<cbStudio, 0x2008000, 18>, FullPrecision<crStudio, 0x2008000, 18>>;

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
using HC1 = Chroma<Limited<TruncatedTerms<cbFull15, 5, 8224, 6>>, Limited<TruncatedTerms<crFull15, 5, 8224, 6>>>;
using HC2 = Chroma<Limited<FullPrecision<cbFull, 0x2008000, 18>>, Limited<FullPrecision<crFull, 0x2008000, 18>>>;
// On the sums of two.
using HP1 = Chroma<Limited<TruncatedTerms<cbFull15, 6, 8224, 6>>, Limited<TruncatedTerms<crFull15, 6, 8224, 6>>>;
using HP2 = Chroma<Limited<FlooredTerms<cbFull15, 6, 8224, 6>>, Limited<FlooredTerms<crFull15, 6, 8224, 6>>>;
using HP3 = Chroma<Limited<FullPrecision<cbFull, 0x1010000, 17>>, Limited<FullPrecision<crFull, 0x100FFFE, 17>>>;
/// On one; its Cr is not written.
using HO1 = Limited<FullPrecision<cbFull, 0x808000, 16>>;
using LastPixel = LumaChroma<HL2, Chroma<HO1, HO1>>;

// ---- kernels --------------------------------------------------------------------------------------------------------

// Source, destination, columns below the limit and their rules, rules of the others, rules of a last odd pixel.

template <class Pixels, class Dst>
using ownBGRToYCbCr420_709CSC_8u_P3R = Encode<Pixels, Dst, Passes<16, 4>, LumaChroma<VL1, VC1>, LumaChroma<VL2, VC2>>;
template <class Pixels>
using ownBGRToYCbCr420_709CSC_8u_P2R =
    Encode<Pixels, SemiPlanar420, Passes<8>, LumaChroma<VL1, VC1>, LumaChroma<VL2, VC2>>;
using ownBGRToYCbCr420_709HDTV_8u_AC4P3R =
    Encode<BGRA, Planar420, Passes<16, 4>, LumaChroma<HL1, HC1>, LumaChroma<HL2, HC2>>;
using myBGRToCbYCr422_709HDTV_8u_C3C2R =
    Encode<BGR, CbYCr422, Passes<32, 8>, LumaChroma<HL1, HP1>, LumaChroma<HL2, HP3>, LastPixel>;
using myBGRToCbYCr422_709HDTV_8u_AC4C2R =
    Encode<BGRA, CbYCr422, Passes<8>, LumaChroma<HL1, HP2>, LumaChroma<HL2, HP3>, LastPixel>;

}  // namespace
}  // namespace q4

// ---- entries --------------------------------------------------------------------------------------------------------

using namespace q4;

MoxStatus moxiBGRToYCbCr420_709CSC_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                            const int32_t* dstSteps, MoxiSize roiSize) {
    return encode<ownBGRToYCbCr420_709CSC_8u_P3R<BGR, Planar420>, planesFirst>(src, srcStep, dstPlanes, dstSteps,
                                                                               roiSize, {2, 2});
}
MoxStatus moxiBGRToYCbCr420_709CSC_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                             const int32_t* dstSteps, MoxiSize roiSize) {
    return encode<ownBGRToYCbCr420_709CSC_8u_P3R<BGRA, Planar420>, planesFirst>(src, srcStep, dstPlanes, dstSteps,
                                                                                roiSize, {2, 2});
}
MoxStatus moxiBGRToYCrCb420_709CSC_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                            const int32_t* dstSteps, MoxiSize roiSize) {
    return encode<ownBGRToYCbCr420_709CSC_8u_P3R<BGR, PlanarYCrCb420>, planesFirst>(src, srcStep, dstPlanes, dstSteps,
                                                                                    roiSize, {2, 2});
}
MoxStatus moxiBGRToYCrCb420_709CSC_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                             const int32_t* dstSteps, MoxiSize roiSize) {
    return encode<ownBGRToYCbCr420_709CSC_8u_P3R<BGRA, PlanarYCrCb420>, planesFirst>(src, srcStep, dstPlanes, dstSteps,
                                                                                     roiSize, {2, 2});
}
MoxStatus moxiBGRToYCbCr420_709CSC_8u_C3P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                            Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return encode<ownBGRToYCbCr420_709CSC_8u_P2R<BGR>>(src, srcStep, dstY, dstYStep, dstCbCr, dstCbCrStep, roiSize,
                                                       {2, 2});
}
MoxStatus moxiBGRToYCbCr420_709CSC_8u_AC4P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                             Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return encode<ownBGRToYCbCr420_709CSC_8u_P2R<BGRA>>(src, srcStep, dstY, dstYStep, dstCbCr, dstCbCrStep, roiSize,
                                                        {2, 2});
}
MoxStatus moxiBGRToYCbCr420_709HDTV_8u_AC4P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                              const int32_t* dstSteps, MoxiSize roiSize) {
    return encode<ownBGRToYCbCr420_709HDTV_8u_AC4P3R, planesFirst>(src, srcStep, dstPlanes, dstSteps, roiSize, {2, 2});
}
MoxStatus moxiBGRToCbYCr422_709HDTV_8u_C3C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                             MoxiSize roiSize) {
    return encode<myBGRToCbYCr422_709HDTV_8u_C3C2R>(src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiBGRToCbYCr422_709HDTV_8u_AC4C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                              MoxiSize roiSize) {
    return encode<myBGRToCbYCr422_709HDTV_8u_AC4C2R>(src, srcStep, dst, dstStep, roiSize);
}
