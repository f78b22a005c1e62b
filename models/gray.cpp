// Gray: weighted sums of the colour channels, and gray spread to the channels.
#include "moxcc/gray.h"

#include "frame/entry.h"
#include "models/samples.h"
#include "simd/control.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

/// A weight in units of 1/32768, as the low 16 bits of its rounded value.
uint16_t fixedPoint(Mox32f weight) { return uint16_t(truncate(Mox64f(weight) * 32768.0 + 0.5)); }

/// The caller's weights, or those of luma where a call has none.
template <class T>
struct Weights {
    using Given = std::conditional_t<std::is_same_v<T, Mox64f>, Mox64f, Mox32f>;
    T w[3];

    Weights(T w0, T w1, T w2) : w{w0, w1, w2} {}
    Weights(const Given* given = nullptr) {
        static constexpr Mox32f luma[3] = {0.299f, 0.587f, 0.114f};
        static constexpr uint16_t luma8u[3] = {9798, 19235, 3736};  // they sum to 32769
        for (int c = 0; c < 3; ++c) {
            if constexpr (std::is_same_v<T, uint16_t>)
                w[c] = given ? fixedPoint(given[c]) : luma8u[c];
            else
                w[c] = given ? given[c] : luma[c];
        }
    }
};

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
        const Weights<Mox64f> reversed = {weights.w[2], weights.w[1], weights.w[0]};
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
template <class Src>
using Gray16 = AllToGray<Src, On<I32, GrayRounded<typename Src::Sample>>>;
template <class Src>
using Gray32f = AllToGray<Src, On<F32, GrayFloat>>;

/// Pairs run from the first column whose destination is on 16 bytes, or is the row's second.
template <class Src_>
struct Gray64f {
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

}  // namespace

// clang-format off
template <> constexpr auto entry<moxiRGBToGray_8u_C3C1R>     = converts<innerRGBToGray_8u_C3C1R>;
template <> constexpr auto entry<moxiRGBToGray_8u_AC4C1R>    = converts<innerRGBToGray_8u_AC4C1R>;
template <> constexpr auto entry<moxiRGBToGray_16u_C3C1R>    = converts<Gray16<C3<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiRGBToGray_16u_AC4C1R>   = converts<Gray16<AC4<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiRGBToGray_16s_C3C1R>    = converts<Gray16<C3<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiRGBToGray_16s_AC4C1R>   = converts<Gray16<AC4<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiRGBToGray_32f_C3C1R>    = converts<Gray32f<C3<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiRGBToGray_32f_AC4C1R>   = converts<Gray32f<AC4<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiColorToGray_8u_C3C1R>   = converts<innerRGBToGray_8u_C3C1R>;
template <> constexpr auto entry<moxiColorToGray_8u_AC4C1R>  = converts<innerRGBToGray_8u_AC4C1R>;
template <> constexpr auto entry<moxiColorToGray_16u_C3C1R>  = converts<Gray16<C3<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiColorToGray_16u_AC4C1R> = converts<Gray16<AC4<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiColorToGray_16s_C3C1R>  = converts<Gray16<C3<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiColorToGray_16s_AC4C1R> = converts<Gray16<AC4<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiColorToGray_32f_C3C1R>  = converts<Gray32f<C3<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiColorToGray_32f_AC4C1R> = converts<Gray32f<AC4<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiColorToGray_64f_C3C1R>  = converts<Gray64f<C3<Mox64f>>>;
template <> constexpr auto entry<moxiColorToGray_64f_AC4C1R> = converts<Gray64f<AC4<Mox64f>>>;

template <> constexpr auto entry<moxiGrayToRGB_8u_C1C3R>     = converts<innerGrayToRGB_C1C3R<Mox8u>>;
template <> constexpr auto entry<moxiGrayToRGB_8u_C1C4R>     = converts<innerGrayToRGB_C1C4R<Mox8u>>;
template <> constexpr auto entry<moxiGrayToRGB_16u_C1C3R>    = converts<innerGrayToRGB_C1C3R<Mox16u>>;
template <> constexpr auto entry<moxiGrayToRGB_16u_C1C4R>    = converts<innerGrayToRGB_C1C4R<Mox16u>>;
template <> constexpr auto entry<moxiGrayToRGB_32f_C1C3R>    = converts<innerGrayToRGB_C1C3R<Mox32f>>;
template <> constexpr auto entry<moxiGrayToRGB_32f_C1C4R>    = converts<innerGrayToRGB_C1C4R<Mox32f>>;
// clang-format on

}  // namespace q4

#include "gray.inc"
