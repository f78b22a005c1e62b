// CIE 1976 L*u*v* with the D65 white, in single precision.
#include "moxcc/luv.h"

#include "frame/entry.h"
#include "models/cie.h"
#include "models/pow_luv.h"
#include "models/reciprocal.h"
#include "models/samples.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

// The white point u', v'.
constexpr float un = 0.197839f, vn = 0.468342f;
/// What is added to a value too near zero to divide by.
constexpr float guard = 9e-05f;
/// Up to this L, lightness is a straight line.
constexpr float darkL = 7.9996247f;

/// One factor for each of L, u and v.
struct Factors {
    float l, u, v;
};

/// How samples of a type carry RGB and LUV, and what the forward rules take from the depth.
template <class T>
struct Depth {
    static constexpr bool integer = true;
    static constexpr float top = 65535;
    static constexpr Factors toSamples = {655.35f, 185.12712f, 250.13359f};
    static constexpr Factors fromSamples = {0.0015259022f, 0.0054016937f, 0.003997864f};
    static constexpr float darkY = 580.378f;
    static constexpr const PowLuv& table = POW_LUV_128;
    static constexpr float series[] = {0.33333334f,   -0.11111111f, 0.061728396f,
                                       -0.041152265f, 0.030178327f, -0.023472032f};
};
template <>
struct Depth<Mox8u> {
    static constexpr bool integer = true;
    static constexpr float top = 255;
    static constexpr Factors toSamples = {2.55f, 0.720339f, 0.97328246f};
    static constexpr Factors fromSamples = {0.39215687f, 1.3882353f, 1.027451f};
    static constexpr float darkY = q4::darkY;
    static constexpr const PowLuv& table = POW_LUV;
    static constexpr float series[] = {0.33333334f, -0.11111111f, 0.061728396f, -0.030178327f};
};
template <>
struct Depth<Mox32f> {
    static constexpr bool integer = false;
    static constexpr float darkY = q4::darkY;
    static constexpr const PowLuv& table = POW_LUV_128;
    static constexpr float series[] = {0.33333334f,  -0.11111111f,  0.061728396f, -0.041152265f,
                                       0.030178327f, -0.023472032f, 0.01900117f,  -0.015834307f};
};

template <class T>
constexpr bool is8u = std::is_same_v<T, Mox8u>;
template <class T>
constexpr bool is16 = sizeof(T) == 2;
/// What a rule works on: integers come as such, since the bias of signed ones is exact there in any rounding mode.
template <class T>
using Lane = std::conditional_t<Depth<T>::integer, I32, F32>;

template <class T>
MOX_INLINE Px<F32, 3> asReal(const Px<Lane<T>, 3>& samples) {
    if constexpr (Depth<T>::integer)
        return unbiased<T>(samples);
    else
        return samples;
}

enum class To { truncated, nearest };

template <To how>
MOX_INLINE I32 rounded(F32 v) {
    return how == To::nearest ? nearest(v) : truncate(v);
}

/// Where the sum X + 15 Y + 3 Z, which u' and v' are divided by, is zero ...
enum class NoSum {
    countsAs3,  // it is 3
    byZ,        // not asked: where Z is zero, u' and v' are 0
    noChroma    // the samples of U and V are 0
};

/// What sets the columns of the forward kernels apart.
struct ForwardColumns {
    NoSum noSum;
    To index, l, uv;
    bool saturates;
};

//                                    zero sum              index          L              U and V        saturates
constexpr ForwardColumns body8u = {NoSum::countsAs3, To::truncated, To::nearest, To::nearest, true};
constexpr ForwardColumns tail8u = {NoSum::byZ, To::truncated, To::nearest, To::nearest, false};
constexpr ForwardColumns body16 = {NoSum::countsAs3, To::truncated, To::truncated, To::nearest, true};
constexpr ForwardColumns tail16 = {NoSum::noChroma, To::nearest, To::nearest, To::nearest, true};
constexpr ForwardColumns tail16uAC4 = {NoSum::noChroma, To::truncated, To::truncated, To::truncated, true};
constexpr ForwardColumns body32f = {NoSum::countsAs3, To::truncated, {}, {}, {}};
constexpr ForwardColumns tail32f = {NoSum::byZ, To::truncated, {}, {}, {}};

