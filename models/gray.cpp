// Gray: weighted sums of the colour channels, and gray spread to the channels.
#include "moxcc/gray.h"

#include "frame/convert.h"
#include "models/samples.h"
#include "simd/control.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

template <class T>
struct Weights {
    T w[3];
};

constexpr Weights<Mox32f> lumaWeights = {{0.299f, 0.587f, 0.114f}};
constexpr Weights<Mox64f> lumaWeights64f = {{0.299f, 0.587f, 0.114f}};  // the floats, widened
constexpr Weights<uint16_t> lumaWeights8u = {{9798, 19235, 3736}};      // in units of 1/32768; they sum to 32769

/// Vector columns of 8u: each term is truncated to 7 fractional bits, sums saturate at 16 bits.
struct GrayTruncatedTerms {
    Weights<uint16_t> weights;

    MOX_INLINE Px<I16, 1> operator()(Px<U8p8, 3> p) const {
        const auto term = [&](int c) { return mulHi(as<U16>(p.c[c]), splat<U16>(weights.w[c])); };
        const U16 sum = adds(adds(adds(term(0), term(1)), term(2)), splat<U16>(64));
        return {{shr<7>(as<I16>(sum))}};
    }
};

/// Last columns of 8u: one sum at full precision, of which the low byte is stored.
struct GrayFullPrecision {
    Weights<uint16_t> weights;

    MOX_INLINE Px<I32, 1> operator()(Px<I32, 3> p) const {
        const auto term = [&](int c) { return p.c[c] * splat<I32>(weights.w[c]); };
        return {{lowBits<uint8_t>(shr<15>(((term(0) + term(1)) + term(2)) + splat<I32>(16384)))}};
    }
};

template <class V>
MOX_INLINE V weightedSum(const Weights<typename V::Sample>& weights, const Px<V, 3>& p) {
    return (splat<V>(weights.w[0]) * p.c[0] + splat<V>(weights.w[1]) * p.c[1]) + splat<V>(weights.w[2]) * p.c[2];
}

struct GrayFloat {
    Weights<Mox32f> weights;
    MOX_INLINE Px<F32, 1> operator()(const Px<F32, 3>& p) const { return {{weightedSum(weights, p)}}; }
};

/// 16-bit samples, biased to 0 to 65535 if signed; the low 16 bits of the rounded sum are stored.
template <class T>
struct GrayRounded {
    Weights<Mox32f> weights;
    MOX_INLINE Px<I32, 1> operator()(const Px<I32, 3>& p) const {
        return {{lowBits<T>(nearest(weightedSum(weights, unbiased<T>(p))) - splat<I32>(sampleBias<T>))}};
    }
};

/// 64f columns on their own.
struct GrayDouble {
    Weights<Mox64f> weights;
    MOX_INLINE Px<F64, 1> operator()(const Px<F64, 3>& p) const { return {{weightedSum(weights, p)}}; }
};

/// 64f columns in pairs: the second of each adds its terms from the other end.
struct GrayDoublePairs {
    Weights<Mox64f> weights;
    MOX_INLINE Px<F64, 1> operator()(const Px<F64, 3>& p) const {
        const Weights<Mox64f> reversed = {{weights.w[2], weights.w[1], weights.w[0]}};
        const F64 first = weightedSum(weights, p);
        const F64 second = weightedSum(reversed, Px{p.c[2], p.c[1], p.c[0]});
        return {{blend16<0xF0>(first, second)}};
    }
};

/// Every channel is the sample.
struct Spread {
    template <class D, class T, int N>
    MOX_INLINE Block<T, 3, N> apply(const Block<T, 1, N>& in) const {
        return {{in.c[0], in.c[0], in.c[0]}};
    }
};

// ---- kernels: source, destination, columns of the first rule, first rule, rule of the rest --------------------------

using innerRGBToGray_8u_C3C1R =
    Split<C3<Mox8u>, C1<Mox8u>, 4, On<U8p8, GrayTruncatedTerms>, On<I32, GrayFullPrecision>>;
using innerRGBToGray_8u_AC4C1R =
    Split<Dealt<AC4<Mox8u>>, Dealt<C1<Mox8u>>, 8, On<U8p8, GrayTruncatedTerms>, On<I32, GrayFullPrecision>>;
