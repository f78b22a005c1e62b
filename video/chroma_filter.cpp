// 4:2:0 with filters: chroma rows interpolated with four taps, frames softened against interlace flicker slice by
// slice, and chroma columns interpolated on the way to BGR.
#include "moxcc/chroma_filter.h"

#include <algorithm>

#include "video/sampling.h"

namespace q4 {
namespace {

using ChromaPlanes = Planar<Mox8u, 2>;
using ChromaPairs = Interleaved<Mox8u, 2>;

// ---- four taps ------------------------------------------------------------------------------------------------------

/// A chroma row, and the row between it and the next, from the rows -1 to 2 around.
struct FourTaps {
    MOX_INLINE Px<U8, 2> operator()(const Px<U8, 4>& rows) const {
        const auto between = [&](auto widen) {
            const I16 inner = as<I16>(widen(rows.c[1]) + widen(rows.c[2]));
            const I16 outer = as<I16>(widen(rows.c[0]) + widen(rows.c[3]));
            return shr<4>(inner * splat<I16>(9) - outer + splat<I16>(8));
        };
        return {
            {rows.c[1], narrowU8(between([](U8 v) { return widenLo(v); }), between([](U8 v) { return widenHi(v); }))}};
    }
};

/// Rows beyond the first and the last count as these.
void filterPlane(const Image<const uint8_t, 1>& src, const Image<uint8_t, 1>& dst, MoxiSize size) {
    const AllColumns<Planar<Mox8u, 4>, Planar<Mox8u, 2>, On<U8, FourTaps>> kernel;
    for (ptrdiff_t k = 0; k < size.height; ++k) {
        const auto row = [&](ptrdiff_t y) { return src.row(std::clamp<ptrdiff_t>(y, 0, size.height - 1)).p[0]; };
        kernel.row({{row(k - 1), row(k), row(k + 1), row(k + 2)}}, join(dst.row(2 * k), dst.row(2 * k + 1)),
                   size.width);
    }
}

/// Twice as many chroma rows. Pairs are split into the even rows, which are then filtered.
template <class Src_>
struct DoubleChromaRows {
    using Src = Src_;
    using Dst = PlanarIn<S422>;
    void picture(const Image<const uint8_t, Src::planes>& src, const Image<uint8_t, 3>& dst, MoxiSize size) const {
        const MoxiSize whole = {size.width & -2, size.height & -8}, chroma = {whole.width / 2, whole.height / 2};
        copyPlane(lumaOf(src), lumaOf(dst), whole);
        if constexpr (Src::planes == 2)
            eachRow(AllColumns<ChromaPairs, ChromaPlanes, Unchanged>{}, chromaOf(src), evenRows(chromaOf(dst)), chroma);
        for (int i = 1; i < 3; ++i) {
            if constexpr (Src::planes == 2)
                filterPlane(evenRows(dst.plane(i)), dst.plane(i), chroma);
            else
                filterPlane(src.plane(i), dst.plane(i), chroma);
        }
    }
};

// ---- rules of slices ------------------------------------------------------------------------------------------------
//
// A luma row becomes a mean of itself, at weight 1/2, and the rows above and below. Where it has no neighbour on one
// side, it is its own neighbour.

struct V1 {
    MOX_INLINE static U8 luma(U8 above, U8 here, U8 below) { return avg(avg(above, here), avg(below, here)); }
};
struct V2 {
    MOX_INLINE static U8 luma(U8 above, U8 here, U8 below) { return avg(here, avg(above, below)); }
};
/// The whole sum rounded down.
struct F {
    MOX_INLINE static U8 luma(U8 above, U8 here, U8 below) { return avgDown(avgDown(above, below), here); }
};
/// That and 1, limited to 255.
struct F4 {
    MOX_INLINE static U8 luma(U8 above, U8 here, U8 below) { return adds(F::luma(above, here, below), splat<U8>(1)); }
};

template <class Rule>
struct LumaRow {
    MOX_INLINE Px<U8, 1> operator()(const Px<U8, 3>& r) const { return {{Rule::luma(r.c[0], r.c[1], r.c[2])}}; }
};
template <class Rule>
struct ChromaRow {
    template <class D, int N>
    MOX_INLINE Block<D, 2, N> apply(const RowPair<Block<D, 2, N>>& in) const {
        Block<D, 2, N> out;
        for (int c = 0; c < 2; ++c) out.c[c].v[0] = Rule::mean(in.row[0].c[c].v[0], in.row[1].c[c].v[0]);
        return out;
    }
};
/// Three luma rows and two rows of chroma pairs to the two bytes of each packed pixel.
template <class Luma, class Chroma>
struct PackedRow {
    MOX_INLINE Px<U8, 2> operator()(const Px<U8, 5>& r) const {
        return {{Luma::luma(r.c[0], r.c[1], r.c[2]), Chroma::mean(r.c[3], r.c[4])}};
    }
};

// ---- slices ---------------------------------------------------------------------------------------------------------

/// The rows of a slice. Output runs behind input, since each row needs the one below it: a slice leaves its last two
/// rows to the next, and writes those of the slice before.
struct Slice {
    bool top, bottom;  // of the picture
    ptrdiff_t height;

