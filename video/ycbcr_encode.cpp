// RGB and BGR to subsampled YCbCr of BT.601, studio range: 4:2:2, 4:2:0 and 4:1:1.
#include "moxcc/ycbcr_encode.h"

#include "math/gamma_tables.h"
#include "video/encode.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

constexpr MatrixRow y16 = {{16843, 33030, 6423}}, cb16 = {{-9699, -19071, 28770}}, cr16 = {{28770, -24117, -4653}};
constexpr MatrixRow y15 = {{8422, 16515, 3212}};
constexpr MatrixRow y14 = {{4211, 8258, 1606}}, cb14 = {{-2425, -4768, 7193}}, cr14 = {{7193, -6029, -1163}};

using YL1 = FullPrecision<y16, 0x108000, 16>;
using YL2 = FullPrecision<y16, 0x100000, 16>;
using YL3 = RoundedTerms<y14, 7, 1056, 6>;
using YL4 = RoundedTerms<y14, 7, 1026, 6>;
using YL5 = TruncatedTerms<y15, 8, 2112, 7>;
using YL6 = RoundedTerms<y14, 7, 16 << 6, 6>;

// On the sums of two pixels.
using YC1 = CbCr<FullPrecision<cb16, 0x1010000, 17>, FullPrecision<cr16, 0x1010000, 17>>;
using YC2 = CbCr<FullPrecision<cb16, 0x1004000, 17>, FullPrecision<cr16, 0x1004000, 17>>;
using YC3 = CbCr<RoundedTerms<cb14, 6, 8224, 6>, RoundedTerms<cr14, 6, 8224, 6>>;
using YC4 = CbCr<FlooredTerms<cb16, 6, 16448, 7>, FlooredTerms<cr16, 6, 16448, 7>>;
using YC5 = CbCr<FullPrecision<cb16, 0x1010000, 17>, FullPrecision<cr16, 0x100FFFE, 17>>;
// On the sums of four pixels.
using YC6 = CbCr<FullPrecision<cb16, 0x2008000, 18>, FullPrecision<cr16, 0x2008000, 18>>;
using YC7 = CbCr<RoundedTerms<cb14, 5, 8194, 6>, RoundedTerms<cr14, 5, 8194, 6>>;
using YC8 = CbCr<TruncatedTerms<cb16, 5, 16400, 7>, TruncatedTerms<cr16, 5, 16400, 7>>;
using YC9 = CbCr<RoundedTerms<cb14, 5, 128 << 6, 6>, RoundedTerms<cr14, 5, 128 << 6, 6>>;

/// A pixel alone.
using YF1 = LumaChroma<YL1, CbCr<FullPrecision<cb16, 0x808000, 16>, FullPrecision<cr16, 0x808000, 16>>>;

// ---- rules of filtered chroma ---------------------------------------------------------------------------------------
//
// The chroma of a pair is that at its even pixel, filtered along the row by 1/4, 1/2, 1/4: the sum of an even term, the
// odd term of this pair and the odd term of the pair before. To the left of the row lies neutral chroma, whose term is
// 0.

/// One term of 16 bits for each pair.
template <MatrixRow row>
struct NarrowTerm {
    using Lanes = I16;
    static constexpr int vectors = 1;
    I16 v[1];
    template <class Pixels>
    MOX_INLINE explicit NarrowTerm(const Pixels& p) : v{RoundedTerms<row, 7, 0, 0>{}(p)} {}
};

/// One term of 32 bits for each pair.
template <MatrixRow row, int shift>
struct WideTerm {
    using Lanes = I32;
    static constexpr int vectors = 2;
    I32 v[2];
    template <class Pixels>
    MOX_INLINE explicit WideTerm(const Pixels& p) {
        const WideSum sum = wideSum<row>(wideSamples(p));
        v[0] = shr<shift>(sum.lo), v[1] = shr<shift>(sum.hi);
    }
};

/// One chroma sample for each pair of a block: (even + odd + odd before + offset) >> shift.
template <class EvenTerm, class OddTerm, int offset, int shift>
struct Filter {
    using Odd = OddTerm;
    using Lanes = typename Odd::Lanes;

