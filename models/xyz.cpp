// RGB and CIE XYZ: one matrix each way.
#include "moxcc/xyz.h"

#include "frame/entry.h"
#include "models/cie.h"
#include "models/samples.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

/// A matrix in fixed point; results are rounded down and saturated.
struct FixedMatrix {
    int32_t row[3][3];
    int scale;
};
// The vector columns' matrices are made for 16-bit lanes and follow no rounding of the others.
constexpr FixedMatrix encodeVector = {{{13515, 11717, 5912}, {6969, 23434, 2365}, {634, 3906, 31137}}, 15};
constexpr FixedMatrix encodeTail = {{{27030, 23434, 11824}, {13937, 46868, 4729}, {1267, 7811, 62274}}, 16};
constexpr FixedMatrix decodeVector = {{{26546, -12591, -4083}, {-7939, 15368, 340}, {456, -1671, 8661}}, 13};
constexpr FixedMatrix decodeTail = {{{212368, -100738, -32671}, {-63521, 122944, 2723}, {3646, -13372, 69291}}, 16};

/// Weights of 16 bits, in pairs.
template <FixedMatrix m>
struct Multiply16 {
    MOX_INLINE Px<I16, 3> operator()(const Px<I16, 3>& p) const {
        const I16 lo01 = unpackLo<16>(p.c[0], p.c[1]), lo2 = unpackLo<16>(p.c[2], zero<I16>());
        const I16 hi01 = unpackHi<16>(p.c[0], p.c[1]), hi2 = unpackHi<16>(p.c[2], zero<I16>());
        const auto sum = [&](const int32_t(&w)[3]) {
            const I16 w01 = unpackLo<16>(splat<I16>(int16_t(w[0])), splat<I16>(int16_t(w[1]))),
                      w2 = splat<I16>(int16_t(w[2]));
            return narrowI16(shr<m.scale>(dotPairs(lo01, w01) + dotPairs(lo2, w2)),
                             shr<m.scale>(dotPairs(hi01, w01) + dotPairs(hi2, w2)));
        };
        return {{sum(m.row[0]), sum(m.row[1]), sum(m.row[2])}};
    }
};

template <FixedMatrix m>
struct Multiply32 {
    MOX_INLINE Px<I32, 3> operator()(const Px<I32, 3>& p) const {
        const auto sum = [&](const int32_t(&w)[3]) {
            return shr<m.scale>(p.c[0] * splat<I32>(w[0]) + p.c[1] * splat<I32>(w[1]) + p.c[2] * splat<I32>(w[2]));
        };
        return {{sum(m.row[0]), sum(m.row[1]), sum(m.row[2])}};
    }
};

/// Samples of 16 bits, 0 to 65535 or biased to that; results are truncated and saturated.
template <class T, const CieMatrix& m>
struct Multiply16Bit {
    MOX_INLINE Px<I32, 3> operator()(const Px<I32, 3>& p) const {
        const Px<F32, 3> f = m * unbiased<T>(p);
        Px<I32, 3> out;
        for (int c = 0; c < 3; ++c) out.c[c] = truncate(f.c[c]) - splat<I32>(sampleBias<T>);
        return out;
    }
};

/// Z passes 1 for bright colours and is limited; X and Y are stored as they are.
struct Encode32f {
    MOX_INLINE Px<F32, 3> operator()(const Px<F32, 3>& p) const {
        const Px<F32, 3> xyz = rgbToXyz * p;
        return {{xyz.c[0], xyz.c[1], clampUnit(xyz.c[2])}};
    }
};

/// Negative weights subtract, which rounds otherwise than adding a negative product when the mode is not to nearest.
struct Decode32f {
    MOX_INLINE Px<F32, 3> operator()(const Px<F32, 3>& p) const {
        const auto times = [&](float w, int c) { return splat<F32>(w) * p.c[c]; };
        return {{clampUnit((times(3.240479f, 0) - times(1.53715f, 1)) - times(0.498535f, 2)),
                 clampUnit((times(-0.969256f, 0) + times(1.875991f, 1)) + times(0.041556f, 2)),
                 clampUnit((times(0.055648f, 0) - times(0.204043f, 1)) + times(1.057311f, 2))}};
    }
};

// ---- kernels --------------------------------------------------------------------------------------------------------

template <class L>
using innerRGBToXYZ_8u_C3R =
    Split<L, L, group8u<L>, On<I16, Multiply16<encodeVector>>, On<I32, Multiply32<encodeTail>>>;
template <class L>
using innerXYZToRGB_8u_C3R =
    Split<L, L, group8u<L>, On<I16, Multiply16<decodeVector>>, On<I32, Multiply32<decodeTail>>>;
template <class L, class T = typename L::Sample>
using innerRGBToXYZ_16u_C3R = AllColumns<L, L, On<I32, Multiply16Bit<T, rgbToXyz>>>;
template <class L, class T = typename L::Sample>
using innerXYZToRGB_16u_C3R = AllColumns<L, L, On<I32, Multiply16Bit<T, xyzToRgb>>>;
template <class L>
using innerRGBToXYZ_32f_C3R = AllColumns<L, L, On<F32, Encode32f>>;
template <class L>
using innerXYZToRGB_32f_C3R = AllColumns<L, L, On<F32, Decode32f>>;

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

// clang-format off
template <> constexpr auto entry<moxiRGBToXYZ_8u_C3R>   = converts<innerRGBToXYZ_8u_C3R<C3<Mox8u>>>;
template <> constexpr auto entry<moxiRGBToXYZ_8u_AC4R>  = converts<innerRGBToXYZ_8u_C3R<AC4<Mox8u>>>;
template <> constexpr auto entry<moxiRGBToXYZ_16u_C3R>  = converts<innerRGBToXYZ_16u_C3R<C3<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiRGBToXYZ_16u_AC4R> = converts<innerRGBToXYZ_16u_C3R<AC4<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiRGBToXYZ_16s_C3R>  = converts<innerRGBToXYZ_16u_C3R<C3<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiRGBToXYZ_16s_AC4R> = converts<innerRGBToXYZ_16u_C3R<AC4<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiRGBToXYZ_32f_C3R>  = converts<innerRGBToXYZ_32f_C3R<C3<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiRGBToXYZ_32f_AC4R> = converts<innerRGBToXYZ_32f_C3R<AC4<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiXYZToRGB_8u_C3R>   = converts<innerXYZToRGB_8u_C3R<C3<Mox8u>>>;
template <> constexpr auto entry<moxiXYZToRGB_8u_AC4R>  = converts<innerXYZToRGB_8u_C3R<AC4<Mox8u>>>;
template <> constexpr auto entry<moxiXYZToRGB_16u_C3R>  = converts<innerXYZToRGB_16u_C3R<C3<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiXYZToRGB_16u_AC4R> = converts<innerXYZToRGB_16u_C3R<AC4<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiXYZToRGB_16s_C3R>  = converts<innerXYZToRGB_16u_C3R<C3<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiXYZToRGB_16s_AC4R> = converts<innerXYZToRGB_16u_C3R<AC4<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiXYZToRGB_32f_C3R>  = converts<innerXYZToRGB_32f_C3R<C3<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiXYZToRGB_32f_AC4R> = converts<innerXYZToRGB_32f_C3R<AC4<Mox32f>>, inSamples>;
// clang-format on

}  // namespace q4

#include "xyz.inc"