    bool whole() const { return top && bottom; }
    ptrdiff_t begin() const { return top ? 0 : -2; }
    ptrdiff_t end() const { return bottom ? height : height - 2; }

    /// The luma rows for row y.
    SrcRows<3> lumaRows(const Image<const uint8_t, 1>& luma, ptrdiff_t y) const {
        const ptrdiff_t above = top && y == 0 ? y : y - 1, below = bottom && y == height - 1 ? y : y + 1;
        return {{luma.row(above).p[0], luma.row(y).p[0], luma.row(below).p[0]}};
    }
    /// The two chroma rows for chroma row j. The picture's last takes those of the one before; if it is the only one,
    /// it stays as it is.
    SrcRows<2> chromaRows(const Image<const uint8_t, 1>& pairs, ptrdiff_t j) const {
        const ptrdiff_t last = height / 2 - 1;
        ptrdiff_t a = j, b = j + 1;
        if (bottom && j == last) a = whole() && last == 0 ? j : j - 1, b = j;
        return {{pairs.row(a).p[0], pairs.row(b).p[0]}};
    }
};

/// Runs convert(slice, its width); unknown modes do nothing.
template <class Convert>
void inSlices(MoxSliceMode mode, MoxiSize size, Convert convert) {
    const bool whole = (mode & moxSliceAll) == moxSliceAll;
    if (whole || mode == moxSliceFirst || mode == moxSliceMiddle || mode == moxSliceLast)
        convert(Slice{whole || mode == moxSliceFirst, whole || mode == moxSliceLast, size.height & -2},
                ptrdiff_t(size.width & -2));
}

// ---- slices to packed rows ------------------------------------------------------------------------------------------

template <int group, class Luma, class Chroma, class LastLuma>
using PackedRows = Split<Planar<Mox8u, 5>, Interleaved<Mox8u, 2>, group, On<U8, PackedRow<Luma, Chroma>>,
                         On<U8, PackedRow<LastLuma, Down>>>;

// clang-format off
//                                                   columns  luma  chroma  luma of the rest
using innerNV12ToYUY2Deinterlace_P2C2R   = PackedRows<32,     V1,   Up,     F>;
using myNV12ToYUY2Deinterlace_edge_P2C2R = PackedRows< 8,     V1,   Up,     F>;
using myNV12ToYUY2Deinterlace_All_P2C2R  = PackedRows<32,     V1,   Up,     F4>;
using NV12ToYUY2DeinterlaceAllEdge       = PackedRows< 1,     F4,   Down,   F4>;
// clang-format on

using FromTwoPlanes = Image<const uint8_t, 2>;

void packedSlice(const Slice& slice, const FromTwoPlanes& src, const Image<uint8_t, 1>& dst, ptrdiff_t width) {
    for (ptrdiff_t y = slice.begin(); y < slice.end(); ++y) {
        const auto from = join(slice.lumaRows(lumaOf(src), y), slice.chromaRows(chromaOf(src), y >> 1));
        const auto run = [&](auto kernel) { kernel.row(from, dst.row(y), width); };
        const bool edge = (slice.top && y < 2) || (slice.bottom && y >= slice.height - 2);
        if (slice.whole())
            edge ? run(NV12ToYUY2DeinterlaceAllEdge{}) : run(myNV12ToYUY2Deinterlace_All_P2C2R{});
        else
            edge ? run(myNV12ToYUY2Deinterlace_edge_P2C2R{}) : run(innerNV12ToYUY2Deinterlace_P2C2R{});
    }
}

struct PackedSlices {
    using Src = SemiPlanarIn<S420>;
    using Dst = YCbCr422;
    MoxSliceMode mode;
    void picture(const FromTwoPlanes& src, const Image<uint8_t, 1>& dst, MoxiSize size) const {
        inSlices(mode, size, [&](const Slice& slice, ptrdiff_t width) { packedSlice(slice, src, dst, width); });
    }
};

// ---- slices to planes -----------------------------------------------------------------------------------------------

/// Columns below a multiple of 16, and the rest.
template <class Rule, class Rest>
using Luma = Split<Planar<Mox8u, 3>, C1<Mox8u>, 16, On<U8, LumaRow<Rule>>, On<U8, LumaRow<Rest>>>;
template <class Rule, class Rest>
using Chroma = Split<TwoRows<ChromaPairs>, ChromaPlanes, 16, ChromaRow<Rule>, ChromaRow<Rest>>;

template <class Luma_, class EdgeLuma_, class Chroma_, class LastChroma_>
struct Planes {
    using Luma = Luma_;
    using EdgeLuma = EdgeLuma_;
    using Chroma = Chroma_;
    using LastChroma = LastChroma_;
};
// clang-format off
//                                                   luma         first and last  chroma              last row
using innerNV12ToYV12Deinterlace_first_P2P3R = Planes<Luma<V2, F>,  Luma<V2, F>,  Chroma<Up, Down>,   Chroma<Up, Down>>;
using innerNV12ToYV12Deinterlace_P2P3R       = Planes<Luma<V1, F>,  Luma<V1, F>,  Chroma<Up, Down>,   Chroma<Up, Down>>;
using innerNV12ToYV12Deinterlace_last_P2P3R  = Planes<Luma<F, F>,   Luma<F, F>,   Chroma<Down, Down>, Chroma<Down, Down>>;
using innerNV12ToYV12DeinterlaceAll_P2P3R    = Planes<Luma<V1, F>,  Luma<F, F>,   Chroma<Up, Down>,   Chroma<Down, Down>>;
using NV12ToYV12DeinterlaceTwoRows           = Planes<Luma<F4, F4>, Luma<F4, F4>, Chroma<Up, Down>,   Chroma<Up, Down>>;
// clang-format on
/// At all modes but the whole picture, if the call is aligned.
using innerNV12ToYV12DeinterlaceHDTV_P2P3R = innerNV12ToYV12Deinterlace_P2P3R;

template <class Rows>
void planarSlice(const Slice& slice, const FromTwoPlanes& src, const Image<uint8_t, 3>& dst, ptrdiff_t width, Rows) {
    for (ptrdiff_t y = slice.begin(); y < slice.end(); ++y) {
        const auto run = [&](auto kernel) { kernel.row(slice.lumaRows(lumaOf(src), y), lumaOf(dst).row(y), width); };
        if ((slice.top && y == 0) || (slice.bottom && y == slice.height - 1))
            run(typename Rows::EdgeLuma{});
        else
            run(typename Rows::Luma{});
    }
    for (ptrdiff_t j = slice.begin() / 2; j < slice.end() / 2; ++j) {
        const auto run = [&](auto kernel) {
            kernel.row(slice.chromaRows(chromaOf(src), j), chromaOf(dst).row(j), width / 2);
        };
        if (slice.bottom && j == slice.height / 2 - 1)
            run(typename Rows::LastChroma{});
        else
            run(typename Rows::Chroma{});
    }
}

/// Rows of whole vectors at their own alignment go through kernels of their own, with other rules at the picture's top
/// and bottom.
bool isAligned(const FromTwoPlanes& src, const Image<uint8_t, 3>& dst, MoxiSize size) {
    const auto onto = [](int to, auto... values) { return (((uintptr_t)values % to == 0) && ...); };
    return size.width % 64 <= 1 && onto(16, size.height & -2, src.step[0], src.base[0], src.base[1]) &&
           onto(16, dst.base[0], dst.base[1], dst.base[2]) &&
           onto(32, src.step[1], dst.step[0], dst.step[1], dst.step[2]);
}

struct PlanarSlices {
    using Src = SemiPlanarIn<S420>;
    using Dst = PlanarIn<S420>;
    MoxSliceMode mode;
    void picture(const FromTwoPlanes& src, const Image<uint8_t, 3>& dst, MoxiSize size) const {
        const bool aligned = isAligned(src, dst, size);
        inSlices(mode, size, [&](const Slice& slice, ptrdiff_t width) {
            const auto run = [&](auto rows) { planarSlice(slice, src, dst, width, rows); };
            if (slice.whole())
                slice.height == 2 ? run(NV12ToYV12DeinterlaceTwoRows{}) : run(innerNV12ToYV12DeinterlaceAll_P2P3R{});
            else if (aligned)
                run(innerNV12ToYV12DeinterlaceHDTV_P2P3R{});
            else if (slice.top)
                run(innerNV12ToYV12Deinterlace_first_P2P3R{});
            else if (slice.bottom)
                run(innerNV12ToYV12Deinterlace_last_P2P3R{});
            else
                run(innerNV12ToYV12Deinterlace_P2P3R{});
        });
    }
};

// ---- to BGR ---------------------------------------------------------------------------------------------------------

/// Two rows of luma, and chroma at every column: of the second of a pair it is the mean with the next pair. Chroma
/// comes as rows of the pairs' own samples and of the next pairs'.
struct PairsWithNext : LayoutOf<6> {  // two of luma, Cr, next Cr, Cb, next Cb
    using Sample = Mox8u;
    static constexpr ptrdiff_t bytes(int plane, ptrdiff_t n) { return plane < 2 ? n : n / 2; }

