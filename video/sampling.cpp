// Video from one sampling or layout to another without arithmetic: luma is copied, chroma copied, doubled, dropped or
// moved.
#include "moxcc/sampling.h"

#include <algorithm>
#include <climits>

#include "video/sampling.h"

namespace q4 {
namespace {

// ---- samplings and sizes --------------------------------------------------------------------------------------------

/// One chroma sample of each kind for a cell of pixels.
template <int width, int height>
struct Sampling {
    static constexpr int cellWidth = width, cellHeight = height;
};
using S422 = Sampling<2, 1>;
using S420 = Sampling<2, 2>;
using S411 = Sampling<4, 1>;

/// A change works on whole cells of both samplings; the region is cut to these.
template <class From, class To>
struct Cells {
    static constexpr int width = std::max(From::cellWidth, To::cellWidth);
    static constexpr int height = std::max(From::cellHeight, To::cellHeight);
};

constexpr int anyHeight = INT_MIN;

/// Most forms with cells four wide and one high take any height, and do nothing if it is below 1.
template <class From, class To>
constexpr int usualMinHeight =
    Cells<From, To>::width == 4 && Cells<From, To>::height == 1 ? anyHeight : Cells<From, To>::height;

// ---- between pictures with a luma plane -----------------------------------------------------------------------------
//
// Luma is copied as it is. Chroma goes by rows of two channels: a row of each side at a time, or two rows of one side, or
// the even and the odd columns of a row.

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
struct Rows : Row {
    static constexpr int rowsAtOnce = 2;
    template <class Layout>
    using Of = TwoRows<Layout>;
    static auto rows(auto image) { return rowPairs(image); }
};
struct Columns : Row {
    static constexpr int columnsAtOnce = 2;
    template <class Layout>
    using Of = TwoColumns<Layout>;
};

struct EvenColumn : Row {
    template <class Layout>
    using Of = EvenColumns<Layout::planes>;
};

template <class Src_, class Dst_, class Rule_>
struct Chroma {
    using Src = Src_;
    using Dst = Dst_;
    using Rule = Rule_;
};
template <class From, class To>
struct ChromaOf;
// clang-format off
template <class S> struct ChromaOf<S, S>       : Chroma<Row,        Row,     Unchanged> {};
template <>        struct ChromaOf<S422, S420> : Chroma<EvenRow,    Row,     Unchanged> {};
template <>        struct ChromaOf<S420, S422> : Chroma<RowForTwo,  Row,     Unchanged> {};
template <>        struct ChromaOf<S422, S411> : Chroma<EvenColumn, Row,     Unchanged> {};
template <>        struct ChromaOf<S411, S422> : Chroma<Row,        Columns, Twice> {};
template <>        struct ChromaOf<S411, S420> : Chroma<Rows,       Columns, Unchanged> {};
template <>        struct ChromaOf<S420, S411> : Chroma<Columns,    Rows,    Unchanged> {};
// clang-format on

template <class From, class To, class Src, class Dst>
void convertPlanes(const Src& src, const Dst& dst, MoxiSize size) {
    using Change = ChromaOf<From, To>;
    using Kernel = AllColumns<typename Change::Src::template Of<typename Src::ChromaRows>,
                              typename Change::Dst::template Of<typename Dst::ChromaRows>, typename Change::Rule>;
    copyPlane(src.luma(), dst.luma(), size);
    eachRow(Kernel{}, Change::Src::rows(src.chroma()), Change::Dst::rows(dst.chroma()),
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

/// The layout of one row of luma with its chroma.
template <class Side, class S>
struct RowsOfSide {
    using Layout = LumaPlane<1, typename Side::template Chroma<S::cellWidth>>;
};
template <class Side, class S>
requires(!Side::hasLumaPlane) struct RowsOfSide<Side, S> {
    using Layout = typename Side::Rows;
};

template <class From, class To, class Src, class Dst>
void convertRows(const Src& src, const Dst& dst, MoxiSize size) {
    using SrcLayout = typename RowsOfSide<Src, From>::Layout;
    const AllColumns<SrcLayout, typename RowsOfSide<Dst, To>::Layout, Recode<From, To>> withChroma;
    if constexpr (From::cellHeight == 1 && To::cellHeight == 1)
        return eachRow(withChroma, src.rows(), dst.rows(), size);
    const AllColumns<SrcLayout, C1<Mox8u>, LumaOnly> lumaOnly;
    for (ptrdiff_t y = 0; y < size.height; ++y) {
        const auto from = src.template row<From::cellHeight>(y);
        const auto to = dst.template row<To::cellHeight>(y);
        if (y % To::cellHeight == 0)
            withChroma.row(from, to, size.width);
        else
            lumaOnly.row(from, {to.p[0]}, size.width);
    }
}

// ---- entries --------------------------------------------------------------------------------------------------------

template <class From, class To, int minHeight = usualMinHeight<From, To>, class Src, class Dst>
MoxStatus convert(const Src& src, const Dst& dst, MoxiSize roiSize) {
    using Whole = Cells<From, To>;
    if (MoxStatus s = firstOf(src.notNull(), dst.notNull(), sizeAtLeast(roiSize, Whole::width, minHeight))) return s;
    const MoxiSize whole = {roiSize.width & -Whole::width, roiSize.height & -Whole::height};
    if constexpr (Src::hasLumaPlane && Dst::hasLumaPlane)
        convertPlanes<From, To>(src, dst, whole);
    else
        convertRows<From, To>(src, dst, whole);
    return moxStatusOk;
}

struct FirstChannel {
    template <class D, class T, int N>
    MOX_INLINE Block<T, 1, N> apply(const Block<T, 2, N>& in) const {
        return {{in.c[0]}};
    }
};

/// Bytes a, b, c, d of each packed pair.
template <int a, int b, int c, int d>
struct PairBytes {
    static constexpr int order[4] = {a, b, c, d};
    template <class D, int N>
    MOX_INLINE Block<Mox32u, 1, N> apply(Block<Mox32u, 1, N> in) const {
        for (U32& v : in.c[0].v) v = shuffle(v, elementOrder<1>([](int i) { return (i & -4) + order[i & 3]; }));
        return in;
    }
};

template <int a, int b, int c, int d, int minHeight = 1>
MoxStatus reorder(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    if (MoxStatus s = firstOf(notNull(src, dst), sizeAtLeast(roiSize, 2, minHeight))) return s;
    using Kernel = AllColumns<C1<Mox32u>, C1<Mox32u>, PairBytes<a, b, c, d>>;
    eachRow(Kernel{}, image(src, srcStep), image(dst, dstStep), {roiSize.width / 2, roiSize.height});
    return moxStatusOk;
}

/// The first byte of each two: a packed row's luma. An odd last pixel is read no further than that.
struct innerYCbCr422ToGray_8u_C2C1R {
    void row(const SrcRows<1>& src, const DstRows<1>& dst, ptrdiff_t width) const {
        const ptrdiff_t even = width & -2;
        AllColumns<Interleaved<Mox8u, 2>, C1<Mox8u>, FirstChannel>{}.row(src, dst, even);
        if (even < width) dst.p[0][even] = src.p[0][2 * even];
    }
};

}  // namespace
}  // namespace q4

using namespace q4;

// Same sampling.
MoxStatus moxiYCbCr411_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr, int32_t srcCbCrStep,
                                Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S411, S411>(twoPlanes(srcY, srcYStep, srcCbCr, srcCbCrStep), threePlanes(dstPlanes, dstSteps),
                               roiSize);
}
MoxStatus moxiYCbCr411_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY, int32_t dstYStep,
                                Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return convert<S411, S411>(threePlanes(srcPlanes, srcSteps), twoPlanes(dstY, dstYStep, dstCbCr, dstCbCrStep),
                               roiSize);
}
MoxStatus moxiYCbCr420_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr, int32_t srcCbCrStep,
                                Mox8u* const* dstPlanes, const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S420, S420>(twoPlanes(srcY, srcYStep, srcCbCr, srcCbCrStep), threePlanes(dstPlanes, dstSteps),
                               roiSize);
}
MoxStatus moxiYCbCr420_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY, int32_t dstYStep,
                                Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return convert<S420, S420>(threePlanes(srcPlanes, srcSteps), twoPlanes(dstY, dstYStep, dstCbCr, dstCbCrStep),
                               roiSize);
}
MoxStatus moxiYCbCr420ToYCrCb420_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                          int32_t srcCbCrStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                          MoxiSize roiSize) {
    if (MoxStatus s = firstOf(notNull(srcY, srcCbCr, dstPlanes), sizeAtLeast(roiSize, 1, 1))) return s;
    return convert<S420, S420>(twoPlanes(srcY, srcYStep, srcCbCr, srcCbCrStep), threePlanes(dstPlanes, dstSteps),
                               roiSize);
}
MoxStatus moxiYCrCb420ToYCbCr420_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                          int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return convert<S420, S420>(crossed(threePlanes(srcPlanes, srcSteps)),
                               twoPlanes(dstY, dstYStep, dstCbCr, dstCbCrStep), roiSize);
}
MoxStatus moxiYCbCr422_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                MoxiSize roiSize) {
    if (MoxStatus s = firstOf(notNull(dstSteps))) return s;
    return convert<S422, S422>(packed<YCbCr422>(src, srcStep), threePlanes(dstPlanes, dstSteps), roiSize);
}
MoxStatus moxiYCbCr422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst, int32_t dstStep,
                                MoxiSize roiSize) {
    return convert<S422, S422>(threePlanes(srcPlanes, srcSteps), packed<YCbCr422>(dst, dstStep), roiSize);
}
MoxStatus moxiCbYCr422ToYCbCr422_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                          const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S422, S422>(packed<CbYCr422>(src, srcStep), threePlanes(dstPlanes, dstSteps), roiSize);
}
MoxStatus moxiCbYCr422ToYCbCr422_8u_C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                        MoxiSize roiSize) {
    return reorder<1, 0, 3, 2>(src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCr422ToCbYCr422_8u_C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                        MoxiSize roiSize) {
    return reorder<1, 0, 3, 2>(src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCr422ToCbYCr422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                          int32_t dstStep, MoxiSize roiSize) {
    return convert<S422, S422>(threePlanes(srcPlanes, srcSteps), packed<CbYCr422>(dst, dstStep), roiSize);
}
MoxStatus moxiYCbCr422ToYCrCb422_8u_C2R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                        MoxiSize roiSize) {
    return reorder<0, 3, 2, 1, anyHeight>(src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCbCr422ToYCrCb422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                          int32_t dstStep, MoxiSize roiSize) {
    return convert<S422, S422, anyHeight>(threePlanes(srcPlanes, srcSteps), packed<YCrCb422>(dst, dstStep), roiSize);
}
MoxStatus moxiYCrCb422ToYCbCr422_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                          const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S422, S422>(packed<YCrCb422>(src, srcStep), threePlanes(dstPlanes, dstSteps), roiSize);
}
// 4:2:2 to 4:2:0: the chroma of odd rows is dropped.
MoxStatus moxiCbYCr422ToYCbCr420_8u_C2P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                          Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return convert<S422, S420>(packed<CbYCr422>(src, srcStep), twoPlanes(dstY, dstYStep, dstCbCr, dstCbCrStep),
                               roiSize);
}
MoxStatus moxiCbYCr422ToYCbCr420_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                          const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S422, S420>(packed<CbYCr422>(src, srcStep), threePlanes(dstPlanes, dstSteps), roiSize);
}
MoxStatus moxiYCbCr422ToYCbCr420_8u_C2P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                          Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return convert<S422, S420>(packed<YCbCr422>(src, srcStep), twoPlanes(dstY, dstYStep, dstCbCr, dstCbCrStep),
                               roiSize);
}
MoxStatus moxiYCbCr422ToYCbCr420_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                          const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S422, S420>(packed<YCbCr422>(src, srcStep), threePlanes(dstPlanes, dstSteps), roiSize);
}
MoxStatus moxiYCbCr422ToYCbCr420_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                          int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return convert<S422, S420>(threePlanes(srcPlanes, srcSteps), twoPlanes(dstY, dstYStep, dstCbCr, dstCbCrStep),
                               roiSize);
}
MoxStatus moxiYCbCr422ToYCbCr420_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                        const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S422, S420>(threePlanes(srcPlanes, srcSteps), threePlanes(dstPlanes, dstSteps), roiSize);
}
MoxStatus moxiCbYCr422ToYCrCb420_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                          const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S422, S420>(packed<CbYCr422>(src, srcStep), crossed(threePlanes(dstPlanes, dstSteps)), roiSize);
}
MoxStatus moxiYCbCr422ToYCrCb420_8u_C2P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                          Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return convert<S422, S420>(packed<Crossed<YCbCr422>>(src, srcStep), twoPlanes(dstY, dstYStep, dstCbCr, dstCbCrStep),
                               roiSize);
}
MoxStatus moxiYCbCr422ToYCrCb420_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                          const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S422, S420>(packed<YCbCr422>(src, srcStep), crossed(threePlanes(dstPlanes, dstSteps)), roiSize);
}
MoxStatus moxiYCrCb422ToYCbCr420_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                          const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S422, S420>(packed<YCrCb422>(src, srcStep), threePlanes(dstPlanes, dstSteps), roiSize);
}
// 4:2:0 to 4:2:2: each chroma row is written twice.
MoxStatus moxiYCbCr420ToCbYCr422_8u_P2C2R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                          int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert<S420, S422>(twoPlanes(srcY, srcYStep, srcCbCr, srcCbCrStep), packed<CbYCr422>(dst, dstStep),
                               roiSize);
}
MoxStatus moxiYCbCr420ToYCbCr422_8u_P2C2R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                          int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert<S420, S422>(twoPlanes(srcY, srcYStep, srcCbCr, srcCbCrStep), packed<YCbCr422>(dst, dstStep),
                               roiSize);
}
MoxStatus moxiYCbCr420ToYCbCr422_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                          int32_t srcCbCrStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                          MoxiSize roiSize) {
    return convert<S420, S422>(twoPlanes(srcY, srcYStep, srcCbCr, srcCbCrStep), threePlanes(dstPlanes, dstSteps),
                               roiSize);
}
MoxStatus moxiYCbCr420ToYCbCr422_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                        const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S420, S422>(threePlanes(srcPlanes, srcSteps), threePlanes(dstPlanes, dstSteps), roiSize);
}
MoxStatus moxiYCrCb420ToCbYCr422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                          int32_t dstStep, MoxiSize roiSize) {
    return convert<S420, S422>(crossed(threePlanes(srcPlanes, srcSteps)), packed<CbYCr422>(dst, dstStep), roiSize);
}
MoxStatus moxiYCrCb420ToYCbCr422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                          int32_t dstStep, MoxiSize roiSize) {
    return convert<S420, S422>(crossed(threePlanes(srcPlanes, srcSteps)), packed<YCbCr422>(dst, dstStep), roiSize);
}
MoxStatus moxiYCrCb420ToYCbCr422_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                        const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S420, S422>(crossed(threePlanes(srcPlanes, srcSteps)), threePlanes(dstPlanes, dstSteps), roiSize);
}
// 4:2:2 to 4:1:1: the chroma of odd columns is dropped.
MoxStatus moxiCbYCr422ToYCbCr411_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                          const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S422, S411>(packed<CbYCr422>(src, srcStep), threePlanes(dstPlanes, dstSteps), roiSize);
}
MoxStatus moxiYCbCr422ToYCbCr411_8u_C2P2R(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep,
                                          Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return convert<S422, S411>(packed<YCbCr422>(src, srcStep), twoPlanes(dstY, dstYStep, dstCbCr, dstCbCrStep),
                               roiSize);
}
MoxStatus moxiYCbCr422ToYCbCr411_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                          const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S422, S411, 1>(packed<YCbCr422>(src, srcStep), threePlanes(dstPlanes, dstSteps), roiSize);
}
MoxStatus moxiYCbCr422ToYCbCr411_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                          int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return convert<S422, S411>(threePlanes(srcPlanes, srcSteps), twoPlanes(dstY, dstYStep, dstCbCr, dstCbCrStep),
                               roiSize);
}
MoxStatus moxiYCbCr422ToYCbCr411_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                        const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S422, S411>(threePlanes(srcPlanes, srcSteps), threePlanes(dstPlanes, dstSteps), roiSize);
}
MoxStatus moxiYCrCb422ToYCbCr411_8u_C2P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes,
                                          const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S422, S411>(packed<YCrCb422>(src, srcStep), threePlanes(dstPlanes, dstSteps), roiSize);
}
// 4:1:1 to 4:2:2: each chroma sample is written twice.
MoxStatus moxiYCbCr411ToYCbCr422_8u_P2C2R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                          int32_t srcCbCrStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return convert<S411, S422>(twoPlanes(srcY, srcYStep, srcCbCr, srcCbCrStep), packed<YCbCr422>(dst, dstStep),
                               roiSize);
}
MoxStatus moxiYCbCr411ToYCbCr422_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                          int32_t srcCbCrStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                          MoxiSize roiSize) {
    return convert<S411, S422>(twoPlanes(srcY, srcYStep, srcCbCr, srcCbCrStep), threePlanes(dstPlanes, dstSteps),
                               roiSize);
}
MoxStatus moxiYCbCr411ToYCbCr422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                          int32_t dstStep, MoxiSize roiSize) {
    return convert<S411, S422>(threePlanes(srcPlanes, srcSteps), packed<YCbCr422>(dst, dstStep), roiSize);
}
MoxStatus moxiYCbCr411ToYCbCr422_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                        const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S411, S422>(threePlanes(srcPlanes, srcSteps), threePlanes(dstPlanes, dstSteps), roiSize);
}
MoxStatus moxiYCbCr411ToYCrCb422_8u_P3C2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dst,
                                          int32_t dstStep, MoxiSize roiSize) {
    return convert<S411, S422>(threePlanes(srcPlanes, srcSteps), packed<YCrCb422>(dst, dstStep), roiSize);
}
MoxStatus moxiYCbCr411ToYCrCb422_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                        const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S411, S422>(threePlanes(srcPlanes, srcSteps), crossed(threePlanes(dstPlanes, dstSteps)), roiSize);
}
// 4:1:1 to 4:2:0: two chroma rows become the even and the odd columns of one.
MoxStatus moxiYCbCr411ToYCbCr420_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                          int32_t srcCbCrStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                          MoxiSize roiSize) {
    return convert<S411, S420>(twoPlanes(srcY, srcYStep, srcCbCr, srcCbCrStep), threePlanes(dstPlanes, dstSteps),
                               roiSize);
}
MoxStatus moxiYCbCr411ToYCbCr420_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                          int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return convert<S411, S420>(threePlanes(srcPlanes, srcSteps), twoPlanes(dstY, dstYStep, dstCbCr, dstCbCrStep),
                               roiSize);
}
MoxStatus moxiYCbCr411ToYCbCr420_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                        const int32_t* dstSteps, MoxiSize roiSize) {
    return convert<S411, S420>(threePlanes(srcPlanes, srcSteps), threePlanes(dstPlanes, dstSteps), roiSize);
}
MoxStatus moxiYCbCr411ToYCrCb420_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                          int32_t srcCbCrStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                          MoxiSize roiSize) {
    return convert<S411, S420>(twoPlanes(srcY, srcYStep, srcCbCr, srcCbCrStep),
                               crossed(threePlanes(dstPlanes, dstSteps)), roiSize);
}
// 4:2:0 to 4:1:1: the even and the odd chroma columns of a row become two rows.
MoxStatus moxiYCbCr420ToYCbCr411_8u_P2P3R(const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                                          int32_t srcCbCrStep, Mox8u* const* dstPlanes, const int32_t* dstSteps,
                                          MoxiSize roiSize) {
    return convert<S420, S411>(twoPlanes(srcY, srcYStep, srcCbCr, srcCbCrStep), threePlanes(dstPlanes, dstSteps),
                               roiSize);
}
MoxStatus moxiYCbCr420ToYCbCr411_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                          int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return convert<S420, S411>(threePlanes(srcPlanes, srcSteps), twoPlanes(dstY, dstYStep, dstCbCr, dstCbCrStep),
                               roiSize);
}
MoxStatus moxiYCrCb420ToYCbCr411_8u_P3P2R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* dstY,
                                          int32_t dstYStep, Mox8u* dstCbCr, int32_t dstCbCrStep, MoxiSize roiSize) {
    return convert<S420, S411>(crossed(threePlanes(srcPlanes, srcSteps)),
                               twoPlanes(dstY, dstYStep, dstCbCr, dstCbCrStep), roiSize);
}

// Luma only.
MoxStatus moxiYCbCr422ToGray_8u_C2C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                      MoxiSize roiSize) {
    if (MoxStatus s = firstOf(notNull(src, dst), sizeAtLeast(roiSize, 1, 1))) return s;
    eachRow(innerYCbCr422ToGray_8u_C2C1R{}, image(src, srcStep), image(dst, dstStep), roiSize);
    return moxStatusOk;
}
