// Encoding into subsampled video: luma for every pixel, chroma from the sums over each cell of pixels.
//
// A row of cells has up to three parts, each with rules of its own: columns below a limit, the rest of the whole cells,
// and what is left of a cell, such as the last pixel of an odd width:
//
//     using innerX = Encode<C3<Mox8u>, YCbCr422, Passes<8>, LumaChroma<YL3, YC3>, LumaChroma<YL1, YC1>>;
//
// The rules of a part are a type with
//
//     Px<I16, n> terms(pixels)                      what a pixel gives beside its colour, n values
//     I16 luma(Px<I16, n>)                          a pixel's luma from its terms, 0 to 255
//     Px<I16, 2> chroma(colours, Px<I16, n>)        the chroma of a cell from the sums of its colours and of its terms
//
// where pixels and colours have samples that scaled() reads. Sums that do not fit 16 bits wrap; a rule may take them as
// unsigned.
#pragma once

#include "frame/entry.h"
#include "frame/video_layouts.h"
#include "models/weighted_sum.h"

namespace q4 {

// ---- pixels of a block ----------------------------------------------------------------------------------------------
//
// The even columns of a block and the odd ones fill a vector of 16-bit samples each, and so do the sums over pairs of
// them: what belongs to a pair has one place in all three.

struct EvenPixels {
    U8 c[3];
};
struct OddPixels {
    U8 c[3];
};

template <int scale>
MOX_INLINE I16 scaled(const EvenPixels& p, int c) {
    if constexpr (scale == 0) return as<I16>(as<U16>(p.c[c]) & splat<U16>(0x00FF));
    if constexpr (scale > 0 && scale < 7) return dotPairs(p.c[c], as<I8>(splat<U16>(1 << scale)));
    if constexpr (scale == 8) return as<I16>(shl<8>(as<U16>(p.c[c])));
    static_assert(scale != 7 && scale <= 8);
}
template <int scale>
MOX_INLINE I16 scaled(const OddPixels& p, int c) {
    if constexpr (scale == 0) return as<I16>(shr<8>(as<U16>(p.c[c])));
    if constexpr (scale > 0 && scale < 7) return dotPairs(p.c[c], as<I8>(splat<U16>(1 << scale << 8)));
    if constexpr (scale == 8) return as<I16>(as<U16>(p.c[c]) & splat<U16>(0xFF00));
    static_assert(scale != 7 && scale <= 8);
}
/// Samples of 0 to 255 in turn. A multiplication leaves the ports of shifts and shuffles, which are busiest, alone.
MOX_INLINE U8 inTurn(I16 even, I16 odd) { return as<U8>(even | odd * splat<I16>(256)); }

/// The sums over the cells of a block in one row or two, one sum for each channel.
template <int cellWidth, int rows>
struct CellSums {
    static_assert(cellWidth == 2 || cellWidth == 4);
    U8 c[rows][3];

