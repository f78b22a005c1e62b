// RGB and PhotoYCC: a luma and two colour differences, C1 of blue and C2 of red, with offsets of 156 and 137 on the
// 8-bit scale. The two directions have constants of their own and are no exact inverses.
#include "moxcc/ycc.h"

#include <bit>

#include "frame/entry.h"
#include "models/samples.h"

namespace q4 {
namespace {

// ---- rules: 8u, vector columns on 16 bits and last columns on 32 ----------------------------------------------------

MOX_INLINE I16 high(I16 x, int weight) { return mulHi(x, splat<I16>(int16_t(weight))); }
MOX_INLINE I16 high(U16 x, int weight) { return as<I16>(mulHi(x, splat<U16>(uint16_t(weight)))); }

struct EncodeVector8u {
    MOX_INLINE Px<I16, 3> operator()(const Px<U8p8, 3>& p) const {
        const auto sample = [&](int c) { return as<U16>(p.c[c]); };
        const I16 luma = high(sample(0), 4898) + high(sample(1), 9617) + high(sample(2), 1867);
        const auto difference = [&](int c) { return as<I16>(shr<2>(sample(c))) - luma; };
        return {{shr<2>(high(luma, 2921)), shr<2>(high(difference(2), 1789) + splat<I16>(624)),
                 shr<2>(high(difference(0), 2178) + splat<I16>(548))}};
    }
};

struct EncodeTail8u {
    MOX_INLINE Px<I32, 3> operator()(const Px<I32, 3>& p) const {
        const I32 luma = p.c[0] * splat<I32>(4898) + p.c[1] * splat<I32>(9617) + p.c[2] * splat<I32>(1867);
        const auto scaled = [](I32 x, int weight) { return shr<16>(shr<10>(x) * splat<I32>(weight)); };
        return {{scaled(luma, 2921), scaled(shl<14>(p.c[2]) - luma, 1789) + splat<I32>(156),
                 scaled(shl<14>(p.c[0]) - luma, 2178) + splat<I32>(137)}};
    }
};

struct DecodeVector8u {
    MOX_INLINE Px<I16, 3> operator()(const Px<I16, 3>& p) const {
        const I16 y = high(shl<8>(as<U16>(p.c[0])), 5563);
        const I16 c1 = high(shl<7>(p.c[1] - splat<I16>(156)), 18168);
        const I16 c2 = high(shl<7>(p.c[2] - splat<I16>(137)), 14921);
        const I16 g = adds(adds(shr<1>(y), high(c1, -6357)), high(c2, -16679));
        return {{shr<4>(y + c2), shr<3>(g), shr<4>(y + c1)}};
    }
};

struct DecodeTail8u {
    MOX_INLINE Px<I32, 3> operator()(const Px<I32, 3>& p) const {
        const I32 y = p.c[0] * splat<I32>(5564);
        const I32 c1 = p.c[1] * splat<I32>(9084) - splat<I32>(1417104);
        const I32 c2 = p.c[2] * splat<I32>(7460) - splat<I32>(1022020);
        const I32 g = (shl<4>(y) + shr<8>(c1) * splat<I32>(-794)) + shr<8>(c2) * splat<I32>(-2084);
        return {{shr<12>(y + c2), shr<16>(g), shr<12>(y + c1)}};
    }
};

// ---- rules: floats --------------------------------------------------------------------------------------------------

constexpr float scaleY = 0.7132668f, scaleC1 = 0.4368627f, scaleC2 = 0.5319216f, scaleC2Float = 0.53192f;
constexpr float gainY = 1.3584f, gainC1 = 2.2179f, gainC2 = 1.8215f;
constexpr float greenC1 = 0.194f, greenC2 = 0.509f;
constexpr float offsetC1 = 40092, offsetC2 = 35209;
constexpr float offsetC1Float = 0.6117647f, offsetC2Float = 0.5372549f;
constexpr float almostHalf = std::bit_cast<float>(0x3EFFFEB0);

struct Encoded {
    F32 y, c1, c2;
};
/// Luma, and the scaled differences before their offsets.
MOX_INLINE Encoded encode(const Px<F32, 3>& p, float redScale) {
    const F32 luma = (p.c[0] * 0.299f + p.c[1] * 0.587f) + p.c[2] * 0.114f;
    return {luma * scaleY, (p.c[2] - luma) * scaleC1, (p.c[0] - luma) * redScale};
}
/// From Y and the differences, all scaled.
MOX_INLINE Px<F32, 3> decode(F32 y, F32 c1, F32 c2) { return {{y + c2, (y - c1 * greenC1) - c2 * greenC2, y + c1}}; }

template <class T>
MOX_INLINE Px<I32, 3> biased(I32 a, I32 b, I32 c) {
    return {{a - splat<I32>(sampleBias<T>), b - splat<I32>(sampleBias<T>), c - splat<I32>(sampleBias<T>)}};
}
template <class T>
MOX_INLINE Px<I32, 3> lowBitsBiased(I32 a, I32 b, I32 c) {
    const Px<I32, 3> p = biased<T>(a, b, c);
    return {{lowBits<T>(p.c[0]), lowBits<T>(p.c[1]), lowBits<T>(p.c[2])}};
}

template <class T>
struct EncodeVector16 {
    MOX_INLINE Px<I32, 3> operator()(const Px<I32, 3>& p) const {
        const Encoded e = encode(unbiased<T>(p), scaleC2);
        return biased<T>(nearest(e.y), nearest(e.c1 + offsetC1), nearest(e.c2 + offsetC2));
    }
};
struct EncodeTail16s {
    MOX_INLINE Px<I32, 3> operator()(const Px<I32, 3>& p) const {
        const Encoded e = encode(unbiased<Mox16s>(p), scaleC2);
        return lowBitsBiased<Mox16s>(truncate(e.y + almostHalf), truncate(e.c1 + (offsetC1 + 0.5f)),
                                     truncate(e.c2 + (offsetC2 + 0.5f)));
    }
};
/// The last columns of 16u have one matrix for both steps.
struct EncodeTail16u {
    MOX_INLINE Px<I32, 3> operator()(const Px<I32, 3>& p) const {
        const F32 r = toF32(p.c[0]), g = toF32(p.c[1]), b = toF32(p.c[2]);
        return lowBitsBiased<Mox16u>(truncate(((r * 0.213267f + almostHalf) + g * 0.418688f) + b * 0.0813124f),
                                     truncate(((r * -0.130621f + (offsetC1 + 0.5f)) - g * 0.256437f) + b * 0.387058f),
                                     truncate(((r * 0.372876f + (offsetC2 + 0.5f)) - g * 0.312237f) - b * 0.0606389f));
    }
};

struct DecodeVector16u {
    MOX_INLINE Px<I32, 3> operator()(const Px<F32, 3>& p) const {
        const Px<F32, 3> rgb = decode(p.c[0] * gainY, (p.c[1] - offsetC1) * gainC1, (p.c[2] - offsetC2) * gainC2);
        return {{nearest(rgb.c[0]), nearest(rgb.c[1]), nearest(rgb.c[2])}};
    }
};
struct DecodeTail16u {
    MOX_INLINE Px<I32, 3> operator()(const Px<F32, 3>& p) const {
        const F32 y = p.c[0] * gainY + almostHalf, c1 = p.c[1] - offsetC1, c2 = p.c[2] - offsetC2;
        return {
            {truncate(c2 * gainC2 + y), truncate((y - c1 * 0.4302726f) - c2 * 0.92714345f), truncate(y + c1 * gainC1)}};
    }
};
struct Decode16s {
    MOX_INLINE Px<I32, 3> operator()(const Px<I32, 3>& p) const {
        const auto sample = [&](int c, int offset) { return toF32(p.c[c] - splat<I32>(offset)); };
        const Px<F32, 3> rgb =
            decode(sample(0, -32768) * gainY, sample(1, 40092 - 32768) * gainC1, sample(2, 35209 - 32768) * gainC2);
        return biased<Mox16s>(truncate(rgb.c[0]), truncate(rgb.c[1]), truncate(rgb.c[2]));
    }
};

struct Encode32f {
    MOX_INLINE Px<F32, 3> operator()(const Px<F32, 3>& p) const {
        const Encoded e = encode(p, scaleC2Float);
        return {{e.y, e.c1 + offsetC1Float, e.c2 + offsetC2Float}};
    }
};
struct Decode32f {
    MOX_INLINE Px<F32, 3> operator()(const Px<F32, 3>& p) const {
        Px<F32, 3> rgb = decode(p.c[0] * gainY, (p.c[1] - offsetC1Float) * gainC1, (p.c[2] - offsetC2Float) * gainC2);
        for (F32& v : rgb.c) v = clampUnit(v);
        return rgb;
    }
};

// ---- kernels --------------------------------------------------------------------------------------------------------

template <class L>
using innerRGBToYCC_8u_C3R = Split<L, L, group8u<L>, On<U8p8, EncodeVector8u>, On<I32, EncodeTail8u>>;
template <class L>
using innerYCCToRGB_8u_C3R = Split<L, L, group8u<L>, On<I16, DecodeVector8u>, On<I32, DecodeTail8u>>;
template <class L>
using innerRGBToYCC_16u_C3R = Split<L, L, 4, On<I32, EncodeVector16<Mox16u>>, On<I32, EncodeTail16u>>;
template <class L>
using innerYCCToRGB_16u_C3R = Split<L, L, 4, On<F32, DecodeVector16u>, On<F32, DecodeTail16u>>;
template <class L>
using innerRGBToYCC_16s_C3R = Split<L, L, 4, On<I32, EncodeVector16<Mox16s>>, On<I32, EncodeTail16s>>;
template <class L>
using innerYCCToRGB_16s_C3R = AllColumns<L, L, On<I32, Decode16s>>;
template <class L>
using innerRGBToYCC_32f_C3R = AllColumns<L, L, On<F32, Encode32f>>;
template <class L>
using innerYCCToRGB_32f_C3R = AllColumns<L, L, On<F32, Decode32f>>;

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

// clang-format off
template <> constexpr auto entry<moxiRGBToYCC_8u_C3R>   = converts<innerRGBToYCC_8u_C3R<C3<Mox8u>>>;
template <> constexpr auto entry<moxiRGBToYCC_8u_AC4R>  = converts<innerRGBToYCC_8u_C3R<AC4<Mox8u>>>;
template <> constexpr auto entry<moxiRGBToYCC_16u_C3R>  = converts<innerRGBToYCC_16u_C3R<C3<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiRGBToYCC_16u_AC4R> = converts<innerRGBToYCC_16u_C3R<AC4<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiRGBToYCC_16s_C3R>  = converts<innerRGBToYCC_16s_C3R<C3<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiRGBToYCC_16s_AC4R> = converts<innerRGBToYCC_16s_C3R<AC4<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiRGBToYCC_32f_C3R>  = converts<innerRGBToYCC_32f_C3R<C3<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiRGBToYCC_32f_AC4R> = converts<innerRGBToYCC_32f_C3R<AC4<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiYCCToRGB_8u_C3R>   = converts<innerYCCToRGB_8u_C3R<C3<Mox8u>>>;
template <> constexpr auto entry<moxiYCCToRGB_8u_AC4R>  = converts<innerYCCToRGB_8u_C3R<AC4<Mox8u>>>;
template <> constexpr auto entry<moxiYCCToRGB_16u_C3R>  = converts<innerYCCToRGB_16u_C3R<C3<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiYCCToRGB_16u_AC4R> = converts<innerYCCToRGB_16u_C3R<AC4<Mox16u>>, inSamples>;
template <> constexpr auto entry<moxiYCCToRGB_16s_C3R>  = converts<innerYCCToRGB_16s_C3R<C3<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiYCCToRGB_16s_AC4R> = converts<innerYCCToRGB_16s_C3R<AC4<Mox16s>>, inSamples>;
template <> constexpr auto entry<moxiYCCToRGB_32f_C3R>  = converts<innerYCCToRGB_32f_C3R<C3<Mox32f>>, inSamples>;
template <> constexpr auto entry<moxiYCCToRGB_32f_AC4R> = converts<innerYCCToRGB_32f_C3R<AC4<Mox32f>>, inSamples>;
// clang-format on

}  // namespace q4

#include "ycc.inc"
