// CIE 1976 L*a*b* with the D65 white, in single precision, and in double for the 64f forms.
#include "moxcc/lab.h"

#include "frame/entry.h"
#include "math/cbrt.h"
#include "models/cie.h"
#include "models/pow_luv.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

constexpr float Xn = 0.950456f, Zn = 1.0887539f;
constexpr float darkRise = 7.787f;  // of f, up to the dark Y
// To nearest for either precision: as constants of its type, since the caller's mode would round a conversion.
template <class R>
struct Constants {
    static constexpr R perXn = R(1.0521265327391165), perZn = R(0.9184811767477967);
    static constexpr R darkStart = R(0.13793103448275862);  // 16 / 116
    static constexpr R per116 = R(0.008620689655172414), per200 = R(0.005), per500 = R(0.002);
};

/// One factor for each of X, Y and Z.
struct Factors {
    float x, y, z;
};
template <class V>
MOX_INLINE Px<V, 3> scaled(const Px<V, 3>& xyz, const Factors& by) {
    return {{xyz.c[0] * splat<V>(by.x), xyz.c[1] * splat<V>(by.y), xyz.c[2] * splat<V>(by.z)}};
}
/// From and to X, Y, Z for RGB of 0 to 255.
constexpr Factors from255 = {0.0041259914f, 0.003921569f, 0.0036018905f};
constexpr Factors to255 = {242.366f, 255, 277.632f};

/// The forms' cube roots differ in the length and the last digits of their series.
template <class D>
constexpr float rootSeries[] = {0.33333334f,  -0.11111111f,  0.061728396f, -0.041152265f,
                                0.030178327f, -0.023472032f, 0.01900117f,  -0.015834307f};
template <>
constexpr float rootSeries<Mox16u>[] = {0.33333334f,  -0.11111111f,  0.061728396f, -0.041152265f,
                                        0.030178327f, -0.023472032f, 0.0190012f,   -0.0158343f};
template <>
constexpr float rootSeries<Mox8u>[] = {0.33333334f, -0.11111111f, 0.061728396f, -0.041152265f};

template <class D>
MOX_INLINE F32 root(F32 t) {
    return cubeRoot(POW_LUV, t, truncate(t * splat<F32>(powLuvScale)), rootSeries<D>);
}
/// Where the result counts, t is above the dark Y.
template <class D>
MOX_INLINE F64 root(F64 t) {
    return _my_cbrt53_pd(max(t, splat<F64>(darkY)));
}

/// The differences fx - fy and fy - fz take the place of a and b, which are 500 and 200 times as large.
template <class D, class V>
MOX_INLINE Px<V, 3> lightnessAndDifferences(const Px<V, 3>& xyz) {
    using R = Constants<typename V::Sample>;
    const V dark = splat<V>(darkY), Y = xyz.c[1];
    const auto f = [&](V t) {
        return select(le(t, dark), splat<V>(darkRise) * t + splat<V>(R::darkStart), root<D>(t));
    };
    const V fx = f(xyz.c[0]), fy = f(Y), fz = f(xyz.c[2]);
    const V L = select(le(Y, dark), splat<V>(darkSlope) * Y, splat<V>(116) * fy - splat<V>(16));
    return {{L, fx - fy, fy - fz}};
}

/// 32f and 64f.
template <class V>
struct RGBToLab {
    MOX_INLINE Px<V, 3> operator()(const Px<V, 3>& rgb) const {
        using R = Constants<typename V::Sample>;
        Px<V, 3> xyz = rgbToXyz * rgb;
        xyz.c[0] = xyz.c[0] * splat<V>(R::perXn), xyz.c[2] = xyz.c[2] * splat<V>(R::perZn);
        const Px<V, 3> lab = lightnessAndDifferences<typename V::Sample>(xyz);
        return {{lab.c[0], splat<V>(500) * lab.c[1], splat<V>(200) * lab.c[2]}};
    }
};

enum class Stored { saturated, lowBits };

/// 8-bit RGB to Lab samples of type D.
template <class D, Stored how>
struct RGBToLabSamples {
    MOX_INLINE Px<I32, 3> operator()(const Px<F32, 3>& rgb) const {
        const auto [L, xy, yz] = lightnessAndDifferences<D>(scaled(rgbToXyz * rgb, from255)).c;
        F32 a = xy * splat<F32>(500) + splat<F32>(128), b = yz * splat<F32>(200) + splat<F32>(128);
        if constexpr (sizeof(D) == 2) a = a * splat<F32>(255), b = b * splat<F32>(255);
        return Px{stored(L * splat<F32>(sizeof(D) == 2 ? 655.35f : 2.55f)), stored(a), stored(b)};
    }

  private:
    MOX_INLINE static I32 stored(F32 v) { return how == Stored::saturated ? nearest(v) : lowBits<D>(nearest(v)); }
};

/// The cubes that X, Y and Z are proportional to: there is no straight part on the way back.
template <class V>
MOX_INLINE Px<V, 3> cubes(V L, V a, V b) {
    using R = Constants<typename V::Sample>;
    const V p = (L + splat<V>(16)) * splat<V>(R::per116);
    const V q = p + a * splat<V>(R::per500), t = p - b * splat<V>(R::per200);
    return {{(q * q) * q, (p * p) * p, (t * t) * t}};
}

/// 32f and 64f.
template <class V>
struct LabToRGB {
    MOX_INLINE Px<V, 3> operator()(const Px<V, 3>& lab) const {
        Px<V, 3> xyz = cubes(lab.c[0], lab.c[1], lab.c[2]);
        xyz.c[0] = xyz.c[0] * splat<V>(Xn), xyz.c[2] = xyz.c[2] * splat<V>(Zn);
        return xyzToRgb * xyz;
    }
};