    /// Takes a vector that ends with the odd term before the block, and leaves one that ends with the block's last.
    MOX_INLINE static U8 apply(const EvenPixels& evenPixels, const OddPixels& oddPixels, Lanes& before) {
        constexpr int last = Odd::vectors - 1, bytes = 16 - int(sizeof(typename Lanes::Sample));
        const EvenTerm even(evenPixels);
        const Odd odd(oddPixels);
        Lanes sum[last + 1];
        for (int i = 0; i <= last; ++i) {
            const Lanes previous = i == 0 ? lanesBefore(odd.v[last], before) : odd.v[i - 1];
            const Lanes oddBefore = alignBytes<bytes>(odd.v[i], previous);
            sum[i] = shr<shift>(even.v[i] + odd.v[i] + oddBefore + splat<Lanes>(offset));
        }
        before = odd.v[last];
        if constexpr (last == 0)
            return lowHalf(sum[0]);
        else
            return lowHalf(narrowI16(sum[0], sum[1]));
    }
};

/// Luma as ever, and filtered chroma. The rule runs along a row: it carries the odd terms from block to block.
template <class Luma, class Cb, class Cr>
struct Filtered {
    struct Before {
        typename Cb::Lanes cb = {}, cr = {};
    };
    Before& before;

    template <class D, int N>
    MOX_INLINE YccBlock<1, 2> apply(const Block<uint8_t, 3, N>& in) const {
        const EvenPixels even = {{in.c[0].v[0], in.c[1].v[0], in.c[2].v[0]}};
        const OddPixels odd = {{in.c[0].v[0], in.c[1].v[0], in.c[2].v[0]}};
        return {{inTurn(Luma{}(even), Luma{}(odd))},
                {Cb::apply(even, odd, before.cb), Cr::apply(even, odd, before.cr)}};
    }
};

constexpr MatrixRow cbOdd14 = {{-1212, -2384, 3596}}, crOdd14 = {{3596, -3015, -582}};
using FilteredTerms = Filtered<YL3, Filter<NarrowTerm<cb14>, NarrowTerm<cbOdd14>, 16448, 7>,
                               Filter<NarrowTerm<cr14>, NarrowTerm<crOdd14>, 16448, 7>>;

using FilteredFullPrecision = Filtered<YL1, Filter<WideTerm<cb16, 1>, WideTerm<cb16, 2>, 0x807FFF, 16>,
                                       Filter<WideTerm<cr16, 1>, WideTerm<cr16, 2>, 0x807FFF, 16>>;

// Of gamma-corrected samples; the weights are a little different.
using FilteredGamma = Filtered<
    FullPrecision<y15 * 2, 0x84000 * 2, 16>,
    Filter<WideTerm<MatrixRow{{-2426, -4769, 7193}}, 0>, WideTerm<MatrixRow{{-1213, -2385, 3596}}, 0>, 0x403FFF, 15>,
    Filter<WideTerm<MatrixRow{{7193, -6030, -1164}}, 0>, WideTerm<MatrixRow{{3596, -3015, -582}}, 0>, 0x403FFF, 15>>;

// ---- kernels --------------------------------------------------------------------------------------------------------

// Source, destination, columns below the limit and their rules, rules of the others, rules of a last odd pixel.

// 4:2:2
template <class Pixels, class Dst>
using innerRGBToYCbCr422 = Encode<Pixels, Dst, Passes<8>, LumaChroma<YL3, YC3>, LumaChroma<YL1, YC1, YL2>>;
template <class Pixels, class Dst>
using innerBGRToYCbCr422 = Encode<Pixels, Dst, Passes<8>, LumaChroma<YL3, YC3>, LumaChroma<YL1, YC2>>;
using myBGRToCbYCr422_8u_AC4C2R = Encode<BGRx, CbYCr422, Passes<8>, LumaChroma<YL5, YC4>, LumaChroma<YL1, YC5>, YF1>;

