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
    template <class D, int rows, int cellWidth>
    MOX_INLINE auto apply(const YccBlock<rows, cellWidth>& in) const {
        const auto terms = Rule{}.chroma({{perPair<cellWidth>(in.chroma[0]), perPair<cellWidth>(in.chroma[1])}});
        auto low = terms, high = terms;  // of the first and the second eight pixels of each lane
        for (I16& v : low.c) v = unpackLo<16>(v, v);
        for (I16& v : high.c) v = unpackHi<16>(v, v);

        Block<uint8_t, 3, lumaPixels> out[rows];
        for (int i = 0; i < rows; ++i) {
            const Px<I16, 3> a = Rule{}.pixel(as<I16>(widenLo(in.y[i])), low);
            const Px<I16, 3> b = Rule{}.pixel(as<I16>(widenHi(in.y[i])), high);
            for (int c = 0; c < 3; ++c) out[i].c[c].v[0] = narrowU8(a.c[c], b.c[c]);
        }
        if constexpr (rows == 1)
            return out[0];
        else
            return RowPair{out[0], out[1]};
    }

  private:
    /// Eight chroma samples of each lane, one for two pixels.
    template <int cellWidth>
    MOX_INLINE static I16 perPair(U8 chroma) {
        return as<I16>(widenLo(cellWidth == 4 ? unpackLo<8>(chroma, chroma) : chroma));
    }
};

// ---- rows -----------------------------------------------------------------------------------------------------------

/// A row kernel with one rule for the columns below the width rounded down to a multiple of `group`, and another for the
/// rest. A destination of four channels gets aval in the fourth.
template <class Src_, class Dst_, int group, class Below, class Above = Below>
struct Decode {
    using Src = Src_;
    using Dst = Dst_;
    Mox8u aval = 0;

    template <class Rule>
    MOX_INLINE auto colours() const {
        if constexpr (Dst::channels == 4)
            return WithFourth<OnCells<Rule>, Mox8u>{{}, aval};
        else
            return OnCells<Rule>{};
    }
    MOX_INLINE void row(const SrcRows<Src::planes>& src, const DstRows<Dst::planes>& dst, ptrdiff_t width) const {
        const auto below = colours<Below>();
        const auto above = colours<Above>();
        Split<Src, Dst, group, decltype(below), decltype(above)>{below, above}.row(src, dst, width);
    }
};

/// The last column of an odd width is not written.
template <class Kernel>
struct WholePairs : Kernel {
    MOX_INLINE void row(const SrcRows<Kernel::Src::planes>& src, const DstRows<Kernel::Dst::planes>& dst,
                        ptrdiff_t width) const {
        Kernel::row(src, dst, width & -2);
    }
};

/// The rows of a layout from column x on.
template <class Layout, class Byte>
MOX_INLINE auto fromColumn(RowsOf<Byte, Layout::planes> rows, ptrdiff_t x) {
    for (int i = 0; i < Layout::planes; ++i) rows.p[i] += Layout::bytes(i, x);
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

    MOX_INLINE void row(const SrcRows<1>& src, const DstRows<Dst::planes>& dst, ptrdiff_t width) const {
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