/// Lab samples of type S to 8-bit RGB.
template <class S>
struct LabSamplesToRGB {
    MOX_INLINE Px<I32, 3> operator()(const Px<F32, 3>& lab) const {
        const F32 L = lab.c[0] * splat<F32>(sizeof(S) == 2 ? 0.0015259022f : 0.39215687f);
        const Px<F32, 3> rgb = xyzToRgb * scaled(cubes(L, chroma(lab.c[1]), chroma(lab.c[2])), to255);
        return Px{nearest(rgb.c[0]), nearest(rgb.c[1]), nearest(rgb.c[2])};
    }

  private:
    MOX_INLINE static F32 chroma(F32 sample) {
        if constexpr (sizeof(S) == 2) sample = sample * splat<F32>(0.003921569f);
        return sample - splat<F32>(128);
    }
};

// ---- kernels: source, destination, columns of the first rule, first rule, rule of the rest --------------------------

template <class D, Stored how>
using ForwardSamples = On<F32, RGBToLabSamples<D, how>>;
template <class T, template <class> class Rule>
using Float = On<Vec<T>, Rule<Vec<T>>>;

template <class Src, class Dst, class D = typename Dst::Sample>
using ToLab8u = Split<Src, Dst, 4, ForwardSamples<D, Stored::saturated>, ForwardSamples<D, Stored::lowBits>>;
using innerBGRToLab_8u16u_C3R = ToLab8u<Bgr<Mox8u>, C3<Mox16u>>;
template <class Src>
using ToLab32f = AllColumns<Src, C3<Mox32f>, Float<Mox32f, RGBToLab>>;
template <class T>
using innerRGBToLab_P3R = AllColumns<P3<T>, P3<T>, Float<T, RGBToLab>>;

template <class Src, class Dst>
using FromLab8u = AllColumns<Src, Dst, On<F32, LabSamplesToRGB<typename Src::Sample>>>;
using innerLabToBGR_16u8u_C3R = FromLab8u<C3<Mox16u>, Bgr<Mox8u>>;
template <class Dst>
using FromLab32f = AllColumns<C3<Mox32f>, Dst, Float<Mox32f, LabToRGB>>;
template <class T>
using innerLabToRGB_P3R = AllColumns<P3<T>, P3<T>, Float<T, LabToRGB>>;

// ---- entries --------------------------------------------------------------------------------------------------------

constexpr Order allPointersFirst = {{Test::pointers, Test::stepArrays, Test::planes, Test::size}};

}  // namespace

// clang-format off
template <> constexpr auto entry<moxiRGBToLab_8u_C3R>    = converts<ToLab8u<C3<Mox8u>, C3<Mox8u>>>;
template <> constexpr auto entry<moxiRGBToLab_32f_C3R>   = converts<ToLab32f<C3<Mox32f>>>;
template <> constexpr auto entry<moxiBGRToLab_8u_C3R>    = converts<ToLab8u<Bgr<Mox8u>, C3<Mox8u>>>;
template <> constexpr auto entry<moxiBGRToLab_32f_C3R>   = converts<ToLab32f<Bgr<Mox32f>>>;
template <> constexpr auto entry<moxiBGRToLab_8u16u_C3R> = converts<innerBGRToLab_8u16u_C3R>;
template <> constexpr auto entry<moxiLabToRGB_8u_C3R>    = converts<FromLab8u<C3<Mox8u>, C3<Mox8u>>>;
template <> constexpr auto entry<moxiLabToRGB_32f_C3R>   = converts<FromLab32f<C3<Mox32f>>>;
template <> constexpr auto entry<moxiLabToBGR_8u_C3R>    = converts<FromLab8u<C3<Mox8u>, Bgr<Mox8u>>>;
template <> constexpr auto entry<moxiLabToBGR_32f_C3R>   = converts<FromLab32f<Bgr<Mox32f>>>;
template <> constexpr auto entry<moxiLabToBGR_16u8u_C3R> = converts<innerLabToBGR_16u8u_C3R>;

template <> constexpr auto entry<moxiRGBToLab_32f_P3R>   = converts<innerRGBToLab_P3R<Mox32f>, allPointersFirst>;
template <> constexpr auto entry<moxiRGBToLab_32f_P3R_L> = converts<innerRGBToLab_P3R<Mox32f>, allPointersFirst>;
template <> constexpr auto entry<moxiRGBToLab_64f_P3R>   = converts<innerRGBToLab_P3R<Mox64f>, allPointersFirst>;
template <> constexpr auto entry<moxiRGBToLab_64f_P3R_L> = converts<innerRGBToLab_P3R<Mox64f>, allPointersFirst>;
template <> constexpr auto entry<moxiLabToRGB_32f_P3R>   = converts<innerLabToRGB_P3R<Mox32f>, allPointersFirst>;
template <> constexpr auto entry<moxiLabToRGB_32f_P3R_L> = converts<innerLabToRGB_P3R<Mox32f>, allPointersFirst>;
template <> constexpr auto entry<moxiLabToRGB_64f_P3R>   = converts<innerLabToRGB_P3R<Mox64f>, allPointersFirst>;
template <> constexpr auto entry<moxiLabToRGB_64f_P3R_L> = converts<innerLabToRGB_P3R<Mox64f>, allPointersFirst>;
// clang-format on

}  // namespace q4

#include "lab.inc"