    /// The sums over the cells of a row from those over pairs.
    MOX_INLINE static I16 ofPairs(I16 pairs) { return cellWidth == 2 ? pairs : pairSums(pairs, pairs); }
};
template <int scale, int cellWidth, int rows>
MOX_INLINE I16 scaled(const CellSums<cellWidth, rows>& sums, int c) {
    static_assert(scale < 7);
    I16 pairs = dotPairs(sums.c[0][c], splat<I8>(1 << scale));
    for (int r = 1; r < rows; ++r) pairs = pairs + dotPairs(sums.c[r][c], splat<I8>(1 << scale));
    return sums.ofPairs(pairs);
}

// ---- rules ----------------------------------------------------------------------------------------------------------

/// Two rules for the two chroma samples.
template <class Cb, class Cr>
using CbCr = PerChannel<Cb, Cr>;

/// Luma from the pixel's colour, in odd columns perhaps by another rule, and chroma from the sums of colours.
template <class Luma, class ChromaRule, class OddLuma = Luma>
struct LumaChroma {
    MOX_INLINE static Px<I16, 1> terms(const EvenPixels& p) { return {{Luma{}(p)}}; }
    MOX_INLINE static Px<I16, 1> terms(const OddPixels& p) { return {{OddLuma{}(p)}}; }
    MOX_INLINE static I16 luma(const Px<I16, 1>& terms) { return terms.c[0]; }
    template <class Sums>
    MOX_INLINE static Px<I16, 2> chroma(const Sums& colours, const Px<I16, 1>&) {
        return ChromaRule{}(colours);
    }
};

// ---- blocks of cells ------------------------------------------------------------------------------------------------

/// The low half of a chroma vector from a vector of 16-bit samples.
MOX_INLINE U8 lowHalf(I16 samples) { return narrowU8(samples, samples); }

/// Applies the rules of cells to a block of one row of pixels, or of two.
template <int cellWidth, class Rules>
struct Cells {
    template <class D, int N>
    MOX_INLINE auto apply(const Block<uint8_t, 3, N>& row) const {
        const Block<uint8_t, 3, N> rows[] = {row};
        return encode(rows);
    }
    template <class D, int N>
    MOX_INLINE auto apply(const RowPair<Block<uint8_t, 3, N>>& pair) const {
        return encode(pair.row);
    }

  private:
    template <int N, int rows>
    MOX_INLINE static auto encode(const Block<uint8_t, 3, N> (&row)[rows]) {
        using Terms = decltype(Rules::terms(EvenPixels{}));
        constexpr int termCount = sizeof(Terms) / sizeof(I16);
        YccBlock<rows, cellWidth> out;
        CellSums<cellWidth, rows> colours;
        Terms sums = {};
        for (int r = 0; r < rows; ++r) {
            const U8(&c)[3] = {row[r].c[0].v[0], row[r].c[1].v[0], row[r].c[2].v[0]};
            const Terms even = Rules::terms(EvenPixels{{c[0], c[1], c[2]}});
            const Terms odd = Rules::terms(OddPixels{{c[0], c[1], c[2]}});
            out.y[r] = inTurn(Rules::luma(even), Rules::luma(odd));
            for (int t = 0; t < termCount; ++t) sums.c[t] = sums.c[t] + (even.c[t] + odd.c[t]);
            for (int i = 0; i < 3; ++i) colours.c[r][i] = c[i];
        }
        for (I16& sum : sums.c) sum = colours.ofPairs(sum);
        const Px<I16, 2> chroma = Rules::chroma(colours, sums);
        for (int i = 0; i < 2; ++i) out.chroma[i] = lowHalf(chroma.c[i]);
        return out;
    }
};

// ---- kernels --------------------------------------------------------------------------------------------------------

template <class Dst>
inline constexpr int cellWidth = Dst::BlockType::cellWidth;
/// The rows of pixels for a row of cells.
template <class Dst, class Pixels>
using PixelsOf = std::conditional_t<Dst::rowsAtOnce == 2, TwoRows<Pixels>, Pixels>;
template <class Pixels, class Dst>
inline constexpr bool encodesDealt = fourSamples<Pixels>&& cellWidth<Dst> == 2;

/// All that whole cells cover.
struct AllCells {
    static constexpr ptrdiff_t limit(ptrdiff_t width) { return width; }
};

/// Encodes a row of cells: columns below the limit, other whole cells, and perhaps the rest.
template <class Pixels, class Dst, class Limit, class Below, class Above, class... Rest>
using Encode =
    InParts<DealtIf<encodesDealt<Pixels, Dst>, PixelsOf<Dst, Pixels>>, DealtIf<encodesDealt<Pixels, Dst>, Dst>, Limit,
            cellWidth<Dst>, Cells<cellWidth<Dst>, Below>, Cells<cellWidth<Dst>, Above>, Cells<cellWidth<Dst>, Rest>...>;

}  // namespace q4
