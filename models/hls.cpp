// HLS: hue, lightness and saturation of the double hexcone.
//
// All forms compute in single precision and in the caller's rounding mode. The kernels differ in how they divide, in
// the order of their products and in how they convert to integers, and those differences are part of the result.
#include "moxcc/hls.h"

#include "frame/entry.h"
#include "models/hue.h"
#include "models/reciprocal.h"

namespace q4 {
namespace {

// ---- rules: RGB to HLS ----------------------------------------------------------------------------------------------

// diff * 60 / delta, in both orders.
MOX_INLINE F32 reciprocalFirst(F32 diff, F32 reciprocal) { return diff * (splat<F32>(60.0f) * reciprocal); }
MOX_INLINE F32 differenceFirst(F32 diff, F32 reciprocal) { return (diff * splat<F32>(60.0f)) * reciprocal; }

/// Conversion in the caller's rounding mode, of which the low bits are stored. Only a mode that rounds up leaves the
/// sample's range.
template <class T>
MOX_INLINE I32 nearestLowBits(F32 v) {
    return lowBits<T>(nearest(v));
}

/// Samples of H, L and S for pixels that are not gray, from mx, mn, before, after and half the degrees to be added.
template <class T, F32 (*reciprocal)(F32), I32 (*convert)(F32), F32 (*angle)(F32, F32)>
struct HLSOfHue {
    MOX_INLINE Px<I32, 3> operator()(const Px<F32, 5>& p) const {
        constexpr HueScales scales = hueScales<T>;
        const auto [mx, mn, before, after, halfStart] = p.c;
        const F32 delta = mx - mn, sum = mx + mn;
        const F32 l = splat<F32>(0.5f) * sum;
        const F32 den = min(sum, splat<F32>(2 * scales.top) - sum);  // the first of them up to the middle lightness
        const F32 s = (delta * reciprocal(den)) * splat<F32>(scales.top);
        const F32 h = angle(after - before, reciprocal(delta)) + (halfStart + halfStart);
        return {{convert(h * splat<F32>(scales.degreesToSample)), convert(l), convert(s)}};
    }
};

/// Compares and selects on the samples' own lanes, of which a vector holds more than of floats.
template <class T, F32 (*reciprocal)(F32), I32 (*convert)(F32), F32 (*angle)(F32, F32)>
struct RGBToHLS {
    template <class D, int N>
    MOX_INLINE Block<D, 3, N> apply(const Block<D, 3, N>& rgb) const {
        using V = Vec<D>;
        Block<D, 5, N> parts;
        for (int i = 0; i < rgb.c[0].vectors; ++i) {
            const Hue<V> hue = hueOf<RedGreenBlue>(Px<V, 3>{{rgb.c[0].v[i], rgb.c[1].v[i], rgb.c[2].v[i]}});
            // In red's third the degrees run from -60 to 60, and 360 are added to those below 0.
            const V fromZero = eq(max(hue.before, hue.after), hue.after);
            const V halfStart =
                select(hue.red, andNot(fromZero, splat<V>(180)), select(hue.green, splat<V>(60), splat<V>(120)));
            const V channels[5] = {hue.mx, hue.mn, hue.before, hue.after, halfStart};
            for (int c = 0; c < 5; ++c) parts.c[c].v[i] = channels[c];
        }
        Block<D, 3, N> hls = On<F32, HLSOfHue<T, reciprocal, convert, angle>>{}.template apply<D>(parts);
        for (int i = 0; i < rgb.c[0].vectors; ++i) {
            const V gray = eq(parts.c[0].v[i], parts.c[1].v[i]);
            hls.c[0].v[i] = andNot(gray, hls.c[0].v[i]);
            hls.c[2].v[i] = andNot(gray, hls.c[2].v[i]);
        }
        return hls;
    }
};

struct RGBToHLSFloat {
    MOX_INLINE Px<F32, 3> operator()(const Px<F32, 3>& p) const {
        const auto f = [](float x) { return splat<F32>(x); };
        const Hue<F32> hue = hueOf<RedGreenBlue>(p);
        const F32 delta = hue.mx - hue.mn, sum = hue.mx + hue.mn;
        const F32 l = f(0.5f) * sum;
        const F32 s = delta / min(sum, f(2.0f) - sum);
        const F32 degrees = ((hue.after - hue.before) * f(60.0f)) / delta;
        // Nothing is added to the degrees from 0 on in red's third: -0 stays.
        const F32 start = select(hue.red, f(360.0f), select(hue.green, f(120.0f), f(240.0f)));
        const F32 h = select(andNot(lt(degrees, zero<F32>()), hue.red), degrees, degrees + start);

        const F32 gray = le(delta, f(0x1p-23f));
        return {{andNot(gray, h / f(360.0f)), l, andNot(gray, s)}};
    }
};

// ---- rules: HLS to RGB ----------------------------------------------------------------------------------------------

// The recipes: m2 below and above the middle lightness, and the ramp t / 60 * d.

struct ProductThenScale {
    MOX_INLINE static F32 dark(F32 l, F32 s) { return l * s + l; }
    MOX_INLINE static F32 light(F32 l, F32 s) { return (s - l * s) + l; }
    MOX_INLINE static F32 ramp(F32 t, F32 d) { return (t * d) * splat<F32>(degreesToSector); }
};

struct ScaleThenProduct {
    MOX_INLINE static F32 dark(F32 l, F32 s) { return l * s + l; }
    MOX_INLINE static F32 light(F32 l, F32 s) { return (l + s) - l * s; }
    MOX_INLINE static F32 ramp(F32 t, F32 d) { return (t * splat<F32>(degreesToSector)) * d; }
};

MOX_INLINE F32 divide(F32 a, float b) { return a / splat<F32>(b); }
MOX_INLINE F32 multiplyByRcp2(F32 a, float b) { return a * rcp2(splat<F32>(b)); }

template <F32 (*quotient)(F32, float)>
struct ProductThenDivide {
    MOX_INLINE static F32 dark(F32 l, F32 s) { return (s + splat<F32>(1.0f)) * l; }
    MOX_INLINE static F32 light(F32 l, F32 s) { return (l + s) - s * l; }
    MOX_INLINE static F32 ramp(F32 t, F32 d) { return quotient(d * t, 60.0f); }
};

/// Colours from degrees and fractions. The hue is wrapped once at most, and not for green.
template <class Recipe>
MOX_INLINE Px<F32, 3> colours(F32 hue, F32 l, F32 s) {
    const auto degrees = [](float d) { return splat<F32>(d); };
    const F32 m2 = select(le(l, splat<F32>(0.5f)), Recipe::dark(l, s), Recipe::light(l, s));
    const F32 m1 = splat<F32>(2.0f) * l - m2;
    const F32 d = m2 - m1;

    const auto colour = [&](F32 t) {
        const F32 rising = lt(t, degrees(60));
        const F32 ramp = Recipe::ramp(select(rising, t, degrees(240) - t), d) + m1;
        const F32 onRamp = select(lt(t, degrees(240)), ramp, m1);
        return select(andNot(rising, lt(t, degrees(180))), m2, onRamp);
    };
    const F32 red = hue + degrees(120), blue = hue - degrees(120);
    return {{colour(red - (lt(degrees(360), red) & degrees(360))), colour(hue),
             colour(blue + (lt(blue, zero<F32>()) & degrees(360)))}};
}

template <class T>
MOX_INLINE Px<F32, 3> scaleByConstants(const Px<F32, 3>& p) {
    constexpr HueScales scales = hueScales<T>;
    const F32 toFraction = splat<F32>(scales.sampleToFraction);
    return {{p.c[0] * splat<F32>(scales.sampleToDegrees), p.c[1] * toFraction, p.c[2] * toFraction}};
}

template <F32 (*quotient)(F32, float)>
MOX_INLINE Px<F32, 3> scaleByQuotients(const Px<F32, 3>& p) {
    return {{quotient(p.c[0] * splat<F32>(360.0f), 255.0f), quotient(p.c[1], 255.0f), quotient(p.c[2], 255.0f)}};
}

template <class T, class Recipe, Px<F32, 3> (*scale)(const Px<F32, 3>&), I32 (*convert)(F32)>
struct HLSToRGB {
    MOX_INLINE Px<I32, 3> operator()(const Px<F32, 3>& samples) const {
        const Px<F32, 3> hls = scale(samples);
        Px<F32, 3> rgb = colours<Recipe>(hls.c[0], hls.c[1], hls.c[2]);
        const auto sample = [](F32 v) { return convert(v * splat<F32>(hueScales<T>.top)); };
        return {{sample(rgb.c[0]), sample(rgb.c[1]), sample(rgb.c[2])}};
    }
};

template <class Recipe>
struct HLSToRGBFloat {
    MOX_INLINE Px<F32, 3> operator()(const Px<F32, 3>& p) const {
        return colours<Recipe>(p.c[0] * splat<F32>(360.0f), p.c[1], p.c[2]);
    }
};

/// A rule whose pixels without saturation take their lightness as it is. Other rules compute it, which gives the same
/// when they truncate or round to nearest.
template <class Rule>
struct GrayAsItIs {
    Rule rule;
    template <class D, int N>
    MOX_INLINE Block<D, 3, N> apply(const Block<D, 3, N>& hls) const {
        Block<D, 3, N> rgb = rule.template apply<D>(hls);
        for (int i = 0; i < hls.c[0].vectors; ++i) {
            const Vec<D> gray = eq(hls.c[2].v[i], zero<Vec<D>>());
            if (any(gray))
                for (Channel<D, N>& channel : rgb.c) channel.v[i] = select(gray, hls.c[1].v[i], channel.v[i]);
        }
        return rgb;
    }
};

// ---- rules: other samples and channels ------------------------------------------------------------------------------

/// A rule of 16u, for 16s samples that are biased to 0 to 65535.
template <class Rule>
struct Biased {
    Rule rule;
    template <class To, class From, int N>
    MOX_INLINE static Block<To, 3, N> changeBias(const Block<From, 3, N>& in) {
        Block<To, 3, N> out;
        for (int c = 0; c < 3; ++c)
            for (int i = 0; i < in.c[c].vectors; ++i)
                out.c[c].v[i] = as<Vec<To>>(in.c[c].v[i] ^ splat<Vec<From>>(From(0x8000)));
        return out;
    }
    template <class D, int N>
    MOX_INLINE Block<D, 3, N> apply(const Block<Mox16s, 3, N>& in) const {
        return changeBias<Mox16s>(rule.template apply<Mox16u>(changeBias<Mox16u>(in)));
    }
};

template <class T, class Rule>
using BiasedIf16s = std::conditional_t<std::is_same_v<T, Mox16s>, Biased<Rule>, Rule>;

// ---- kernels --------------------------------------------------------------------------------------------------------

using innerRGBToHLS_8u_C3R = Split<C3<Mox8u>, C3<Mox8u>, 8, RGBToHLS<Mox8u, rcp, nearest, reciprocalFirst>,
                                   RGBToHLS<Mox8u, rcp2, truncate, differenceFirst>>;
using innerRGBToHLS_8u_AC4R = Split<AC4<Mox8u>, AC4<Mox8u>, 4, RGBToHLS<Mox8u, rcp, nearest, reciprocalFirst>,
                                    RGBToHLS<Mox8u, rcp2, nearestLowBits<Mox8u>, differenceFirst>>;
template <class Layout, class T = typename Layout::Sample>
using innerRGBToHLS_16u_C3R = Split<Layout, Layout, 4, BiasedIf16s<T, RGBToHLS<Mox16u, rcp2, nearest, reciprocalFirst>>,
                                    BiasedIf16s<T, RGBToHLS<Mox16u, rcp2, truncate, differenceFirst>>>;
template <class Layout>
using innerRGBToHLS_32f_C3R = AllColumns<Layout, Layout, On<F32, RGBToHLSFloat>>;

/// The rule, for pixels of colour alone or with an alpha that is copied.
template <class Src, class Rule>
using WithAlphaOf = std::conditional_t<Src::channels == 4, FourthCopied<Rule>, Rule>;

template <class Src, class Dst>
using BGRToHLS = Split<Reversed<Src>, Dst, 4, WithAlphaOf<Src, RGBToHLS<Mox8u, rcp, truncate, differenceFirst>>,
                       WithAlphaOf<Src, RGBToHLS<Mox8u, rcp2, truncate, differenceFirst>>>;

using ownpi_BGRToHLS_8u_C3P3 = BGRToHLS<C3<Mox8u>, P3<Mox8u>>;
using ownpi_BGRToHLS_8u_P3C3 = BGRToHLS<P3<Mox8u>, C3<Mox8u>>;
using ownpi_BGRToHLS_8u_P3 = BGRToHLS<P3<Mox8u>, P3<Mox8u>>;
using ownpi_BGRToHLS_8u_AC4P4 = BGRToHLS<C4<Mox8u>, P4<Mox8u>>;
using ownpi_BGRToHLS_8u_AP4C4 = BGRToHLS<P4<Mox8u>, C4<Mox8u>>;
using ownpi_BGRToHLS_8u_AP4 = BGRToHLS<P4<Mox8u>, P4<Mox8u>>;
using innerBGRToHLS_8u_AC4R = BGRToHLS<AC4<Mox8u>, AC4<Mox8u>>;

template <class T, class Recipe, Px<F32, 3> (*scale)(const Px<F32, 3>&), I32 (*convert)(F32)>
using Inv = On<F32, HLSToRGB<T, Recipe, scale, convert>>;

template <class T>
using HLSToRGBBody = Inv<T, ProductThenScale, scaleByConstants<T>, nearest>;
template <F32 (*quotient)(F32, float)>
using HLSToRGBTail_8u = GrayAsItIs<Inv<Mox8u, ProductThenDivide<quotient>, scaleByQuotients<quotient>, truncate>>;

/// The first four columns of the tail multiply by reciprocals in place of the divisions, unless the source row's and
/// the destination row's bytes overlap.
struct innerHLSToRGB_8u_C3R {
    using Src = C3<Mox8u>;
    using Dst = C3<Mox8u>;
    static bool disjoint(const uint8_t* a, const uint8_t* b, ptrdiff_t bytes) {
        const uintptr_t distance = reinterpret_cast<uintptr_t>(a) - reinterpret_cast<uintptr_t>(b);
        return distance >= uintptr_t(bytes) && distance <= -uintptr_t(bytes);
    }
    MOX_INLINE void row(const SrcRows<1>& src, const DstRows<1>& dst, ptrdiff_t width) const {
        const ptrdiff_t limit = width & -8;
        const bool grouped = width - limit >= 4 && disjoint(src.p[0], dst.p[0], Src::bytes(0, width));
        const ptrdiff_t groupEnd = grouped ? limit + 4 : limit;
        span<Src, Dst>(src, dst, 0, limit, HLSToRGBBody<Mox8u>{});
        span<Src, Dst>(src, dst, limit, groupEnd, HLSToRGBTail_8u<multiplyByRcp2>{});
        span<Src, Dst>(src, dst, groupEnd, width, HLSToRGBTail_8u<divide>{});
    }
};
using innerHLSToRGB_8u_AC4R = Split<AC4<Mox8u>, AC4<Mox8u>, 4, HLSToRGBBody<Mox8u>, HLSToRGBTail_8u<divide>>;
template <class Layout, class T = typename Layout::Sample>
using innerHLSToRGB_16u_C3R =
    Split<Layout, Layout, 4, BiasedIf16s<T, HLSToRGBBody<Mox16u>>,
          BiasedIf16s<T, GrayAsItIs<Inv<Mox16u, ScaleThenProduct, scaleByConstants<Mox16u>, nearestLowBits<Mox16u>>>>>;
template <class Layout>
using innerHLSToRGB_32f_C3R = Split<Layout, Layout, 4, GrayAsItIs<On<F32, HLSToRGBFloat<ScaleThenProduct>>>,
                                    GrayAsItIs<On<F32, HLSToRGBFloat<ProductThenDivide<divide>>>>>;

template <class Src, class Dst>
using HLSToBGR =
    AllColumns<Src, Reversed<Dst>, WithAlphaOf<Src, Inv<Mox8u, ScaleThenProduct, scaleByConstants<Mox8u>, truncate>>>;

using ownpi_HLSToBGR_8u_C3P3 = HLSToBGR<C3<Mox8u>, P3<Mox8u>>;
using ownpi_HLSToBGR_8u_P3C3 = HLSToBGR<P3<Mox8u>, C3<Mox8u>>;
using ownpi_HLSToBGR_8u_P3 = HLSToBGR<P3<Mox8u>, P3<Mox8u>>;
using ownpi_HLSToBGR_8u_AC4P4 = HLSToBGR<C4<Mox8u>, P4<Mox8u>>;
using ownpi_HLSToBGR_8u_AP4C4 = HLSToBGR<P4<Mox8u>, C4<Mox8u>>;
using ownpi_HLSToBGR_8u_AP4 = HLSToBGR<P4<Mox8u>, P4<Mox8u>>;

// ---- entries --------------------------------------------------------------------------------------------------------

constexpr Order stepsBeforeSize = {{Test::pointers, Test::planes, Test::steps, Test::size}};
constexpr Order sizeBeforeSteps = {{Test::pointers, Test::size, Test::steps}};

}  // namespace

// clang-format off
template <> constexpr auto entry<moxiRGBToHLS_8u_C3R>    = converts<innerRGBToHLS_8u_C3R>;
template <> constexpr auto entry<moxiRGBToHLS_8u_AC4R>   = converts<innerRGBToHLS_8u_AC4R>;
template <> constexpr auto entry<moxiRGBToHLS_16u_C3R>   = converts<innerRGBToHLS_16u_C3R<C3<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiRGBToHLS_16u_AC4R>  = converts<innerRGBToHLS_16u_C3R<AC4<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiRGBToHLS_16s_C3R>   = converts<innerRGBToHLS_16u_C3R<C3<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiRGBToHLS_16s_AC4R>  = converts<innerRGBToHLS_16u_C3R<AC4<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiRGBToHLS_32f_C3R>   = converts<innerRGBToHLS_32f_C3R<C3<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiRGBToHLS_32f_AC4R>  = converts<innerRGBToHLS_32f_C3R<AC4<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiHLSToRGB_8u_C3R>    = converts<innerHLSToRGB_8u_C3R>;
template <> constexpr auto entry<moxiHLSToRGB_8u_AC4R>   = converts<innerHLSToRGB_8u_AC4R>;
template <> constexpr auto entry<moxiHLSToRGB_16u_C3R>   = converts<innerHLSToRGB_16u_C3R<C3<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiHLSToRGB_16u_AC4R>  = converts<innerHLSToRGB_16u_C3R<AC4<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiHLSToRGB_16s_C3R>   = converts<innerHLSToRGB_16u_C3R<C3<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiHLSToRGB_16s_AC4R>  = converts<innerHLSToRGB_16u_C3R<AC4<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiHLSToRGB_32f_C3R>   = converts<innerHLSToRGB_32f_C3R<C3<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiHLSToRGB_32f_AC4R>  = converts<innerHLSToRGB_32f_C3R<AC4<Mox32f>>, inSamples>;

template <> constexpr auto entry<moxiBGRToHLS_8u_AC4R>   = converts<innerBGRToHLS_8u_AC4R, sizeBeforeSteps>;
template <> constexpr auto entry<moxiBGRToHLS_8u_C3P3R>  = converts<ownpi_BGRToHLS_8u_C3P3, stepsBeforeSize>;
template <> constexpr auto entry<moxiBGRToHLS_8u_P3C3R>  = converts<ownpi_BGRToHLS_8u_P3C3, stepsBeforeSize>;
template <> constexpr auto entry<moxiBGRToHLS_8u_P3R>    = converts<ownpi_BGRToHLS_8u_P3, stepsBeforeSize>;
template <> constexpr auto entry<moxiBGRToHLS_8u_AC4P4R> = converts<ownpi_BGRToHLS_8u_AC4P4, stepsBeforeSize>;
template <> constexpr auto entry<moxiBGRToHLS_8u_AP4C4R> = converts<ownpi_BGRToHLS_8u_AP4C4, stepsBeforeSize>;
template <> constexpr auto entry<moxiBGRToHLS_8u_AP4R>   = converts<ownpi_BGRToHLS_8u_AP4, stepsBeforeSize>;
template <> constexpr auto entry<moxiHLSToBGR_8u_C3P3R>  = converts<ownpi_HLSToBGR_8u_C3P3, stepsBeforeSize>;
template <> constexpr auto entry<moxiHLSToBGR_8u_P3C3R>  = converts<ownpi_HLSToBGR_8u_P3C3, stepsBeforeSize>;
template <> constexpr auto entry<moxiHLSToBGR_8u_P3R>    = converts<ownpi_HLSToBGR_8u_P3, stepsBeforeSize>;
template <> constexpr auto entry<moxiHLSToBGR_8u_AC4P4R> = converts<ownpi_HLSToBGR_8u_AC4P4, stepsBeforeSize>;
template <> constexpr auto entry<moxiHLSToBGR_8u_AP4C4R> = converts<ownpi_HLSToBGR_8u_AP4C4, stepsBeforeSize>;
template <> constexpr auto entry<moxiHLSToBGR_8u_AP4R>   = converts<ownpi_HLSToBGR_8u_AP4, stepsBeforeSize>;
// clang-format on

}  // namespace q4

#include "hls.inc"
