// HSV: hue, saturation and value of the hexcone. All in single precision and in the caller's rounding mode.
#include "moxcc/hsv.h"

#include "frame/entry.h"
#include "models/hue.h"

namespace q4 {
namespace {

// ---- rules: RGB to HSV ----------------------------------------------------------------------------------------------

/// Samples of H and S for pixels that are not gray, from mx, delta, what the channels before and after lie below mx,
/// and the first sector of the third: 0, 2 or 4. Tails store the low bits; only a rounding mode that rounds up leaves
/// the range.
template <I32 (*convert)(F32)>
struct HSOfHue_8u {
    MOX_INLINE Px<I32, 2> operator()(const Px<F32, 5>& p) const {
        const auto [mx, delta, before, after, sector] = p.c;
        const F32 s = (rcp(mx) * delta) * splat<F32>(255.0f);
        const F32 q = rcp(delta);
        const F32 turn = ((before * q - after * q) + sector) * splat<F32>(42.5f);
        const F32 h = turn + (lt(turn, zero<F32>()) & splat<F32>(255.0f));
        return {{convert(h), convert(s)}};
    }
};
MOX_INLINE I32 nearestLowByte(F32 v) { return lowBits<Mox8u>(nearest(v)); }

struct HSOfHue_16u {
    MOX_INLINE Px<I32, 2> operator()(const Px<F32, 5>& p) const {
        const auto f = [](float x) { return splat<F32>(x); };
        const auto [mx, delta, before, after, sector] = p.c;
        const F32 s = delta / mx;
        const F32 q = f(1.0f) / delta;
        const F32 x = before * q, y = after * q;
        const F32 h = select(eq(sector, f(4.0f)), (f(4.0f) - y) + x, (x + sector) - y);
        const F32 turn = h + (lt(h, zero<F32>()) & f(6.0f));
        return {{truncate((turn * f(65535.0f)) / f(6.0f) + f(0.5f)), truncate(s * f(65535.0f) + f(0.5f))}};
    }
};

/// Compares and selects on the samples' own lanes, of which a vector holds more than of floats.
template <class Order, class HSOfHue>
struct RGBToHSV {
    template <class D, int N>
    MOX_INLINE Block<D, 3, N> apply(const Block<D, 3, N>& rgb) const {
        using V = Vec<D>;
        Block<D, 5, N> parts;
        for (int i = 0; i < rgb.c[0].vectors; ++i) {
            const Hue<V> hue = hueOf<Order>(Px<V, 3>{{rgb.c[0].v[i], rgb.c[1].v[i], rgb.c[2].v[i]}});
            const V sector = andNot(hue.red, select(hue.green, splat<V>(2), splat<V>(4)));
            const V channels[5] = {hue.mx, hue.mx - hue.mn, hue.mx - hue.before, hue.mx - hue.after, sector};
            for (int c = 0; c < 5; ++c) parts.c[c].v[i] = channels[c];
        }
        const Block<D, 2, N> hs = On<F32, HSOfHue>{}.template apply<D>(parts);
        Block<D, 3, N> hsv;
        for (int i = 0; i < rgb.c[0].vectors; ++i) {
            const V gray = eq(parts.c[1].v[i], zero<V>());
            hsv.c[0].v[i] = andNot(gray, hs.c[0].v[i]);
            hsv.c[1].v[i] = andNot(gray, hs.c[1].v[i]);
            hsv.c[2].v[i] = parts.c[0].v[i];
        }
        return hsv;
    }
};

// ---- rules: HSV to RGB ----------------------------------------------------------------------------------------------

/// The samples that the channels are made of: the one that rises (even sectors) or falls (odd ones), the least one, and
/// the sector's number. The greatest one is V.
template <class T>
struct SectorSamples {
    MOX_INLINE Px<I32, 3> operator()(const Px<F32, 3>& p) const {
        constexpr HueScales scales = hueScales<T>;
        const F32 h = andNot(eq(p.c[0], splat<F32>(scales.top)), p.c[0]), s = p.c[1], v = p.c[2];
        const F32 turn = (h * splat<F32>(degreesToSector)) * splat<F32>(scales.sampleToDegrees);
        const F32 sv = (s * splat<F32>(scales.sampleToFraction)) * v;
        const F32 least = v - sv;
        const I32 sector = truncate(turn);
        const F32 fs = (turn - toF32(sector)) * sv;
        const F32 odd = as<F32>(shl<31>(sector));
        const F32 between = select(odd, v, least) + (fs ^ odd);
        return {{nearest(between), nearest(least), sector}};
    }
};

template <class T>
struct HSVToRGB {
    template <class D, int N>
    MOX_INLINE Block<D, 3, N> apply(const Block<D, 3, N>& hsv) const {
        const Block<D, 3, N> samples = On<F32, SectorSamples<T>>{}.template apply<D>(hsv);
        Block<D, 3, N> rgb;
        for (int i = 0; i < hsv.c[0].vectors; ++i) {
            const Vec<D> greatest = hsv.c[2].v[i], between = samples.c[0].v[i], least = samples.c[1].v[i];
            const auto in = [&](D a, D b) {
                return eq(samples.c[2].v[i], splat<Vec<D>>(a)) | eq(samples.c[2].v[i], splat<Vec<D>>(b));
            };
            rgb.c[0].v[i] = select(in(5, 0), greatest, select(in(1, 4), between, least));
            rgb.c[1].v[i] = select(in(1, 2), greatest, select(in(3, 0), between, least));
            rgb.c[2].v[i] = select(in(3, 4), greatest, select(in(5, 2), between, least));
        }
        return rgb;
    }
};

// ---- kernels --------------------------------------------------------------------------------------------------------

template <class Layout>
using innerRGBToHSV_8u_C3R = Split<Layout, Layout, 4, RGBToHSV<GreenIfLessRed, HSOfHue_8u<nearest>>,
                                   RGBToHSV<BlueGreenRed, HSOfHue_8u<nearestLowByte>>>;
template <class Layout>
using innerRGBToHSV_16u_C3R = AllColumns<Layout, Layout, RGBToHSV<BlueGreenRed, HSOfHue_16u>>;
template <class Layout>
using innerHSVToRGB_C3R = AllColumns<Layout, Layout, HSVToRGB<typename Layout::Sample>>;

// ---- entries --------------------------------------------------------------------------------------------------------

}  // namespace

// clang-format off
template <> constexpr auto entry<moxiRGBToHSV_8u_C3R>   = converts<innerRGBToHSV_8u_C3R<C3<Mox8u>>>;
template <> constexpr auto entry<moxiRGBToHSV_8u_AC4R>  = converts<innerRGBToHSV_8u_C3R<AC4<Mox8u>>>;
template <> constexpr auto entry<moxiRGBToHSV_16u_C3R>  = converts<innerRGBToHSV_16u_C3R<C3<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiRGBToHSV_16u_AC4R> = converts<innerRGBToHSV_16u_C3R<AC4<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiHSVToRGB_8u_C3R>   = converts<innerHSVToRGB_C3R<C3<Mox8u>>>;
template <> constexpr auto entry<moxiHSVToRGB_8u_AC4R>  = converts<innerHSVToRGB_C3R<AC4<Mox8u>>>;
template <> constexpr auto entry<moxiHSVToRGB_16u_C3R>  = converts<innerHSVToRGB_C3R<C3<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiHSVToRGB_16u_AC4R> = converts<innerHSVToRGB_C3R<AC4<Mox16u>>, inSamples>;
// clang-format on

}  // namespace q4

#include "hsv.inc"