    template <int N>
    MOX_INLINE static YccBlock<2, 1> load(const SrcRows<rowPointers>& rows, ptrdiff_t x) {
        const auto chroma = [&](int plane) {
            const U8 own = loadHalf<U8>(rows.p[plane] + x / 2), next = loadHalf<U8>(rows.p[plane + 1] + x / 2);
            return unpackLo<8>(own, avg(own, next));
        };
        return {{q4::load<U8>(rows.p[0] + x), q4::load<U8>(rows.p[1] + x)}, {chroma(2), chroma(4)}};
    }
};

/// A rule on lanes L: what chroma, Cr and Cb, adds to each colour serves both rows.
template <class L, class Rule>
struct OnBothRows {
    template <class D>
    MOX_INLINE RowPair<Block<D, 3, lumaPixels>> apply(const YccBlock<2, 1>& in) const {
        const auto wide = [](U8 v) { return spread<L>(Channel<D, lumaPixels>{{v}}); };
        const auto cr = wide(in.chroma[0]), cb = wide(in.chroma[1]);
        const decltype(cr) y[2] = {wide(in.y[0]), wide(in.y[1])};
        L results[2][3][lumaPixels / L::count];
        for (int i = 0; i < lumaPixels / L::count; ++i) {
            const Px<L, 3> added = Rule::chroma(cr.v[i] - splat<L>(128), cb.v[i] - splat<L>(128));
            for (int row = 0; row < 2; ++row) {
                const L luma = Rule::luma(y[row].v[i] - splat<L>(16));
                for (int c = 0; c < 3; ++c) results[row][c][i] = Rule::colour(luma + added.c[c]);
            }
        }
        RowPair<Block<D, 3, lumaPixels>> out;
        for (int row = 0; row < 2; ++row)
            for (int c = 0; c < 3; ++c) out.row[row].c[c] = collect<D>(results[row][c]);
        return out;
    }
};

/// The BT.601 matrix with 12 fractional bits.
template <class Precision>
struct Bt601 : Precision {
    template <class L>
    MOX_INLINE static L luma(L y) {
        return Precision::term(y, 4769);
    }
    template <class L>
    MOX_INLINE static Px<L, 3> chroma(L v, L u) {
        const L toGreen = Precision::term(u, 1605) + Precision::term(v, 3330);
        return {{Precision::term(v, 6537), zero<L>() - toGreen, Precision::term(u, 8263)}};
    }
};
/// Each term is rounded down to 3 fractional bits, so that sums fit 16.
struct TermByTerm {
    MOX_INLINE static I16 term(I16 x, int16_t k) { return mulHi(shl<7>(x), splat<I16>(k)); }
    MOX_INLINE static I16 colour(I16 sum) { return shr<3>(sum); }
};
struct WholeSum {
    MOX_INLINE static I32 term(I32 x, int16_t k) { return x * splat<I32>(k); }
    MOX_INLINE static I32 colour(I32 sum) { return shr<12>(sum); }
};

/// Two rows of whole pairs. The sums are whole from a multiple of eight pairs on, at the latest from the last, which is
/// its own next pair.
struct FilteredToBgr {
    using Src = Planar420;
    using Dst = TwoRows<BGRA>;
    Mox8u aval;