// 4:2:0
template <class Dst>
using ownBGRToYCbCr420_8u_C3P3R = Encode<BGR, Dst, Passes<8>, LumaChroma<YL3, YC7>, LumaChroma<YL1, YC6>>;
template <class Pixels, class Dst>
using ownToYCbCr420_8u_AC4P3R = Encode<Pixels, Dst, Passes<4>, LumaChroma<YL5, YC8>, LumaChroma<YL1, YC6>>;
template <class Pixels, class Dst>
using innerRGBToYCbCr420 = Encode<Pixels, Dst, Passes<8>, LumaChroma<YL4, YC7>, LumaChroma<YL1, YC6>>;

// 4:1:1
template <class Pixels, class Below>
struct Encode411 : Encode<Pixels, Planar411, Passes<16>, Below, LumaChroma<YL1, YC6>> {
    static constexpr MoxiSize warnsOutside = {4, 1};
};
using ownBGRToYCbCr411_8u_C3P3R = Encode411<BGR, LumaChroma<YL6, YC9>>;

/// Luma is written for the columns past the last whole cell too.
struct ownBGRToYCbCr411_8u_AC4P3R : Encode411<BGRx, LumaChroma<YL5, YC8>> {
    MOX_INLINE void row(const SrcRows<1>& src, const DstRows<3>& dst, ptrdiff_t width) const {
        Encode411::row(src, dst, width);
        span<Src, C1<Mox8u>>(src, {{dst.p[0]}}, width & -4, width, On<I16, PerChannel<YL1>>{});
    }
};

/// What the kernels of filtered chroma share.
template <class Pixels>
struct ToFilteredCbYCr422 {
    using Src = Pixels;
    using Dst = CbYCr422;

  protected:
    MOX_INLINE static void lastPixel(const SrcRows<1>& src, const DstRows<1>& dst, ptrdiff_t width) {
        span<Src, Dst>(src, dst, width & -2, width, Cells<2, YF1>{});
    }
};

/// The filter of the columns past the limit starts from the odd pixel before them, as the rule of the others has it.
struct ownRGBToCbYCr422_8u_C3C2R : ToFilteredCbYCr422<RGB> {
    MOX_INLINE void row(const SrcRows<1>& src, const DstRows<1>& dst, ptrdiff_t width) const {
        const ptrdiff_t limit = width & -8;
        FilteredTerms::Before terms;
        span<Src, Dst>(src, dst, 0, limit, FilteredTerms{terms});

        FilteredFullPrecision::Before sums;
        if (limit > 0) {
            const uint8_t* p = src.p[0] + Src::bytes(0, limit - 1);
            const Px<I16, 3> pixel = {{splat<I16>(p[0]), splat<I16>(p[1]), splat<I16>(p[2])}};
            sums.cb = shl<9>(widenLo(NarrowTerm<cbOdd14>(pixel).v[0]));
            sums.cr = shl<9>(widenLo(NarrowTerm<crOdd14>(pixel).v[0]));
        }
        span<Src, Dst>(src, dst, limit, width & -2, FilteredFullPrecision{sums});
        lastPixel(src, dst, width);
    }
};

/// Pixels that are read through the gamma table.
template <class Layout>
struct GammaCorrected : Layout {
    template <int N>
    MOX_INLINE static auto load(const SrcRows<Layout::rowPointers>& rows, ptrdiff_t x) {
        auto block = Layout::template load<N>(rows, x);
        for (auto& channel : block.c) channel.v[0] = lookUp(tableFwd8u, channel.v[0]);
        return block;
    }
};

struct myRGBToCbYCr422Gamma_8u_C3C2R : ToFilteredCbYCr422<GammaCorrected<RGB>> {
    MOX_INLINE void row(const SrcRows<1>& src, const DstRows<1>& dst, ptrdiff_t width) const {
        FilteredGamma::Before before;
        span<Src, Dst>(src, dst, 0, width & -2, FilteredGamma{before});
        lastPixel(src, dst, width);
    }
};

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

