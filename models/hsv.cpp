// HSV: hue, saturation and value of the hexcone. All in single precision and in the caller's rounding mode.
#include "moxcc/hsv.h"

#include "frame/convert.h"
#include "models/hue_scales.h"

namespace q4 {
namespace {

// ---- rules: RGB to HSV ----------------------------------------------------------------------------------------------

// The sector of a pixel is that of its greatest channel; the orders differ in which of equal ones it is.

/// Masks of the sectors around green and blue; the rest is red's.
struct Sectors {
    F32 green, blue;
};

/// Green if red is less; else blue before red.
struct GreenUnlessRed {
    MOX_INLINE static Sectors of(const Px<F32, 3>& p, F32 mx) {
        const F32 green = andNot(eq(p.c[0], mx), eq(p.c[1], mx));
        return {green, andNot(green, eq(p.c[2], mx))};
    }
};

struct BlueGreenRed {
    MOX_INLINE static Sectors of(const Px<F32, 3>& p, F32 mx) {
        const F32 blue = eq(p.c[2], mx);
        return {andNot(blue, eq(p.c[1], mx)), blue};
    }
};

/// A pixel's place in its sector: how far the channels beside the greatest one lie below it.
struct Hexcone {
    F32 mx, delta;
    F32 gray;           // mask
    Sectors sector;     //
    F32 before, after;  // mx less the channel before the greatest on the circle (blue is before red), and after it

    template <class Order>
    MOX_INLINE static Hexcone of(const Px<F32, 3>& p, Order) {
        const F32 r = p.c[0], g = p.c[1], b = p.c[2];
        const F32 mx = max(max(r, g), b), delta = mx - min(min(r, g), b);
        const Sectors is = Order::of(p, mx);
        const F32 before = select(is.green, r, select(is.blue, g, b));
        const F32 after = select(is.green, b, select(is.blue, r, g));
        return {mx, delta, eq(delta, zero<F32>()), is, mx - before, mx - after};
    }
};

/// In the tail the low bits are stored; only a rounding mode that rounds up leaves the range.
template <class Order, bool tail>
struct RGBToHSV_8u {
    MOX_INLINE Px<I32, 3> operator()(const Px<F32, 3>& p) const {
        const Hexcone hex = Hexcone::of(p, Order{});
        const F32 s = (rcp(hex.mx) * hex.delta) * splat<F32>(255.0f);
        const F32 q = rcp(hex.delta);
        const F32 base = select(hex.sector.green, splat<F32>(2.0f), hex.sector.blue & splat<F32>(4.0f));
        const F32 turn = (hex.before * q - hex.after * q + base) * splat<F32>(42.5f);
        const F32 h = turn + (lt(turn, zero<F32>()) & splat<F32>(255.0f));

        const auto sample = [&](F32 v) {
            const I32 rounded = nearest(andNot(hex.gray, v));
            return tail ? lowBits<Mox8u>(rounded) : rounded;
        };
        return {{sample(h), sample(s), nearest(hex.mx)}};
    }
};

struct RGBToHSV_16u {
    MOX_INLINE Px<I32, 3> operator()(const Px<F32, 3>& p) const {
        const auto f = [](float x) { return splat<F32>(x); };
        const Hexcone hex = Hexcone::of(p, BlueGreenRed{});
        const F32 s = hex.delta / hex.mx;
        const F32 q = f(1.0f) / hex.delta;
        const F32 before = hex.before * q, after = hex.after * q;
        const F32 h =
            select(hex.sector.blue, (f(4.0f) - after) + before, (before + (hex.sector.green & f(2.0f))) - after);
        const F32 turn = h + (lt(h, zero<F32>()) & f(6.0f));

        const auto sample = [&](F32 v) { return truncate(andNot(hex.gray, v) + f(0.5f)); };
        return {{sample((turn * f(65535.0f)) / f(6.0f)), sample(s * f(65535.0f)), truncate(hex.mx)}};
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
using innerRGBToHSV_8u_C3R =
    Split<Layout, Layout, 4, On<F32, RGBToHSV_8u<GreenUnlessRed, false>>, On<F32, RGBToHSV_8u<BlueGreenRed, true>>>;
template <class Layout>
using innerRGBToHSV_16u_C3R = AllColumns<Layout, Layout, On<F32, RGBToHSV_16u>>;
template <class Layout>
using innerHSVToRGB_C3R = AllColumns<Layout, Layout, HSVToRGB<typename Layout::Sample>>;

// ---- entries --------------------------------------------------------------------------------------------------------

template <class Kernel, class T>
MoxStatus convertHSV(const T* src, int32_t srcStep, T* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert(Kernel{}, src, wholeSamples<T>(srcStep), dst, wholeSamples<T>(dstStep), roiSize);
}

}  // namespace
}  // namespace q4

using namespace q4;

MoxStatus moxiRGBToHSV_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convertHSV<innerRGBToHSV_8u_C3R<C3<Mox8u>>>(src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiRGBToHSV_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convertHSV<innerRGBToHSV_8u_C3R<AC4<Mox8u>>>(src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiRGBToHSV_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convertHSV<innerRGBToHSV_16u_C3R<C3<Mox16u>>>(src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiRGBToHSV_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convertHSV<innerRGBToHSV_16u_C3R<AC4<Mox16u>>>(src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiHSVToRGB_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convertHSV<innerHSVToRGB_C3R<C3<Mox8u>>>(src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiHSVToRGB_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convertHSV<innerHSVToRGB_C3R<AC4<Mox8u>>>(src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiHSVToRGB_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convertHSV<innerHSVToRGB_C3R<C3<Mox16u>>>(src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiHSVToRGB_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convertHSV<innerHSVToRGB_C3R<AC4<Mox16u>>>(src, srcStep, dst, dstStep, roiSize);
}