    void row(const SrcRows<4>& src, const DstRows<2>& dst, ptrdiff_t width) const {
        if (width == 0) return;
        const ptrdiff_t pairs = width / 2, limit = (pairs - 1) & -8, rest = pairs - limit;
        const uint8_t *const y0 = src.p[0], *const y1 = src.p[1], *const cr = src.p[2], *const cb = src.p[3];
        NextColumns nextCr, nextCb;
        span<PairsWithNext, Dst>({{y0, y1, cr, cr + 1, cb, cb + 1}}, dst, 0, 2 * limit,
                                 WithFourth<OnBothRows<I16, Bt601<TermByTerm>>, Mox8u>{{}, aval});
        span<PairsWithNext, Dst>({{y0 + 2 * limit, y1 + 2 * limit, cr + limit, nextCr.of(cr + limit, rest), cb + limit,
                                   nextCb.of(cb + limit, rest)}},
                                 {{dst.p[0] + 8 * limit, dst.p[1] + 8 * limit}}, 0, 2 * rest,
                                 WithFourth<OnBothRows<I32, Bt601<WholeSum>>, Mox8u>{{}, aval});
    }
};

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

template <class Src>
constexpr auto doublesChromaRows = converts<DoubleChromaRows<Src>, planesFirst, AtLeast{2, 8}>;

template <>
constexpr auto entry<moxiYCbCr420ToYCbCr422_Filter_8u_P3R> = doublesChromaRows<PlanarIn<S420>>;
template <>
constexpr auto entry<moxiYCrCb420ToYCbCr422_Filter_8u_P3R> = doublesChromaRows<CrossedPlanarIn<S420>>;
template <>
constexpr auto entry<moxiYCbCr420ToYCbCr422_Filter_8u_P2P3R> = doublesChromaRows<SemiPlanarIn<S420>>;
template <>
constexpr auto entry<moxiYCbCr420ToYCbCr422_Filter_8u_P2C2R> = converts<PackedSlices, AtLeast{2, 2}>;
template <>
constexpr auto entry<moxiYCbCr420ToYCrCb420_Filter_8u_P2P3R> = converts<PlanarSlices, sizeTwice, AtLeast{2, 2}>;
template <>
constexpr auto entry<moxiYCrCb420ToBGR_Filter_8u_P3C4R> = converts<FilteredToBgr>;

}  // namespace q4

#include "chroma_filter.inc"