// clang-format off
template <> constexpr auto entry<moxiRGBToYCbCr422_8u_C3C2R>      = converts<innerRGBToYCbCr422<RGB, YCbCr422>>;
template <> constexpr auto entry<moxiRGBToYCrCb422_8u_C3C2R>      = converts<innerRGBToYCbCr422<RGB, YCrCb422>>;
template <> constexpr auto entry<moxiRGBToYCbCr422_8u_P3C2R>      = converts<innerRGBToYCbCr422<PlanarRGB, YCbCr422>>;
template <> constexpr auto entry<moxiRGBToYCrCb422_8u_P3C2R>      = converts<innerRGBToYCbCr422<PlanarRGB, YCrCb422>>;
template <> constexpr auto entry<moxiRGBToCbYCr422_8u_C3C2R>      = converts<ownRGBToCbYCr422_8u_C3C2R>;
template <> constexpr auto entry<moxiRGBToCbYCr422Gamma_8u_C3C2R> = converts<myRGBToCbYCr422Gamma_8u_C3C2R>;
template <> constexpr auto entry<moxiBGRToYCbCr422_8u_C3C2R> =
    converts<innerBGRToYCbCr422<BGR, YCbCr422>, AtLeast{2, 1}>;
template <> constexpr auto entry<moxiBGRToYCbCr422_8u_AC4C2R> =
    converts<innerBGRToYCbCr422<BGRx, YCbCr422>, AtLeast{2, 1}>;
template <> constexpr auto entry<moxiBGRToCbYCr422_8u_AC4C2R>     = converts<myBGRToCbYCr422_8u_AC4C2R>;
template <> constexpr auto entry<moxiRGBToYCbCr422_8u_C3P3R> =
    converts<innerBGRToYCbCr422<RGB, Planar422>, planesFirst, AtLeast{2, 1}>;
template <> constexpr auto entry<moxiBGRToYCbCr422_8u_C3P3R> =
    converts<innerBGRToYCbCr422<BGR, Planar422>, planesFirst, AtLeast{2, 1}>;
template <> constexpr auto entry<moxiBGRToYCbCr422_8u_AC4P3R> =
    converts<innerBGRToYCbCr422<BGRx, Planar422>, planesFirst, AtLeast{2, 1}>;

template <> constexpr auto entry<moxiRGBToYCbCr420_8u_C3P3R>  = converts<innerRGBToYCbCr420<RGB, Planar420>>;
template <> constexpr auto entry<moxiRGBToYCrCb420_8u_AC4P3R> =
    converts<ownToYCbCr420_8u_AC4P3R<RGBx, PlanarYCrCb420>, planesFirst, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiBGRToYCbCr420_8u_C3P3R> =
    converts<ownBGRToYCbCr420_8u_C3P3R<Planar420>, planesFirst, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiBGRToYCbCr420_8u_AC4P3R> =
    converts<ownToYCbCr420_8u_AC4P3R<BGRx, Planar420>, planesFirst, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiBGRToYCrCb420_8u_C3P3R> =
    converts<ownBGRToYCbCr420_8u_C3P3R<PlanarYCrCb420>, planesFirst, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiBGRToYCrCb420_8u_AC4P3R> =
    converts<ownToYCbCr420_8u_AC4P3R<BGRx, PlanarYCrCb420>, planesFirst, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiRGBToYCbCr420_8u_C3P2R>  = converts<innerRGBToYCbCr420<RGB, SemiPlanar420>>;
template <> constexpr auto entry<moxiRGBToYCbCr420_8u_C4P2R>  = converts<innerRGBToYCbCr420<RGBx, SemiPlanar420>>;
template <> constexpr auto entry<moxiBGRToYCbCr420_8u_C3P2R>  = converts<innerRGBToYCbCr420<BGR, SemiPlanar420>>;
template <> constexpr auto entry<moxiBGRToYCbCr420_8u_AC4P2R> = converts<innerRGBToYCbCr420<BGRx, SemiPlanar420>>;

template <> constexpr auto entry<moxiBGRToYCbCr411_8u_C3P3R> =
    converts<ownBGRToYCbCr411_8u_C3P3R, planesFirst, AtLeast{4, 1}>;
template <> constexpr auto entry<moxiBGRToYCbCr411_8u_AC4P3R> =
    converts<ownBGRToYCbCr411_8u_AC4P3R, planesFirst, AtLeast{4, 1}>;
// clang-format on

}  // namespace q4

#include "ycbcr_encode.inc"