/// Samples of 16 bits stay on their scale up to the lightness.
template <class T, ForwardColumns columns>
struct RGBToLUV {
    using D = Depth<T>;

    MOX_INLINE auto operator()(const Px<Lane<T>, 3>& samples) const {
        Px<F32, 3> rgb = asReal<T>(samples);
        if constexpr (is8u<T>)
            for (F32& x : rgb.c) x = x * 0.003921569f;
        const auto [X, Y, Z] = (rgbToXyz * rgb).c;
        const F32 L = lightness(Y);

        F32 sum = (Z * 3 + Y * 15) + X;
        const F32 noSum = eq(sum, zero<F32>());
        if constexpr (columns.noSum == NoSum::countsAs3) sum = sum + (noSum & splat<F32>(3));
        const F32 reciprocal = rcp2(sum);
        F32 u1 = (X * 4) * reciprocal, v1 = (Y * 9) * reciprocal;
        if constexpr (columns.noSum == NoSum::byZ) {
            const F32 noZ = eq(Z, zero<F32>());
            u1 = andNot(noZ, u1), v1 = andNot(noZ, v1);
        }
        const F32 L13 = 13 * L;
        const F32 u = (u1 - un) * L13, v = (v1 - vn) * L13;

        if constexpr (D::integer) {
            F32 vSample = (v + 140) * D::toSamples.v;
            if constexpr (is16<T>) vSample = vSample + 0.5f;
            I32 uInt = rounded<columns.uv>((u + 134) * D::toSamples.u), vInt = rounded<columns.uv>(vSample);
            if constexpr (columns.noSum == NoSum::noChroma)
                uInt = andNot(as<I32>(noSum), uInt), vInt = andNot(as<I32>(noSum), vInt);
            return Px{stored(rounded<columns.l>(L * D::toSamples.l)), stored(uInt), stored(vInt)};
        } else {
            return Px{L, u, v};
        }
    }

  private:
    MOX_INLINE static F32 lightness(F32 Y) {
        const F32 y = is16<T> ? Y * 1.5259022e-05f : Y;
        const I32 k = is16<T> ? shr<9>(rounded<columns.index>(Y)) : rounded<columns.index>(Y * powLuvScale);
        return select(le(Y, splat<F32>(D::darkY)), y * darkSlope, cubeRoot(D::table, y, k, D::series) * 116 - 16);
    }
    MOX_INLINE static I32 stored(I32 v) { return columns.saturates ? v - splat<I32>(sampleBias<T>) : lowBits<T>(v); }
};

/// What sets the body columns of the backward kernels apart.
enum class Back {
    scaledXyz,  // X, Y, Z go up to the samples' top value; results are truncated
    scaledRgb   // the results are scaled to it, and converted to nearest
};

template <class T, Back back = Back::scaledXyz>
struct LUVToRGBBody {
    using D = Depth<T>;

    MOX_INLINE auto operator()(const Px<Lane<T>, 3>& samples) const {
        auto [l, u, v] = asReal<T>(samples).c;
        l = awayFromZero(l, le(l, splat<F32>(guard)));
        if constexpr (D::integer) {
            l = l * D::fromSamples.l;
            u = u * D::fromSamples.u - 134;
            v = v * D::fromSamples.v - 140;
        }
        const F32 q = reciprocal(13 * l);
        const F32 root = (l + 16) * 0.00862069f;
        F32 Y = select(le(l, splat<F32>(darkL)), l * 0.001107052f, root * (root * root));
        if constexpr (D::integer && back == Back::scaledXyz) Y = Y * D::top;

        F32 v1 = v * q + splat<F32>(vn);
        v1 = awayFromZero(v1, le(abs(v1), splat<F32>(1.1920929e-05f)));
        const F32 k = reciprocal(v1) * Y;
        const F32 X = (u * q + splat<F32>(un)) * (2.25f * k);
        const F32 Z = (k * 3 - 5 * Y) - 0.33333334f * X;
        const Px<F32, 3> rgb = xyzToRgb * Px{X, Y, Z};

        if constexpr (D::integer) {
            const auto stored = [](F32 x) {
                return back == Back::scaledRgb ? nearest(x * D::top) : truncate(x) - splat<I32>(sampleBias<T>);
            };
            return Px{stored(rgb.c[0]), stored(rgb.c[1]), stored(rgb.c[2])};
        } else {
            return rgb;
        }
    }

