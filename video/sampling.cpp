// Video from one sampling or layout to another without arithmetic: luma is copied, chroma copied, doubled, dropped or
// moved.
#include "moxcc/sampling.h"

#include <algorithm>

#include "video/sampling.h"

namespace q4 {
namespace {

// ---- between pictures with a luma plane -----------------------------------------------------------------------------
//
// Luma is copied as it is. Chroma goes by rows of two channels: a row of each side at a time, or two rows of one side,
// or the even and the odd columns of a row.

struct Row {
    static constexpr int rowsAtOnce = 1, columnsAtOnce = 1;
    template <class Layout>
    using Of = Layout;
    static auto rows(auto image) { return image; }
};
struct EvenRow : Row {
    static auto rows(auto image) { return evenRows(image); }
};
struct RowForTwo : Row {
    static auto rows(auto image) { return repeatedRows(image); }
};
struct RowPairs : Row {
    static constexpr int rowsAtOnce = 2;
    template <class Layout>
    using Of = TwoRows<Layout>;
    static auto rows(auto image) { return rowPairs(image); }
};
struct EvenColumn : Row {
    template <class Layout>
    using Of = EvenColumns<Layout::planes>;
};
struct ColumnPairs : Row {
    static constexpr int columnsAtOnce = 2;
    template <class Layout>
    using Of = TwoColumns<Layout>;
};

template <class Src_, class Dst_, class Rule_>
struct ChromaRows {
    using Src = Src_;
    using Dst = Dst_;
    using Rule = Rule_;
};
template <class From, class To>
struct ChromaRowsOf;
// clang-format off
template <class S> struct ChromaRowsOf<S, S>       : ChromaRows<Row,        Row,      Unchanged> {};
template <>        struct ChromaRowsOf<S422, S420> : ChromaRows<EvenRow,    Row,      Unchanged> {};
template <>        struct ChromaRowsOf<S420, S422> : ChromaRows<RowForTwo,  Row,      Unchanged> {};
template <>        struct ChromaRowsOf<S422, S411> : ChromaRows<EvenColumn, Row,      Unchanged> {};
template <>        struct ChromaRowsOf<S411, S422> : ChromaRows<Row,        ColumnPairs, Twice> {};
template <>        struct ChromaRowsOf<S411, S420> : ChromaRows<RowPairs,       ColumnPairs, Unchanged> {};
template <>        struct ChromaRowsOf<S420, S411> : ChromaRows<ColumnPairs,   RowPairs,     Unchanged> {};
// clang-format on

template <class Src, class Dst>
void movePlanes(const auto& src, const auto& dst, MoxiSize size) {
    using To = typename Dst::Sampling;
    using Change = ChromaRowsOf<typename Src::Sampling, To>;
    using Kernel = AllColumns<typename Change::Src::template Of<typename Src::ChromaRows>,
                              typename Change::Dst::template Of<typename Dst::ChromaRows>, typename Change::Rule>;
    copyPlane(lumaOf(src), lumaOf(dst), size);
    eachRow(Kernel{}, Change::Src::rows(chromaOf(src)), Change::Dst::rows(chromaOf(dst)),
            {size.width / To::cellWidth / Change::Dst::columnsAtOnce,
             size.height / To::cellHeight / Change::Dst::rowsAtOnce});
}

// ---- from or to packed pictures -------------------------------------------------------------------------------------
//
// Luma and chroma go together, a row of luma with the chroma row of its cells.

template <class From, class To>
struct Recode : Unchanged {};
template <>
struct Recode<S422, S411> {
    template <class D>
    MOX_INLINE YccBlock<1, 4> apply(const YccBlock<1, 2>& in) const {
        const U8 even = elementOrder<1>([](int i) { return i * 2 % 16; });
        return {{in.y[0]}, {shuffle(in.chroma[0], even), shuffle(in.chroma[1], even)}};
    }
};
template <>
struct Recode<S411, S422> {
    template <class D>
    MOX_INLINE YccBlock<1, 2> apply(const YccBlock<1, 4>& in) const {
        return {{in.y[0]}, {unpackLo<8>(in.chroma[0], in.chroma[0]), unpackLo<8>(in.chroma[1], in.chroma[1])}};
    }
};
struct LumaOnly {
    template <class D, class B>
    MOX_INLINE Block<D, 1, lumaPixels> apply(const B& in) const {
        return {{{{in.y[0]}}}};
    }
};

template <class Src, class Dst>
void moveRows(const auto& src, const auto& dst, MoxiSize size) {
    using From = SamplingOf<Src>;
    using To = SamplingOf<Dst>;
    const AllColumns<Src, Dst, Recode<From, To>> withChroma;
    if constexpr (From::cellHeight == 1 && To::cellHeight == 1) return eachRow(withChroma, src, dst, size);
    const AllColumns<Src, C1<Mox8u>, LumaOnly> lumaOnly;
    for (ptrdiff_t y = 0; y < size.height; ++y) {
        const auto from = rowWithChroma<Src>(src, y);
        const auto to = rowWithChroma<Dst>(dst, y);
        if (y % To::cellHeight == 0)
            withChroma.row(from, to, size.width);
        else
            lumaOnly.row(from, {to.p[0]}, size.width);
    }
}

// ---- kernels --------------------------------------------------------------------------------------------------------

/// Moves whole cells of both samplings; the region is cut to these.
template <class Src_, class Dst_>
struct Move {
    using Src = Src_;
    using Dst = Dst_;
    using From = SamplingOf<Src>;
    using To = SamplingOf<Dst>;
    static constexpr int cellWidth = std::max(From::cellWidth, To::cellWidth);
    static constexpr int cellHeight = std::max(From::cellHeight, To::cellHeight);

