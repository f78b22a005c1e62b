// RGB and BGR to subsampled YUV, full range: 4:2:2 and 4:2:0.
#include "moxcc/yuv_encode.h"

#include "video/contiguous.h"
#include "video/encode.h"

namespace q4 {
namespace {

// ---- rules of full precision ----------------------------------------------------------------------------------------

/// Y, and the sums over the cell of B - Y and R - Y, each by one sum, then the two scaled. Weights, offsets and scales
/// are in units of 1/65536.
template <MatrixRow y, int yOffset, int uOffset, int vOffset, int uScale, int vScale, int shift>
struct Differences {
    template <class Pixels>
    MOX_INLINE static Px<I16, 1> terms(const Pixels& p) {
        return {{FullPrecision<y, yOffset, 16>{}(p)}};
    }
    MOX_INLINE static I16 luma(const Px<I16, 1>& terms) { return terms.c[0]; }
    template <class Sums>
    MOX_INLINE static Px<I16, 2> chroma(const Sums& colours, const Px<I16, 1>&) {
        constexpr MatrixRow less = y * -1;
        constexpr MatrixRow b = {{less.weight[0], less.weight[1], less.weight[2] + one16}};
        constexpr MatrixRow r = {{less.weight[0] + one16, less.weight[1], less.weight[2]}};
        return {{chromaOf<uScale>(FullPrecision<b, uOffset, 16>{}(colours)),
                 chromaOf<vScale>(FullPrecision<r, vOffset, 16>{}(colours))}};
    }