/// Of three channels, or of four.
template <class Src, class Rule>
using AllToGray = AllColumns<DealtIf<fourSamples<Src>, Src>, DealtIf<fourSamples<Src>, C1<typename Src::Sample>>, Rule>;
template <class Src, class T>
using innerRGBToGray_16u_C3C1R = AllToGray<Src, On<I32, GrayRounded<T>>>;
template <class Src>
using innerRGBToGray_32f_C3C1R = AllToGray<Src, On<F32, GrayFloat>>;

/// Pairs run from the first column whose destination is on 16 bytes, or is the row's second.
template <class Src_>
struct ownColorToGray_64f_C3C1R {
    using Src = Src_;
    using Dst = C1<Mox64f>;
    Weights<Mox64f> weights;
    MOX_INLINE void row(const SrcRows<1>& src, const DstRows<1>& dst, ptrdiff_t width) const {
        const ptrdiff_t single = reinterpret_cast<uintptr_t>(dst.p[0]) % 16 != 0 ? 1 : 0;
        span<Src, Dst>(src, dst, 0, single, On<F64, GrayDouble>{{weights}});
        span<Src, Dst>(src, dst, single, width, On<F64, GrayDoublePairs>{{weights}});
    }
};

template <class T>
using innerGrayToRGB_C1C3R = AllColumns<C1<T>, Triple<T>, Unchanged>;
template <class T>
using innerGrayToRGB_C1C4R = AllColumns<C1<T>, C4<T>, WithFourth<Spread, T>>;

// ---- entries --------------------------------------------------------------------------------------------------------

/// A weight in units of 1/32768, as the low 16 bits of its rounded value.
uint16_t fixedPoint(Mox32f weight) { return uint16_t(truncate(Mox64f(weight) * 32768.0 + 0.5)); }

Weights<uint16_t> weights8u(const Mox32f* coeffs) {
    if (!coeffs) return lumaWeights8u;
    return {{fixedPoint(coeffs[0]), fixedPoint(coeffs[1]), fixedPoint(coeffs[2])}};
}

template <class T>
Weights<T> weightsOr(const Weights<T>& otherwise, const T* coeffs) {
    return coeffs ? Weights<T>{{coeffs[0], coeffs[1], coeffs[2]}} : otherwise;
}

template <class Kernel>
MoxStatus gray8u(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                 const Mox32f* coeffs) {
    const Weights<uint16_t> weights = weights8u(coeffs);
    return convert(Kernel{{{weights}}, {{weights}}}, src, srcStep, dst, dstStep, roiSize);
}

template <template <class> class Src, class T>
MoxStatus gray16(const T* src, int32_t srcStep, T* dst, int32_t dstStep, MoxiSize roiSize, const Mox32f* coeffs) {
    return convert(innerRGBToGray_16u_C3C1R<Src<T>, T>{{{weightsOr(lumaWeights, coeffs)}}}, src,
                   wholeSamples<T>(srcStep), dst, wholeSamples<T>(dstStep), roiSize);
}

template <template <class> class Src>
MoxStatus gray32f(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep, MoxiSize roiSize,
                  const Mox32f* coeffs) {
    return convert(innerRGBToGray_32f_C3C1R<Src<Mox32f>>{{{weightsOr(lumaWeights, coeffs)}}}, src,
                   wholeSamples<Mox32f>(srcStep), dst, wholeSamples<Mox32f>(dstStep), roiSize);
}

template <template <class> class Src>
MoxStatus gray64f(const Mox64f* src, int32_t srcStep, Mox64f* dst, int32_t dstStep, MoxiSize roiSize,
                  const Mox64f* coeffs) {
    return convert(ownColorToGray_64f_C3C1R<Src<Mox64f>>{weightsOr(lumaWeights64f, coeffs)}, src, srcStep, dst, dstStep,
                   roiSize);
}

}  // namespace
}  // namespace q4

using namespace q4;

