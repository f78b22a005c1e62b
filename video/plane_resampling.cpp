// Chroma planes from one sampling to another by averages of neighbours. The columns below a limit round averages up,
// the rest round down.
#include "moxcc/sampling.h"

#include "video/sampling.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

using Sample = C1<Mox8u>;
template <int N>
using Samples = Block<Mox8u, 1, N>;

struct Up {
    MOX_INLINE static U8 average(U8 a, U8 b) { return avg(a, b); }
};
struct Down {
    MOX_INLINE static U8 average(U8 a, U8 b) { return avgDown(a, b); }
};
template <class Rounding, int N>
MOX_INLINE Samples<N> average(const Samples<N>& a, const Samples<N>& b) {
    return {{{{Rounding::average(a.c[0].v[0], b.c[0].v[0])}}}};
}

/// A sample and the one between it and the next.
template <class Rounding>
struct Between {
    template <class D, int N>
    MOX_INLINE RowPair<Samples<N>> apply(const RowPair<Samples<N>>& in) const {
        return {{in.row[0], average<Rounding>(in.row[0], in.row[1])}};
    }
};
/// The two rows for a sample, in: columns a, b of a row and of the next.
template <class Rounding>
struct BetweenFour {
    template <class D, int N>
    MOX_INLINE auto apply(const RowPair<RowPair<Samples<N>>>& in) const {
        const Samples<N> a = in.row[0].row[0], below = in.row[0].row[1];
        const Samples<N> right = average<Rounding>(a, in.row[1].row[0]);
        const Samples<N> belowRight = average<Rounding>(below, in.row[1].row[1]);
        return RowPair<RowPair<Samples<N>>>{
            {{{a, right}}, {{average<Rounding>(a, below), average<Rounding>(right, belowRight)}}}};
    }
};
/// The last row's pair of rows: only the upper one is interpolated.
template <class Rounding>
struct BetweenLast {
    template <class D, int N>
    MOX_INLINE auto apply(const RowPair<Samples<N>>& in) const {
        return RowPair<RowPair<Samples<N>>>{{Between<Rounding>{}.template apply<D>(in), {{in.row[0], in.row[0]}}}};
    }
};

// ---- kernels --------------------------------------------------------------------------------------------------------

/// Rows beside themselves moved by one column, so that each column comes with the next; the last one with itself.
template <class Src_, class Dst_, template <class> class Rule>
struct WithNextColumn {
    using Src = Src_;
    using Dst = Dst_;
    using Both = TwoRows<Src>;

    void row(const SrcRows<Src::rowPointers>& src, const DstRows<Dst::rowPointers>& dst, ptrdiff_t width) const {
        const ptrdiff_t limit = (width - 1) & -16, rest = width - limit;  // 1 to 16 columns
        NextColumns copies[Src::rowPointers];
        SrcRows<Src::rowPointers> next, end, endNext;
        for (int i = 0; i < Src::rowPointers; ++i) {
            next.p[i] = src.p[i] + 1;
            end.p[i] = src.p[i] + limit;
            endNext.p[i] = copies[i].of(end.p[i], rest);
        }
        DstRows<Dst::rowPointers> dstEnd;
        for (int i = 0; i < Dst::rowPointers; ++i) dstEnd.p[i] = dst.p[i] + Dst::bytes(i, limit);
        span<Both, Dst>(join(src, next), dst, 0, limit, Rule<Up>{});
        span<Both, Dst>(join(end, endNext), dstEnd, 0, rest, Rule<Down>{});
    }
};

// Kernel, source, destination, columns that round up, rules.
using yvu411toyuv420_sse2_asm = WithNextColumn<Sample, TwoColumns<Sample>, Between>;
using yuv420toyuv411_sse2_asm = Split<TwoRows<EvenColumns<1>>, TwoRows<Sample>, 32, Between<Up>, Between<Down>>;
using yuv420toyuv1620_sse2_asm = AllColumns<EvenColumns<1>, Sample, Unchanged>;
using yvu1620toyuv420_sse2_asm = WithNextColumn<TwoRows<Sample>, TwoRows<TwoColumns<Sample>>, BetweenFour>;
using yvu1620toyuv420LastRow = WithNextColumn<Sample, TwoRows<TwoColumns<Sample>>, BetweenLast>;

// ---- entries --------------------------------------------------------------------------------------------------------

/// Copies luma; chroma(src, dst) does a chroma plane.
template <class Chroma>
MoxStatus convertPlanes(const PlanarSide<const Mox8u>& src, const PlanarSide<Mox8u>& dst, MoxiSize size, int cellHeight,
                        Chroma chroma) {
    const auto whole = require([=] { return size.width % 4 == 0 && size.height % cellHeight == 0; }, moxStatusBadSize);
    if (MoxStatus s = firstOf(src.notNull(), dst.notNull(), sizeAtLeast(size, 4, cellHeight), whole)) return s;
    copyPlane(src.luma(), dst.luma(), size);
    for (int i = 1; i < 3; ++i) chroma(src.plane(i), dst.plane(i));
    return moxStatusOk;
}

}  // namespace
}  // namespace q4

using namespace q4;

MoxStatus moxiYCbCr411To420_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                   const int32_t* dstSteps, MoxiSize roiSize) {
    return convertPlanes(
        threePlanes(srcPlanes, srcSteps), threePlanes(dstPlanes, dstSteps), roiSize, 4, [=](auto src, auto dst) {
            eachRow(yvu411toyuv420_sse2_asm{}, evenRows(src), dst, {roiSize.width / 4, roiSize.height / 2});
        });
}
MoxStatus moxiYCbCr420To411_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                   const int32_t* dstSteps, MoxiSize roiSize) {
    return convertPlanes(
        threePlanes(srcPlanes, srcSteps), threePlanes(dstPlanes, dstSteps), roiSize, 2, [=](auto src, auto dst) {
            const int columns = roiSize.width / 4, last = roiSize.height / 2 - 1;
            eachRow(yuv420toyuv411_sse2_asm{}, join(src, from(src, 1)), rowPairs(dst), {columns, last});
            eachRow(yuv420toyuv411_sse2_asm{}, from(join(src, src), last), from(rowPairs(dst), last), {columns, 1});
        });
}
MoxStatus moxiYCbCr420To1620_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                    const int32_t* dstSteps, MoxiSize roiSize) {
    return convertPlanes(
        threePlanes(srcPlanes, srcSteps), threePlanes(dstPlanes, dstSteps), roiSize, 4, [=](auto src, auto dst) {
            eachRow(yuv420toyuv1620_sse2_asm{}, evenRows(src), dst, {roiSize.width / 4, roiSize.height / 4});
        });
}
MoxStatus moxiYCbCr1620To420_8u_P3R(const Mox8u* const* srcPlanes, const int32_t* srcSteps, Mox8u* const* dstPlanes,
                                    const int32_t* dstSteps, MoxiSize roiSize) {
    return convertPlanes(
        threePlanes(srcPlanes, srcSteps), threePlanes(dstPlanes, dstSteps), roiSize, 4, [=](auto src, auto dst) {
            const int columns = roiSize.width / 4, last = roiSize.height / 4 - 1;
            eachRow(yvu1620toyuv420_sse2_asm{}, join(src, from(src, 1)), rowPairs(dst), {columns, last});
            eachRow(yvu1620toyuv420LastRow{}, from(src, last), from(rowPairs(dst), last), {columns, 1});
        });
}