    void picture(const Image<const uint8_t, Src::planes>& src, const Image<uint8_t, Dst::planes>& dst,
                 MoxiSize size) const {
        const MoxiSize whole = {size.width & -cellWidth, size.height & -cellHeight};
        if constexpr (hasLumaPlane<Src> && hasLumaPlane<Dst>)
            movePlanes<Src, Dst>(src, dst, whole);
        else
            moveRows<Src, Dst>(src, dst, whole);
    }
};

/// Bytes a, b, c, d of each packed pair.
template <int a, int b, int c, int d>
struct PairBytes {
    using Src = C1<Mox32u>;
    using Dst = Src;
    struct Shuffle {
        static constexpr int order[4] = {a, b, c, d};
        template <class D, int N>
        MOX_INLINE Block<Mox32u, 1, N> apply(Block<Mox32u, 1, N> in) const {
            for (U32& v : in.c[0].v) v = shuffle(v, elementOrder<1>([](int i) { return (i & -4) + order[i & 3]; }));
            return in;
        }
    };
    void picture(const Image<const uint8_t, 1>& src, const Image<uint8_t, 1>& dst, MoxiSize size) const {
        eachRow(AllColumns<Src, Dst, Shuffle>{}, src, dst, {size.width / 2, size.height});
    }
};

struct FirstChannel {
    template <class D, class T, int N>
    MOX_INLINE Block<T, 1, N> apply(const Block<T, 2, N>& in) const {
        return {{in.c[0]}};
    }
};
/// The first byte of each two: a packed row's luma. An odd last pixel is read no further than that.
struct innerYCbCr422ToGray_8u_C2C1R {
    using Src = Interleaved<Mox8u, 2>;
    using Dst = C1<Mox8u>;
    void row(const SrcRows<1>& src, const DstRows<1>& dst, ptrdiff_t width) const {
        const ptrdiff_t even = width & -2;
        AllColumns<Src, Dst, FirstChannel>{}.row(src, dst, even);
        if (even < width) dst.p[0][even] = src.p[0][2 * even];
    }
};

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

/// Most forms with cells four wide and one high take any height.
template <class Kernel>
constexpr int leastHeight = Kernel::cellWidth == 4 && Kernel::cellHeight == 1 ? anyHeight : Kernel::cellHeight;
template <class Src, class Dst, int height = leastHeight<Move<Src, Dst>>>
constexpr auto moves = converts<Move<Src, Dst>, planesFirst, AtLeast{Move<Src, Dst>::cellWidth, height}>;
constexpr Order stepsToo = {{Test::pointers, Test::stepArrays, Test::planes, Test::size}};

// clang-format off
// Same sampling.
template <> constexpr auto entry<moxiYCbCr411_8u_P2P3R>           = moves<SemiPlanarIn<S411>, PlanarIn<S411>>;
template <> constexpr auto entry<moxiYCbCr411_8u_P3P2R>           = moves<PlanarIn<S411>, SemiPlanarIn<S411>>;
template <> constexpr auto entry<moxiYCbCr420_8u_P2P3R>           = moves<SemiPlanarIn<S420>, PlanarIn<S420>>;
template <> constexpr auto entry<moxiYCbCr420_8u_P3P2R>           = moves<PlanarIn<S420>, SemiPlanarIn<S420>>;
template <> constexpr auto entry<moxiYCbCr420ToYCrCb420_8u_P2P3R> =
    converts<Move<SemiPlanarIn<S420>, PlanarIn<S420>>, sizeTwice, AtLeast{2, 2}>;
template <> constexpr auto entry<moxiYCrCb420ToYCbCr420_8u_P3P2R> = moves<CrossedPlanarIn<S420>, SemiPlanarIn<S420>>;
template <> constexpr auto entry<moxiYCbCr422_8u_C2P3R> =
    converts<Move<YCbCr422, PlanarIn<S422>>, stepsToo, AtLeast{2, 1}>;
template <> constexpr auto entry<moxiYCbCr422_8u_P3C2R>           = moves<PlanarIn<S422>, YCbCr422>;
template <> constexpr auto entry<moxiCbYCr422ToYCbCr422_8u_C2P3R> = moves<CbYCr422, PlanarIn<S422>>;
template <> constexpr auto entry<moxiCbYCr422ToYCbCr422_8u_C2R>   = converts<PairBytes<1, 0, 3, 2>, AtLeast{2, 1}>;
template <> constexpr auto entry<moxiYCbCr422ToCbYCr422_8u_C2R>   = converts<PairBytes<1, 0, 3, 2>, AtLeast{2, 1}>;
template <> constexpr auto entry<moxiYCbCr422ToCbYCr422_8u_P3C2R> = moves<PlanarIn<S422>, CbYCr422>;
template <> constexpr auto entry<moxiYCbCr422ToYCrCb422_8u_C2R> =
    converts<PairBytes<0, 3, 2, 1>, AtLeast{2, anyHeight}>;
template <> constexpr auto entry<moxiYCbCr422ToYCrCb422_8u_P3C2R> = moves<PlanarIn<S422>, YCrCb422, anyHeight>;
template <> constexpr auto entry<moxiYCrCb422ToYCbCr422_8u_C2P3R> = moves<YCrCb422, PlanarIn<S422>>;
// 4:2:2 to 4:2:0: the chroma of odd rows is dropped.
template <> constexpr auto entry<moxiCbYCr422ToYCbCr420_8u_C2P2R> = moves<CbYCr422, SemiPlanarIn<S420>>;
template <> constexpr auto entry<moxiCbYCr422ToYCbCr420_8u_C2P3R> = moves<CbYCr422, PlanarIn<S420>>;
template <> constexpr auto entry<moxiYCbCr422ToYCbCr420_8u_C2P2R> = moves<YCbCr422, SemiPlanarIn<S420>>;
template <> constexpr auto entry<moxiYCbCr422ToYCbCr420_8u_C2P3R> = moves<YCbCr422, PlanarIn<S420>>;
template <> constexpr auto entry<moxiYCbCr422ToYCbCr420_8u_P3P2R> = moves<PlanarIn<S422>, SemiPlanarIn<S420>>;
template <> constexpr auto entry<moxiYCbCr422ToYCbCr420_8u_P3R>   = moves<PlanarIn<S422>, PlanarIn<S420>>;
template <> constexpr auto entry<moxiCbYCr422ToYCrCb420_8u_C2P3R> = moves<CbYCr422, CrossedPlanarIn<S420>>;
template <> constexpr auto entry<moxiYCbCr422ToYCrCb420_8u_C2P2R> = moves<YCrCb422, SemiPlanarIn<S420>>;
template <> constexpr auto entry<moxiYCbCr422ToYCrCb420_8u_C2P3R> = moves<YCbCr422, CrossedPlanarIn<S420>>;
template <> constexpr auto entry<moxiYCrCb422ToYCbCr420_8u_C2P3R> = moves<YCrCb422, PlanarIn<S420>>;
// 4:2:0 to 4:2:2: each chroma row is written twice.
template <> constexpr auto entry<moxiYCbCr420ToCbYCr422_8u_P2C2R> = moves<SemiPlanarIn<S420>, CbYCr422>;
template <> constexpr auto entry<moxiYCbCr420ToYCbCr422_8u_P2C2R> = moves<SemiPlanarIn<S420>, YCbCr422>;
template <> constexpr auto entry<moxiYCbCr420ToYCbCr422_8u_P2P3R> = moves<SemiPlanarIn<S420>, PlanarIn<S422>>;
template <> constexpr auto entry<moxiYCbCr420ToYCbCr422_8u_P3R>   = moves<PlanarIn<S420>, PlanarIn<S422>>;
template <> constexpr auto entry<moxiYCrCb420ToCbYCr422_8u_P3C2R> = moves<CrossedPlanarIn<S420>, CbYCr422>;
template <> constexpr auto entry<moxiYCrCb420ToYCbCr422_8u_P3C2R> = moves<CrossedPlanarIn<S420>, YCbCr422>;
template <> constexpr auto entry<moxiYCrCb420ToYCbCr422_8u_P3R>   = moves<CrossedPlanarIn<S420>, PlanarIn<S422>>;
// 4:2:2 to 4:1:1: the chroma of odd columns is dropped.
template <> constexpr auto entry<moxiCbYCr422ToYCbCr411_8u_C2P3R> = moves<CbYCr422, PlanarIn<S411>>;
template <> constexpr auto entry<moxiYCbCr422ToYCbCr411_8u_C2P2R> = moves<YCbCr422, SemiPlanarIn<S411>>;
template <> constexpr auto entry<moxiYCbCr422ToYCbCr411_8u_C2P3R> = moves<YCbCr422, PlanarIn<S411>, 1>;
template <> constexpr auto entry<moxiYCbCr422ToYCbCr411_8u_P3P2R> = moves<PlanarIn<S422>, SemiPlanarIn<S411>>;
template <> constexpr auto entry<moxiYCbCr422ToYCbCr411_8u_P3R>   = moves<PlanarIn<S422>, PlanarIn<S411>>;
template <> constexpr auto entry<moxiYCrCb422ToYCbCr411_8u_C2P3R> = moves<YCrCb422, PlanarIn<S411>>;
// 4:1:1 to 4:2:2: each chroma sample is written twice.
template <> constexpr auto entry<moxiYCbCr411ToYCbCr422_8u_P2C2R> = moves<SemiPlanarIn<S411>, YCbCr422>;
template <> constexpr auto entry<moxiYCbCr411ToYCbCr422_8u_P2P3R> = moves<SemiPlanarIn<S411>, PlanarIn<S422>>;
template <> constexpr auto entry<moxiYCbCr411ToYCbCr422_8u_P3C2R> = moves<PlanarIn<S411>, YCbCr422>;
template <> constexpr auto entry<moxiYCbCr411ToYCbCr422_8u_P3R>   = moves<PlanarIn<S411>, PlanarIn<S422>>;
template <> constexpr auto entry<moxiYCbCr411ToYCrCb422_8u_P3C2R> = moves<PlanarIn<S411>, YCrCb422>;
template <> constexpr auto entry<moxiYCbCr411ToYCrCb422_8u_P3R>   = moves<PlanarIn<S411>, CrossedPlanarIn<S422>>;
// 4:1:1 to 4:2:0: two chroma rows become the even and the odd columns of one.
template <> constexpr auto entry<moxiYCbCr411ToYCbCr420_8u_P2P3R> = moves<SemiPlanarIn<S411>, PlanarIn<S420>>;
template <> constexpr auto entry<moxiYCbCr411ToYCbCr420_8u_P3P2R> = moves<PlanarIn<S411>, SemiPlanarIn<S420>>;
template <> constexpr auto entry<moxiYCbCr411ToYCbCr420_8u_P3R>   = moves<PlanarIn<S411>, PlanarIn<S420>>;
template <> constexpr auto entry<moxiYCbCr411ToYCrCb420_8u_P2P3R> = moves<SemiPlanarIn<S411>, CrossedPlanarIn<S420>>;
// 4:2:0 to 4:1:1: the even and the odd chroma columns of a row become two rows.
template <> constexpr auto entry<moxiYCbCr420ToYCbCr411_8u_P2P3R> = moves<SemiPlanarIn<S420>, PlanarIn<S411>>;
template <> constexpr auto entry<moxiYCbCr420ToYCbCr411_8u_P3P2R> = moves<PlanarIn<S420>, SemiPlanarIn<S411>>;
template <> constexpr auto entry<moxiYCrCb420ToYCbCr411_8u_P3P2R> = moves<CrossedPlanarIn<S420>, SemiPlanarIn<S411>>;

// Luma only.
template <> constexpr auto entry<moxiYCbCr422ToGray_8u_C2C1R> = converts<innerYCbCr422ToGray_8u_C2C1R>;
// clang-format on

}  // namespace q4

#include "sampling.inc"
