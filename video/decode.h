// Decoding of subsampled video: each pixel takes the chroma of its cell, unfiltered.
//
// A table line names the source layout, the destination, and the rules of columns below a limit and of the rest, as for
// full resolution; what becomes of the columns that no whole cell covers is told by the row kernel that holds the line.
#pragma once

#include "frame/convert.h"
#include "frame/video_layouts.h"

namespace q4 {

// ---- rules on cells -------------------------------------------------------------------------------------------------

/// A rule of fixed_point.h on the pixels of cells: what depends on chroma alone is worked out once for each cell.
template <class Rule>
struct OnCells {
    template <class D, int rows>
    MOX_INLINE auto apply(const WideYccBlock<rows>& in) const {
        const auto terms = Rule{}.chroma({{in.chroma[0], in.chroma[1]}});
        const U8 columns = pattern(0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15);
        RowsOfBlocks<rows> out;
        for (int i = 0; i < rows; ++i) {
            const Px<I16, 3> even = Rule{}.pixel(in.even[i], terms), odd = Rule{}.pixel(in.odd[i], terms);
            for (int c = 0; c < 3; ++c) rowOf(out, i).c[c].v[0] = shuffle(narrowU8(even.c[c], odd.c[c]), columns);
        }
        return out;
    }

  private:
    using OneRow = Block<uint8_t, 3, lumaPixels>;
    template <int rows>
    using RowsOfBlocks = std::conditional_t<rows == 1, OneRow, RowPair<OneRow>>;
    MOX_INLINE static OneRow& rowOf(OneRow& block, int) { return block; }
    MOX_INLINE static OneRow& rowOf(RowPair<OneRow>& pair, int i) { return pair.row[i]; }
};

/// A layout read as decoders want it.
template <class Layout>
struct Wide : Layout {
    template <int N>
    MOX_INLINE static auto load(const SrcRows<Layout::rowPointers>& rows, ptrdiff_t x) {
        return Layout::template loadWide<N>(rows, x);
    }
};

// ---- rows -----------------------------------------------------------------------------------------------------------

/// A row kernel with one rule for the columns below the width rounded down to a multiple of `group`, and another for the
/// rest. A destination of four channels gets aval in the fourth.
template <class Src_, class Dst_, int group, class Below, class Above = Below>
struct Decode {
    using Src = Wide<Src_>;
    using Dst = Dst_;
    Mox8u aval = 0;

    template <class Rule>
    MOX_INLINE auto colours() const {
        if constexpr (Dst::channels == 4)
            return WithFourth<OnCells<Rule>, Mox8u>{{}, aval};
        else
            return OnCells<Rule>{};
    }
    MOX_INLINE void row(const SrcRows<Src::rowPointers>& src, const DstRows<Dst::rowPointers>& dst,
                        ptrdiff_t width) const {
        const auto below = colours<Below>();
        const auto above = colours<Above>();
        constexpr bool dealt = Src_::planes == 1 && fourSamples<Dst>;
        Split<Wide<DealtIf<dealt, Src_>>, DealtIf<dealt, Dst>, group, decltype(below), decltype(above)>{below, above}
            .row(src, dst, width);
    }
};

/// The last column of an odd width is not written.
template <class Kernel>
struct WholePairs : Kernel {
    MOX_INLINE void row(const SrcRows<Kernel::Src::rowPointers>& src, const DstRows<Kernel::Dst::rowPointers>& dst,
                        ptrdiff_t width) const {
        Kernel::row(src, dst, width & -2);
    }
};

/// The rows of a layout from column x on.
template <class Layout, class Byte>
MOX_INLINE auto fromColumn(RowsOf<Byte, Layout::rowPointers> rows, ptrdiff_t x) {
    for (int i = 0; i < Layout::rowPointers; ++i) rows.p[i] += Layout::bytes(i, x);
    return rows;
}

/// The last pixel of an odd width of packed 4:2:2 has one chroma sample beside it; it takes the other from the pair
/// before, or, alone in its row, its own for both.
template <class Kernel, class Last, class Alone = Last>
struct WithOddPixel : Kernel {
    using Dst = typename Kernel::Dst;
    struct Src : Kernel::Src {
        static constexpr ptrdiff_t bytes(int, ptrdiff_t n) { return 2 * ((n + 1) & -2); }
    };

    MOX_INLINE void row(const SrcRows<1>& src, const DstRows<Dst::rowPointers>& dst, ptrdiff_t width) const {
        const ptrdiff_t x = width & -2;
        Kernel::row(src, dst, x);
        if (x == width) return;
        const auto cell = Src::lastCell(src.p[0] + 2 * x, x > 0);
        const SrcRows<1> from = {{cell.bytes}};
        const auto to = fromColumn<Dst>(dst, x);
        if (x > 0)
            span<Src, Dst>(from, to, 0, 1, this->template colours<Last>());
        else
            span<Src, Dst>(from, to, 0, 1, this->template colours<Alone>());
    }
};

// ---- entries of 4:2:0 -----------------------------------------------------------------------------------------------

inline MoxStatus oddSizeWarning(MoxiSize roiSize) {
    return roiSize.width % 2 || roiSize.height % 2 ? moxStatusOddSize : moxStatusOk;
}

/// Runs a kernel over the whole cells. Its destination is pairs of rows.
template <class Kernel, int n, class D>
MoxStatus decodeCells(const Kernel& kernel, const Image<const uint8_t, n>& src, D* dst, ptrdiff_t dstStep,
                      MoxiSize roiSize) {
    eachRow(kernel, src, rowPairs(imageOf<typename Kernel::Dst::Row>(dst, dstStep)), wholeCells(roiSize, 2, 2));
    return oddSizeWarning(roiSize);
}

/// From three planes.
template <class Kernel, class D>
MoxStatus decode420(const Kernel& kernel, const Mox8u* const* srcPlanes, const int32_t* srcSteps, D* dst,
                    ptrdiff_t dstStep, MoxiSize roiSize, MoxiSize smallest = {1, 1}) {
    if (MoxStatus s = checkPicture<PlanesTested::afterSize, 3, 3>(srcPlanes, dst, roiSize, smallest)) return s;
    return decodeCells(kernel, cells420(srcPlanes, srcSteps), dst, dstStep, roiSize);
}

/// From a plane of luma and one of chroma pairs.
template <class Kernel>
MoxStatus decode420(const Kernel& kernel, const Mox8u* srcY, int32_t srcYStep, const Mox8u* srcCbCr,
                    int32_t srcCbCrStep, Mox8u* dst, ptrdiff_t dstStep, MoxiSize roiSize) {
    if (MoxStatus s = firstOf(notNull(srcY, srcCbCr, dst), sizeAtLeast(roiSize, 1, 1))) return s;
    return decodeCells(kernel, cells420(srcY, srcYStep, srcCbCr, srcCbCrStep), dst, dstStep, roiSize);
}

}  // namespace q4