MoxStatus moxiRGBToGray_8u_C3C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return gray8u<innerRGBToGray_8u_C3C1R>(src, srcStep, dst, dstStep, roiSize, nullptr);
}
MoxStatus moxiRGBToGray_8u_AC4C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return gray8u<innerRGBToGray_8u_AC4C1R>(src, srcStep, dst, dstStep, roiSize, nullptr);
}
MoxStatus moxiRGBToGray_16u_C3C1R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize) {
    return gray16<C3>(src, srcStep, dst, dstStep, roiSize, nullptr);
}
MoxStatus moxiRGBToGray_16u_AC4C1R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize) {
    return gray16<AC4>(src, srcStep, dst, dstStep, roiSize, nullptr);
}
MoxStatus moxiRGBToGray_16s_C3C1R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize) {
    return gray16<C3>(src, srcStep, dst, dstStep, roiSize, nullptr);
}
MoxStatus moxiRGBToGray_16s_AC4C1R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize) {
    return gray16<AC4>(src, srcStep, dst, dstStep, roiSize, nullptr);
}
MoxStatus moxiRGBToGray_32f_C3C1R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep, MoxiSize roiSize) {
    return gray32f<C3>(src, srcStep, dst, dstStep, roiSize, nullptr);
}
MoxStatus moxiRGBToGray_32f_AC4C1R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep, MoxiSize roiSize) {
    return gray32f<AC4>(src, srcStep, dst, dstStep, roiSize, nullptr);
}
MoxStatus moxiColorToGray_8u_C3C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                   const Mox32f* coeffs) {
    return gray8u<innerRGBToGray_8u_C3C1R>(src, srcStep, dst, dstStep, roiSize, coeffs);
}
MoxStatus moxiColorToGray_8u_AC4C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                    const Mox32f* coeffs) {
    return gray8u<innerRGBToGray_8u_AC4C1R>(src, srcStep, dst, dstStep, roiSize, coeffs);
}
MoxStatus moxiColorToGray_16u_C3C1R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                    const Mox32f* coeffs) {
    return gray16<C3>(src, srcStep, dst, dstStep, roiSize, coeffs);
}
MoxStatus moxiColorToGray_16u_AC4C1R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                     const Mox32f* coeffs) {
    return gray16<AC4>(src, srcStep, dst, dstStep, roiSize, coeffs);
}
MoxStatus moxiColorToGray_16s_C3C1R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize,
                                    const Mox32f* coeffs) {
    return gray16<C3>(src, srcStep, dst, dstStep, roiSize, coeffs);
}
MoxStatus moxiColorToGray_16s_AC4C1R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize,
                                     const Mox32f* coeffs) {
    return gray16<AC4>(src, srcStep, dst, dstStep, roiSize, coeffs);
}
MoxStatus moxiColorToGray_32f_C3C1R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep, MoxiSize roiSize,
                                    const Mox32f* coeffs) {
    return gray32f<C3>(src, srcStep, dst, dstStep, roiSize, coeffs);
}
MoxStatus moxiColorToGray_32f_AC4C1R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep, MoxiSize roiSize,
                                     const Mox32f* coeffs) {
    return gray32f<AC4>(src, srcStep, dst, dstStep, roiSize, coeffs);
}
MoxStatus moxiColorToGray_64f_C3C1R(const Mox64f* src, int32_t srcStep, Mox64f* dst, int32_t dstStep, MoxiSize roiSize,
                                    const Mox64f* coeffs) {
    return gray64f<C3>(src, srcStep, dst, dstStep, roiSize, coeffs);
}
MoxStatus moxiColorToGray_64f_AC4C1R(const Mox64f* src, int32_t srcStep, Mox64f* dst, int32_t dstStep, MoxiSize roiSize,
                                     const Mox64f* coeffs) {
    return gray64f<AC4>(src, srcStep, dst, dstStep, roiSize, coeffs);
}

MoxStatus moxiGrayToRGB_8u_C1C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerGrayToRGB_C1C3R<Mox8u>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGrayToRGB_8u_C1C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                 Mox8u aval) {
    return convert(innerGrayToRGB_C1C4R<Mox8u>{{{}, aval}}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGrayToRGB_16u_C1C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerGrayToRGB_C1C3R<Mox16u>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGrayToRGB_16u_C1C4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                  Mox16u aval) {
    return convert(innerGrayToRGB_C1C4R<Mox16u>{{{}, aval}}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGrayToRGB_32f_C1C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(innerGrayToRGB_C1C3R<Mox32f>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGrayToRGB_32f_C1C4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep, MoxiSize roiSize,
                                  Mox32f aval) {
    return convert(innerGrayToRGB_C1C4R<Mox32f>{{{}, aval}}, src, srcStep, dst, dstStep, roiSize);
}
