// Tone mapping: float images to 8 bits by one gain, taken from the maximum or from the mean.
#include "moxcc/tonemap.h"

#include <cfloat>

#include "frame/entry.h"
#include "frame/primitives.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

/// The low byte of the truncated product: a negative one wraps, one that is out of range or a NaN gives 0.
struct ScaleWrapped {
    Mox32f scale;
    MOX_INLINE Px<I32, 1> operator()(Px<F32, 1> x) const {
        return {{lowBits<uint8_t>(truncate(x.c[0] * splat<F32>(scale)))}};
    }
};

/// The truncated product, saturated after the conversion: one beyond 32 bits has become negative and gives 0.
struct ScaleSaturated {
    Mox32f scale;
    MOX_INLINE Px<I32, 1> operator()(Px<F32, 1> x) const { return {{truncate(x.c[0] * splat<F32>(scale))}}; }
};

// ---- kernels --------------------------------------------------------------------------------------------------------

using ToneMapLinear = AllColumns<C1<Mox32f>, C1<Mox8u>, On<F32, ScaleWrapped>>;
using ToneMapMean = AllColumns<C1<Mox32f>, C1<Mox8u>, On<F32, ScaleSaturated>>;

// ---- entries --------------------------------------------------------------------------------------------------------

/// Source rows start on whole samples: the low bits of a row's offset are dropped.
template <class Kernel>
MoxStatus mapRows(const Kernel& kernel, const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                  MoxiSize roiSize) {
    for (ptrdiff_t y = 0; y < roiSize.height; ++y)
        kernel.row(image(src, 1).row(srcStep * y & ~ptrdiff_t(3)), image(dst, dstStep).row(y), roiSize.width);
    return moxStatusOk;
}

/// The smallest measure that a gain is taken from is above this.
constexpr Mox32f minNormal = FLT_MIN;

MoxStatus mapByMaximum(const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    if (MoxStatus s = firstOf(notNull(src, dst), sizeAtLeast(roiSize, 1, 1))) return s;
    Mox32f maximum;
    moxiMax_32f_C1R(src, srcStep, roiSize, &maximum);
    if (maximum < 0) return moxStatusNoOperation;
    if (!(maximum > minNormal)) return moxiSet_8u_C1R(0, dst, dstStep, roiSize);
    return mapRows(ToneMapLinear{{{255.0f / maximum}}}, src, srcStep, dst, dstStep, roiSize);
}

MoxStatus mapByMean(const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    if (MoxStatus s = firstOf(notNull(src, dst), sizeAtLeast(roiSize, 1, 1))) return s;
    Mox64f mean;
    moxiMean_32f_C1R(src, srcStep, roiSize, &mean);
    const Mox64f twice = mean + mean;
    if (twice < 0) return moxStatusNoOperation;
    if (!(twice > minNormal)) return moxiSet_8u_C1R(0, dst, dstStep, roiSize);
    return mapRows(ToneMapMean{{{Mox32f(255.0 / twice)}}}, src, srcStep, dst, dstStep, roiSize);
}

}  // namespace

template <>
constexpr auto entry<moxiToneMapLinear_32f8u_C1R> = mapByMaximum;
template <>
constexpr auto entry<moxiToneMapMean_32f8u_C1R> = mapByMean;

}  // namespace q4

#include "tonemap.inc"