  private:
    template <int scale>
    MOX_INLINE static I16 chromaOf(I16 difference) {
        return FullPrecision<MatrixRow{{scale, 0, 0}}, 0, shift>{}(Px<I16, 3>{{difference}}) + splat<I16>(128);
    }
};

constexpr MatrixRow y16 = {{19595, 38470, 7471}}, y15 = {{9798, 19235, 3736}}, y14 = {{4899, 9617, 1868}};

using UP2 = Differences<y16, 0, 0xFFFF, 0xFFFF, 32244, 57475, 17>;
using UP6 = Differences<y16, half16, half16, half16, 32244, 57475, 17>;
using UO1 = Differences<y15 * 2, 0, 0, 0, 16121 * 2, 28737 * 2, 16>;
using UO2 = Differences<y15 * 2, 0, 0x3FFF * 2, 0x7FFF * 2, 16121 * 2, 28737 * 2, 16>;
using UO3 = Differences<y16, half16, half16, half16, 32244, 57475, 16>;
using UC2 = Differences<y14 * 4, 2 * 4, 0, 0, 8061, 14369, 16>;
using UC3 = Differences<y16, 0, 0x1FFFF, 0x1FFFF, 32244, 57475, 18>;

// ---- rules of 16 bits -----------------------------------------------------------------------------------------------
//
// Luma of a few fractional bits is the term of a pixel; chroma is the difference of the sums of colour and of luma.

/// U and V from the differences B - Y and R - Y, both scaled and then reduced by the same function.
template <class Scaled>
MOX_INLINE Px<I16, 2> scaledDifferences(I16 b, I16 r, I16 y, int uScale, int vScale, const Scaled& scaled) {
    return {{scaled(b - y, splat<I16>(int16_t(uScale))) + splat<I16>(128),
             scaled(r - y, splat<I16>(int16_t(vScale))) + splat<I16>(128)}};
}

/// On samples of ten bits, (x * 257) >> 6.
struct UP1 {
    template <class Pixels>
    MOX_INLINE static Px<I16, 3> terms(const Pixels& p) {
        Px<I16, 3> x;
        for (int c = 0; c < 3; ++c) x.c[c] = scaled<2>(p, c) + shr<6>(scaled<0>(p, c));
        return {{FlooredTerms<y15, 0, 0, 0>{}(x), x.c[0], x.c[2]}};
    }
    MOX_INLINE static I16 luma(const Px<I16, 3>& terms) { return shr<1>(terms.c[0]); }
    template <class Sums>
    MOX_INLINE static Px<I16, 2> chroma(const Sums&, const Px<I16, 3>& sums) {
        return scaledDifferences(shr<1>(sums.c[2]), shr<1>(sums.c[1]), sums.c[0], 16121, 28737,
                                 [](I16 d, I16 scale) { return shr<1>(mulHi(d, scale)); });
    }
};

/// Twice the luma as the sum of two truncated parts, and `added`.
template <int added>
struct TwoPartLuma {
    template <class Pixels>
    MOX_INLINE static Px<I16, 1> terms(const Pixels& p) {
        const WideSum redGreen = wideSum<MatrixRow{{9798, 19235, 0}}>(wideSamples(p));
        const I16 twice =
            narrowI16(shr<14>(redGreen.lo), shr<14>(redGreen.hi)) + mulHi(scaled<2>(p, 2), splat<I16>(3736));
        return {{twice + splat<I16>(added)}};
    }
    MOX_INLINE static I16 luma(const Px<I16, 1>& terms) { return shr<1>(terms.c[0]); }
    template <class Sums>
    MOX_INLINE static Px<I16, 2> chroma(const Sums& colours, const Px<I16, 1>& sums) {
        return scaledDifferences(scaled<0>(colours, 2), scaled<0>(colours, 0), shr<1>(sums.c[0]), 16121, 28737,
                                 [](I16 d, I16 scale) { return mulHi(d, scale); });
    }
};
using UP3 = TwoPartLuma<0>;
using UP5 = TwoPartLuma<1>;

/// Luma of 6 fractional bits, rounded. Over a cell of four pixels its sum takes 16 bits, half of it 15.
template <int pixels>
struct RoundedLuma {
    static constexpr int extra = pixels == 4 ? 1 : 0;
    template <class Pixels>
    MOX_INLINE static Px<I16, 1> terms(const Pixels& p) {
        return {{RoundedTerms<y14, 7, 0, 0>{}(p)}};
    }
    MOX_INLINE static I16 luma(const Px<I16, 1>& terms) { return shr<6>(terms.c[0]); }
    template <class Sums>
    MOX_INLINE static Px<I16, 2> chroma(const Sums& colours, const Px<I16, 1>& sums) {
        return scaledDifferences(scaled<6 - extra>(colours, 2), scaled<6 - extra>(colours, 0),
                                 as<I16>(shr<extra>(as<U16>(sums.c[0]))), 8061, 14369,
                                 [](I16 d, I16 scale) { return shr<6>(mulHiRound(d, scale)); });
    }
};
using UP4 = RoundedLuma<2>;
using UC1 = RoundedLuma<4>;

/// Twice the luma as the sum of truncated terms.
struct UC4 {
    template <class Pixels>
    MOX_INLINE static Px<I16, 1> terms(const Pixels& p) {
        return {{FlooredTerms<y15, 2, 0, 0>{}(p)}};
    }
    MOX_INLINE static I16 luma(const Px<I16, 1>& terms) { return shr<1>(terms.c[0]); }
    template <class Sums>
    MOX_INLINE static Px<I16, 2> chroma(const Sums& colours, const Px<I16, 1>& sums) {
        return scaledDifferences(shr<1>(scaled<0>(colours, 2)), shr<1>(scaled<0>(colours, 0)), shr<2>(sums.c[0]), 16121,
                                 28737, [](I16 d, I16 scale) { return mulHi(d, scale); });
    }
};

// ---- kernels --------------------------------------------------------------------------------------------------------

// Source, destination, columns below the limit and their rules, rules of the others, rules of a last odd pixel.

using innerRGBToYUV422_8u_P3R = Encode<PlanarRGB, Planar422, Passes<16>, UP1, UP2, UO1>;
using innerRGBToYUV422_8u_C3P3R = Encode<RGB, Planar422, Passes<16>, UP3, UP2, UO2>;
using inner_Q3_RGBToYUV422_8u_C3P3R = Encode<RGB, Planar422, Passes<16>, UP4, UP3, UO2>;
using innerRGBToYUV422_8u_C3C2R = Encode<RGB, YCbCr422, Passes<16>, UP5, UP6, UO3>;

using innerRGBToYUV420_8u_C3P3R = Encode<RGB, Planar420, Passes<8>, UC1, UC2>;
using innerRGBToYUV420_8u_P3R = Encode<PlanarRGB, Planar420, AllCells, UC3, UC3>;
using innerBGRToYUV420_8u_AC4P3R = Encode<BGRx, Planar420, Passes<16>, UC4, UC3>;

/// Other rules hold when all rows start on 16 bytes.
struct myRGBToYUV422_8u_C3P3R {
    using Src = RGB;
    using Dst = Planar422;
    void picture(const Image<const uint8_t, 1>& src, const Image<uint8_t, 3>& dst, MoxiSize size) const {
        uintptr_t bits = reinterpret_cast<uintptr_t>(src.base[0]) | uintptr_t(src.step[0]);
        for (int i = 0; i < 3; ++i) bits |= reinterpret_cast<uintptr_t>(dst.base[i]) | uintptr_t(dst.step[i]);
        if (bits % 16 == 0)
            eachRow(inner_Q3_RGBToYUV422_8u_C3P3R{}, src, dst, size);
        else
            eachRow(innerRGBToYUV422_8u_C3P3R{}, src, dst, size);
    }
};

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

// clang-format off
template <> constexpr auto entry<moxiRGBToYUV422_8u_C3C2R> = converts<innerRGBToYUV422_8u_C3C2R>;
template <> constexpr auto entry<moxiRGBToYUV422_8u_C3P3R> = converts<myRGBToYUV422_8u_C3P3R>;
template <> constexpr auto entry<moxiRGBToYUV422_8u_C3P3> = contiguous<entry<moxiRGBToYUV422_8u_C3P3R>, stepRGB, steps422, isOneRow, converts<innerRGBToYUV422_8u_C3P3R>>;
template <> constexpr auto entry<moxiRGBToYUV422_8u_P3R> = converts<innerRGBToYUV422_8u_P3R>;
template <> constexpr auto entry<moxiRGBToYUV422_8u_P3> = contiguous<entry<moxiRGBToYUV422_8u_P3R>, stepPlane, steps422, isOneRow>;

template <> constexpr auto entry<moxiRGBToYUV420_8u_C3P3R> = converts<innerRGBToYUV420_8u_C3P3R>;
template <> constexpr auto entry<moxiRGBToYUV420_8u_C3P3> = contiguous<entry<moxiRGBToYUV420_8u_C3P3R>, stepRGB, steps420>;
template <> constexpr auto entry<moxiRGBToYUV420_8u_P3R> = converts<innerRGBToYUV420_8u_P3R>;
template <> constexpr auto entry<moxiRGBToYUV420_8u_P3> = contiguous<entry<moxiRGBToYUV420_8u_P3R>, stepPlane, steps420>;
template <> constexpr auto entry<moxiBGRToYUV420_8u_AC4P3R> = converts<innerBGRToYUV420_8u_AC4P3R>;
// clang-format on

}  // namespace q4

#include "yuv_encode.inc"