  private:
    MOX_INLINE static F32 reciprocal(F32 x) { return is8u<T> ? rcp(x) : rcp2(x); }
    MOX_INLINE static F32 awayFromZero(F32 x, F32 near) { return x + (near & splat<F32>(guard)); }
};

/// The last columns divide truly, sum in orders of their own, and leave black alone.
template <class T>
struct LUVToRGBTail {
    using D = Depth<T>;
    static constexpr float un2 = D::integer ? 0.19783941f : un;
    static constexpr float vn2 = D::integer ? 0.4683422f : vn;

    MOX_INLINE auto operator()(const Px<Lane<T>, 3>& samples) const {
        auto [l, u, v] = asReal<T>(samples).c;
        if constexpr (D::integer) {
            l = (l * 100) / D::top;
            u = (u * 354) / D::top - 134;
            v = (v * 262) / D::top - 140;
        }
        const F32 black = lt(l, splat<F32>(guard));
        const F32 root = (l + 16) / 116;
        F32 Y = select(le(splat<F32>(darkL), l), (root * root) * root, l / darkSlope);
        if constexpr (D::integer) Y = Y * D::top;

        const F32 l13 = 13 * l;
        F32 v1 = v / l13 + vn2;
        const F32 u1 = (u / l13 + un2) * 2.25f;
        if constexpr (!is8u<T>) {
            constexpr float limit = D::integer ? 1.1920929e-05f : 1.1920929e-07f;
            v1 = v1 + (lt(abs(v1), splat<F32>(limit)) & splat<F32>(guard));
        }
        const F32 k = Y / v1;
        const F32 X = u1 * k;
        const F32 Z = is8u<T> ? (k * 3 - X / 3) - 5 * Y : (k * 3 - 5 * Y) - X / 3;

        if constexpr (D::integer) {
            const F32 g = is8u<T> ? (-0.969256f * X + 0.5f) + 1.875991f * Y : (1.875991f * Y + 0.5f) - 0.969256f * X;
            const F32 r = is8u<T> ? (3.240479f * X + 0.5f) - 1.53715f * Y : (0.5f - 1.53715f * Y) + 3.240479f * X;
            const auto stored = [&](I32 x) {
                const I32 clamped = min(max(x, zero<I32>()), splat<I32>(int(D::top)));
                return andNot(as<I32>(black), clamped) - splat<I32>(sampleBias<T>);
            };
            return Px{stored(truncate(r - 0.498535f * Z)), stored(truncate(g + 0.041556f * Z)), stored(blue(X, Y, Z))};
        } else {
            const auto stored = [&](F32 x) { return andNot(black, clampUnit(x)); };
            return Px{stored((3.240479f * X - 1.53715f * Y) - 0.498535f * Z),
                      stored((1.875991f * Y - 0.969256f * X) + 0.041556f * Z),
                      stored((0.055648f * X - 0.204043f * Y) + 1.057311f * Z)};
        }
    }

  private:
    /// The one sum in double precision.
    MOX_INLINE static I32 blue(F32 X, F32 Y, F32 Z) {
        const F32 xy = 0.055648f * X - 0.204043f * Y;
        const auto sum = [](F64 a, F64 z) { return (a + splat<F64>(0.5)) + z * splat<F64>(1.057311); };
        return truncate(sum(widenLo(xy), widenLo(Z)), sum(widenHi(xy), widenHi(Z)));
    }
};

// ---- kernels: source, destination, columns of the first rule, first rule, rule of the rest --------------------------

template <class T, ForwardColumns columns>
using Forward = On<Lane<T>, RGBToLUV<T, columns>>;
template <class T, Back back = Back::scaledXyz>
using BackBody = On<Lane<T>, LUVToRGBBody<T, back>>;
template <class T>
using BackTail = On<Lane<T>, LUVToRGBTail<T>>;

template <class Src>
using innerRGBToLUV_8u_C3R = Split<Src, C3<Mox8u>, 4, Forward<Mox8u, body8u>, Forward<Mox8u, tail8u>>;
using innerRGBToLUV_8u_AC4R = AllColumns<AC4<Mox8u>, AC4<Mox8u>, Forward<Mox8u, tail8u>>;
template <class Layout, ForwardColumns tail, class T = typename Layout::Sample>
using RGBToLUV16 = Split<Layout, Layout, 4, Forward<T, body16>, Forward<T, tail>>;
template <class Src, class Dst>
using innerRGBToLUV_32f_C3R = Split<Src, Dst, 4, Forward<Mox32f, body32f>, Forward<Mox32f, tail32f>>;

