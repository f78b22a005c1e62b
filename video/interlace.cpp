// Chroma between 4:2:2 and 4:2:0 within each field of an interlaced picture. The two fields are the even and the odd
// rows. A chroma row stands elsewhere in each, so the weights of its two neighbours differ from field to field.
#include "moxcc/chroma_filter.h"
#include "video/sampling.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

/// A mean of two rows in eighths, rounded.
struct Weights {
    int first, second;

    MOX_INLINE U8 mean(U8 a, U8 b) const {
        const I8 weights = as<I8>(splat<U16>(uint16_t(second << 8 | first)));
        const auto eighths = [&](U8 pairs) { return shr<3>(dotPairs(pairs, weights) + splat<I16>(4)); };
        return narrowU8(eighths(unpackLo<8>(a, b)), eighths(unpackHi<8>(a, b)));
    }
    template <int C, int N>
    MOX_INLINE Block<Mox8u, C, N> mean(const Block<Mox8u, C, N>& a, const Block<Mox8u, C, N>& b) const {
        Block<Mox8u, C, N> out;
        for (int c = 0; c < C; ++c) out.c[c].v[0] = mean(a.c[c].v[0], b.c[c].v[0]);
        return out;
    }
    /// Of chroma; luma is a's.
    MOX_INLINE YccBlock<1, 2> mean(const YccBlock<1, 2>& a, const YccBlock<1, 2>& b) const {
        return {{a.y[0]}, {mean(a.chroma[0], b.chroma[0]), mean(a.chroma[1], b.chroma[1])}};
    }
};

/// One chroma row of two.
struct Merge {
    Weights weights;
    template <class D, int C, int N>
    MOX_INLINE Block<D, C, N> apply(const RowPair<Block<D, C, N>>& in) const {
        return weights.mean(in.row[0], in.row[1]);
    }
    template <class D>
    MOX_INLINE YccBlock<2, 2> apply(const RowPair<YccBlock<1, 2>>& in) const {
        const YccBlock<1, 2> merged = weights.mean(in.row[0], in.row[1]);
        return {{in.row[0].y[0], in.row[1].y[0]}, {merged.chroma[0], merged.chroma[1]}};
    }
};

/// The two chroma rows between two.
struct Interpolate {
    Weights upper, lower;
    template <class D, class B>
    MOX_INLINE RowPair<B> apply(const RowPair<B>& in) const {
        RowPair<B> out = {{upper.mean(in.row[0], in.row[1]), lower.mean(in.row[0], in.row[1])}};
        if constexpr (requires { in.row[0].y; }) out.row[1].y[0] = in.row[1].y[0];
        return out;
    }
};

// ---- fields ---------------------------------------------------------------------------------------------------------

constexpr Merge mergeField[2] = {{{6, 2}}, {{2, 6}}};
constexpr Interpolate interpolateField[2] = {{{5, 3}, {1, 7}}, {{7, 1}, {3, 5}}};

template <class Byte, int n>
Image<Byte, n> field(const Image<Byte, n>& picture, int parity) {
    return evenRows(from(picture, parity));
}

using ChromaPlanes = Planar<Mox8u, 2>;

template <class Src, class Dst>
using MergeRows = AllColumns<TwoRows<Src>, Dst, Merge>;

/// The rows of a field, from half as many chroma rows: the first and the last as they are, the rows between in pairs.
/// src(y, chromaRow) is what row y is made of.
template <class SrcLayout, class DstLayout, class Src>
void interpolateRows(const Interpolate& rule, const Src& src, const Image<uint8_t, DstLayout::planes>& dst,
                     MoxiSize size) {
    const AllColumns<SrcLayout, DstLayout, Unchanged> copy;
    const AllColumns<TwoRows<SrcLayout>, TwoRows<DstLayout>, Interpolate> between = {rule};
    const ptrdiff_t last = size.height - 1;
    copy.row(src(0, 0), dst.row(0), size.width);
    for (ptrdiff_t y = 1, k = 0; y < last; y += 2, ++k)
        between.row(join(src(y, k), src(y + 1, k + 1)), join(dst.row(y), dst.row(y + 1)), size.width);
    copy.row(src(last, last / 2), dst.row(last), size.width);
}

// ---- kernels --------------------------------------------------------------------------------------------------------

/// Whole groups of four rows, a field at a time.
template <class Src_, class Dst_, class Field>
struct EachField {
    using Src = Src_;
    using Dst = Dst_;
    static constexpr MoxiSize warnsOutside = {2, 4};

    void picture(const Image<const uint8_t, Src::planes>& src, const Image<uint8_t, Dst::planes>& dst,
                 MoxiSize size) const {
        const MoxiSize whole = {size.width & -2, size.height & -4};
        if constexpr (hasLumaPlane<Src> && hasLumaPlane<Dst>) copyPlane(lumaOf(src), lumaOf(dst), whole);
        for (int parity = 0; parity < 2; ++parity)
            Field::convert(parity, field(src, parity), field(dst, parity), {whole.width, whole.height / 2});
    }
};

using From = Image<const uint8_t, 3>;
using To = Image<uint8_t, 3>;

struct MergePlanes {
    static void convert(int parity, const From& src, const To& dst, MoxiSize size) {
        eachRow(MergeRows<ChromaPlanes, ChromaPlanes>{mergeField[parity]}, rowPairs(chromaOf(src)), chromaOf(dst),
                {size.width / 2, size.height / 2});
    }
};
struct MergePacked {
    static void convert(int parity, const Image<const uint8_t, 1>& src, const To& dst, MoxiSize size) {
        eachRow(MergeRows<CbYCr422, Planar420>{mergeField[parity]}, rowPairs(src), Planar420::rowsOf(dst),
                {size.width, size.height / 2});
    }
};
struct InterpolatePlanes {
    static void convert(int parity, const From& src, const To& dst, MoxiSize size) {
        const auto chroma = chromaOf(src);
        interpolateRows<ChromaPlanes, ChromaPlanes>(interpolateField[parity],
                                                    [=](ptrdiff_t, ptrdiff_t k) { return chroma.row(k); },
                                                    chromaOf(dst), {size.width / 2, size.height});
    }
};
struct InterpolateToPacked {
    static void convert(int parity, const From& src, const Image<uint8_t, 1>& dst, MoxiSize size) {
        const auto luma = lumaOf(src);
        const auto chroma = chromaOf(src);
        interpolateRows<Planar422, CbYCr422>(
            interpolateField[parity], [=](ptrdiff_t y, ptrdiff_t k) { return join(luma.row(y), chroma.row(k)); }, dst,
            size);
    }
};

}  // namespace

// ---- entries --------------------------------------------------------------------------------------------------------

template <class Src, class Dst, class Field>
constexpr auto byFields = converts<EachField<Src, Dst, Field>, planesFirst, AtLeast{2, 4}>;

template <>
constexpr auto entry<moxiYCbCr422To420_Interlace_8u_P3R> = byFields<PlanarIn<S422>, PlanarIn<S420>, MergePlanes>;
template <>
constexpr auto entry<moxiCbYCr422ToYCbCr420_Interlace_8u_C2P3R> = byFields<CbYCr422, PlanarIn<S420>, MergePacked>;
template <>
constexpr auto entry<moxiYCbCr420To422_Interlace_8u_P3R> = byFields<PlanarIn<S420>, PlanarIn<S422>, InterpolatePlanes>;
template <>
constexpr auto entry<moxiYCbCr420ToCbYCr422_Interlace_8u_P3C2R> =
    byFields<PlanarIn<S420>, CbYCr422, InterpolateToPacked>;

}  // namespace q4

#include "interlace.inc"
