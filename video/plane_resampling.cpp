// Chroma planes from one sampling to another by averages of neighbours. The columns below a limit round averages up,
// the rest round down.
#include "moxcc/sampling.h"

#include "video/sampling.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

using Plane = C1<Mox8u>;
template <int N>
using OneChannel = Block<Mox8u, 1, N>;

template <class Rounding, int N>
MOX_INLINE OneChannel<N> mean(const OneChannel<N>& a, const OneChannel<N>& b) {
    return {{{{Rounding::mean(a.c[0].v[0], b.c[0].v[0])}}}};
}

/// A sample and the one between it and the next.
template <class Rounding>
struct Between {
    template <class D, int N>
    MOX_INLINE RowPair<OneChannel<N>> apply(const RowPair<OneChannel<N>>& in) const {
        return {{in.row[0], mean<Rounding>(in.row[0], in.row[1])}};
    }
};
/// The two rows for a sample, in: columns a, b of a row and of the next.
template <class Rounding>
struct BetweenFour {
    template <class D, int N>
    MOX_INLINE auto apply(const RowPair<RowPair<OneChannel<N>>>& in) const {
        const OneChannel<N> a = in.row[0].row[0], below = in.row[0].row[1];
        const OneChannel<N> right = mean<Rounding>(a, in.row[1].row[0]);
        const OneChannel<N> belowRight = mean<Rounding>(below, in.row[1].row[1]);
        return RowPair<RowPair<OneChannel<N>>>{
            {{{a, right}}, {{mean<Rounding>(a, below), mean<Rounding>(right, belowRight)}}}};
    }
};
/// The last row's pair of rows: only the upper one is interpolated.
template <class Rounding>
struct BetweenLast {
    template <class D, int N>
    MOX_INLINE auto apply(const RowPair<OneChannel<N>>& in) const {
        return RowPair<RowPair<OneChannel<N>>>{{Between<Rounding>{}.template apply<D>(in), {{in.row[0], in.row[0]}}}};
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
using yvu411toyuv420_sse2_asm = WithNextColumn<Plane, TwoColumns<Plane>, Between>;
using yuv420toyuv411_sse2_asm = Split<TwoRows<EvenColumns<1>>, TwoRows<Plane>, 32, Between<Up>, Between<Down>>;
using yuv420toyuv1620_sse2_asm = AllColumns<EvenColumns<1>, Plane, Unchanged>;
using yvu1620toyuv420_sse2_asm = WithNextColumn<TwoRows<Plane>, TwoRows<TwoColumns<Plane>>, BetweenFour>;
using yvu1620toyuv420LastRow = WithNextColumn<Plane, TwoRows<TwoColumns<Plane>>, BetweenLast>;

/// Copies luma, and takes each chroma plane by `Plane`.
template <class Plane>
struct EachChroma {
    using Src = Planar<Mox8u, 3>;
    using Dst = Src;
    void picture(const Image<const uint8_t, 3>& src, const Image<uint8_t, 3>& dst, MoxiSize size) const {
        copyPlane(lumaOf(src), lumaOf(dst), size);
        for (int i = 1; i < 3; ++i) Plane::convert(src.plane(i), dst.plane(i), size.width / 4, size.height);
    }
};

using From = Image<const uint8_t, 1>;
using To = Image<uint8_t, 1>;

struct Chroma411To420 {
    static void convert(const From& src, const To& dst, int columns, int height) {
        eachRow(yvu411toyuv420_sse2_asm{}, evenRows(src), dst, {columns, height / 2});
    }
};
struct Chroma420To411 {
    static void convert(const From& src, const To& dst, int columns, int height) {
        const int last = height / 2 - 1;
        eachRow(yuv420toyuv411_sse2_asm{}, join(src, from(src, 1)), rowPairs(dst), {columns, last});
        eachRow(yuv420toyuv411_sse2_asm{}, from(join(src, src), last), from(rowPairs(dst), last), {columns, 1});
    }
};
struct Chroma420To1620 {
    static void convert(const From& src, const To& dst, int columns, int height) {
        eachRow(yuv420toyuv1620_sse2_asm{}, evenRows(src), dst, {columns, height / 4});
    }
};
struct Chroma1620To420 {
    static void convert(const From& src, const To& dst, int columns, int height) {
        const int last = height / 4 - 1;
        eachRow(yvu1620toyuv420_sse2_asm{}, join(src, from(src, 1)), rowPairs(dst), {columns, last});
        eachRow(yvu1620toyuv420LastRow{}, from(src, last), from(rowPairs(dst), last), {columns, 1});
    }
};

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

constexpr Order whole = {{Test::pointers, Test::planes, Test::size, Test::wholeCells}};

template <class Plane, int height>
constexpr auto resamples = converts<EachChroma<Plane>, whole, AtLeast{4, height}>;

// clang-format off
template <> constexpr auto entry<moxiYCbCr411To420_8u_P3R>  = resamples<Chroma411To420, 4>;
template <> constexpr auto entry<moxiYCbCr420To411_8u_P3R>  = resamples<Chroma420To411, 2>;
template <> constexpr auto entry<moxiYCbCr420To1620_8u_P3R> = resamples<Chroma420To1620, 4>;
template <> constexpr auto entry<moxiYCbCr1620To420_8u_P3R> = resamples<Chroma1620To420, 4>;
// clang-format on

}  // namespace q4

#include "plane_resampling.inc"
