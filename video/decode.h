// Decoding of subsampled video: each pixel takes the chroma of its cell, unfiltered.
//
// A table line names the source layout, the destination, and the rules of columns below a limit and of the rest, as for
// full resolution.
#pragma once

#include "frame/entry.h"
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
struct ForDecoding : Layout {
    template <int N>
    MOX_INLINE static auto load(const SrcRows<Layout::rowPointers>& rows, ptrdiff_t x) {
        return Layout::template loadWide<N>(rows, x);
    }
};

// ---- rows -----------------------------------------------------------------------------------------------------------

/// What a destination gets of cells: a fourth channel holds the value that the call gives.
template <class Dst, class Rule>
using Colours = std::conditional_t<Dst::channels == 4, WithFourth<OnCells<Rule>, Mox8u>, OnCells<Rule>>;

template <class Src, class Dst>
inline constexpr bool decodesDealt = Src::planes == 1 && fourSamples<Dst>;

/// Columns below a limit, others of whole cells, the rest.
template <class Src, class Dst, class Limit, int cellWidth, class Below, class Above, class... Rest>
using DecodeCells = InParts<ForDecoding<DealtIf<decodesDealt<Src, Dst>, Src>>, DealtIf<decodesDealt<Src, Dst>, Dst>,
                            Limit, cellWidth, Colours<Dst, Below>, Colours<Dst, Above>, Colours<Dst, Rest>...>;

/// Columns below the width rounded down to a multiple of `group`, and the rest.
template <class Src, class Dst, int group, class Below, class Above = Below>
using Decode = DecodeCells<Src, Dst, Passes<group>, 1, Below, Above>;

/// The rows of a layout from column x on.
template <class Layout, class Byte>
MOX_INLINE auto fromColumn(RowsOf<Byte, Layout::rowPointers> rows, ptrdiff_t x) {
    for (int i = 0; i < Layout::rowPointers; ++i) rows.p[i] += Layout::bytes(i, x);
    return rows;
}

/// Packed 4:2:2. The last pixel of an odd width has one chroma sample beside it; it takes the other from the pair
/// before, or, alone in its row, its own for both.
template <class Packed, class Dst_, int group, class Below, class Above, class Last, class Alone = Last>
struct DecodePacked {
    /// Staging holds whole cells.
    struct Src : ForDecoding<Packed> {
        static constexpr ptrdiff_t bytes(int, ptrdiff_t n) { return 2 * ((n + 1) & -2); }
    };
    using Dst = Dst_;
    Decode<Packed, Dst, group, Below, Above> pairs;
    Colours<Dst, Last> last;
    Colours<Dst, Alone> alone;

    template <class... Aval>
    MOX_INLINE static DecodePacked of(Aval... aval) {
        return {partOf<decltype(pairs)>(aval...), partOf<decltype(last)>(aval...), partOf<decltype(alone)>(aval...)};
    }
    MOX_INLINE void row(const SrcRows<1>& src, const DstRows<Dst::rowPointers>& dst, ptrdiff_t width) const {
        const ptrdiff_t x = width & -2;
        pairs.row(src, dst, x);
        if (x == width) return;
        const auto cell = Src::lastCell(src.p[0] + 2 * x, x > 0);
        const auto to = fromColumn<Dst>(dst, x);
        if (x > 0)
            span<Src, Dst>({{cell.bytes}}, to, 0, 1, last);
        else
            span<Src, Dst>({{cell.bytes}}, to, 0, 1, alone);
    }
};

}  // namespace q4