template <class Dst>
using innerLUVToRGB_8u_C3R = Split<C3<Mox8u>, Dst, 4, BackBody<Mox8u, Back::scaledRgb>, BackTail<Mox8u>>;
template <class Layout, class T = typename Layout::Sample>
using LUVToRGB16 = Split<Layout, Layout, 4, BackBody<T>, BackTail<T>>;
using innerLUVToRGB_8u_AC4R = LUVToRGB16<AC4<Mox8u>>;
template <class Dst>
using innerLUVToRGB_32f_C3R = Split<C3<Mox32f>, Dst, 4, BackBody<Mox32f>, BackTail<Mox32f>>;
using innerLUVToRGB_32f_AC4R = AllColumns<AC4<Mox32f>, AC4<Mox32f>, BackTail<Mox32f>>;

// ---- entries --------------------------------------------------------------------------------------------------------

}  // namespace

// clang-format off
template <> constexpr auto entry<moxiRGBToLUV_8u_C3R>   = converts<innerRGBToLUV_8u_C3R<C3<Mox8u>>>;
template <> constexpr auto entry<moxiRGBToLUV_8u_AC4R>  = converts<innerRGBToLUV_8u_AC4R>;
template <> constexpr auto entry<moxiRGBToLUV_16u_C3R>  = converts<RGBToLUV16<C3<Mox16u>, tail16>, inSamples>;
template <> constexpr auto entry<moxiRGBToLUV_16u_AC4R> = converts<RGBToLUV16<AC4<Mox16u>, tail16uAC4>, inSamples>;
template <> constexpr auto entry<moxiRGBToLUV_16s_C3R>  = converts<RGBToLUV16<C3<Mox16s>, tail16>, inSamples>;
template <> constexpr auto entry<moxiRGBToLUV_16s_AC4R> = converts<RGBToLUV16<AC4<Mox16s>, tail16>, inSamples>;
template <> constexpr auto entry<moxiRGBToLUV_32f_C3R>  = converts<innerRGBToLUV_32f_C3R<C3<Mox32f>, C3<Mox32f>>>;
template <> constexpr auto entry<moxiRGBToLUV_32f_AC4R> = converts<innerRGBToLUV_32f_C3R<AC4<Mox32f>, AC4<Mox32f>>>;
template <> constexpr auto entry<moxiBGRToLUV_8u_C3R>   = converts<innerRGBToLUV_8u_C3R<Bgr<Mox8u>>>;
template <> constexpr auto entry<moxiBGRToLUV_32f_C3R>  = converts<innerRGBToLUV_32f_C3R<Bgr<Mox32f>, C3<Mox32f>>>;

template <> constexpr auto entry<moxiLUVToRGB_8u_C3R>   = converts<innerLUVToRGB_8u_C3R<C3<Mox8u>>>;
template <> constexpr auto entry<moxiLUVToRGB_8u_AC4R>  = converts<innerLUVToRGB_8u_AC4R>;
template <> constexpr auto entry<moxiLUVToRGB_16u_C3R>  = converts<LUVToRGB16<C3<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiLUVToRGB_16u_AC4R> = converts<LUVToRGB16<AC4<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiLUVToRGB_16s_C3R>  = converts<LUVToRGB16<C3<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiLUVToRGB_16s_AC4R> = converts<LUVToRGB16<AC4<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiLUVToRGB_32f_C3R>  = converts<innerLUVToRGB_32f_C3R<C3<Mox32f>>>;
template <> constexpr auto entry<moxiLUVToRGB_32f_AC4R> = converts<innerLUVToRGB_32f_AC4R, inSamples>;
template <> constexpr auto entry<moxiLUVToBGR_8u_C3R>   = converts<innerLUVToRGB_8u_C3R<Bgr<Mox8u>>>;
template <> constexpr auto entry<moxiLUVToBGR_32f_C3R>  = converts<innerLUVToRGB_32f_C3R<Bgr<Mox32f>>>;
// clang-format on

}  // namespace q4

#include "luv.inc"
