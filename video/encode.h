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

#include "frame/convert.h"
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
using Chroma = PerChannel<Cb, Cr>;

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

/// Luma alone, as a rule for pixels.
template <class Luma>
using LumaOnly = PerChannel<Luma>;

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

// ---- layouts --------------------------------------------------------------------------------------------------------

using RGB = C3<Mox8u>;
using RGBA = AC4<Mox8u>;
using BGR = Reversed<RGB>;
using BGRA = Reversed<RGBA>;
using PlanarRGB = P3<Mox8u>;

using PlanarYCrCb420 = Crossed<Planar420>;

// ---- kernels --------------------------------------------------------------------------------------------------------

/// The columns that whole passes take, then at most one pass of each narrower width.
template <int pass, int... single>
struct Passes {
    static constexpr ptrdiff_t limit(ptrdiff_t width) { return ((width & -pass) + ... + (width & single)); }
};

/// All that whole cells cover.
struct AllCells {
    static constexpr ptrdiff_t limit(ptrdiff_t width) { return width; }
};

/// Encodes a row of cells: columns below the limit, other whole cells, and the rest. Without a rule for the rest, it is
/// neither read nor written.
template <class Pixels_, class Dst_, class Limit, class Below, class Above, class Rest = void>
struct Encode {
    using Pixels = Pixels_;
    using Dst = Dst_;
    static constexpr int cellRows = Dst::BlockType::rows;
    static constexpr int cellWidth = Dst::BlockType::cellWidth;
    using Src = std::conditional_t<cellRows == 2, TwoRows<Pixels>, Pixels>;

    MOX_INLINE void row(const SrcRows<Src::rowPointers>& src, const DstRows<Dst::rowPointers>& dst,
                        ptrdiff_t width) const {
        const ptrdiff_t whole = width & -cellWidth, limit = Limit::limit(whole);
        columns<Below>(src, dst, 0, limit);
        columns<Above>(src, dst, limit, whole);
        if constexpr (!std::is_void_v<Rest>) columns<Rest>(src, dst, whole, width);
    }

  private:
    template <class Rules>
    MOX_INLINE static void columns(const SrcRows<Src::rowPointers>& src, const DstRows<Dst::rowPointers>& dst,
                                   ptrdiff_t x, ptrdiff_t end) {
        constexpr bool dealt = fourSamples<Pixels> && cellWidth == 2;
        span<DealtIf<dealt, Src>, DealtIf<dealt, Dst>>(src, dst, x, end, Cells<cellWidth, Rules>{});
    }
};

/// Runs a kernel over all rows of cells. 4:2:0 and 4:1:1 warn of pixels that are in no whole cell.
template <class Kernel, int n>
MoxStatus encodeCells(const Kernel& kernel, const Image<const uint8_t, n>& src,
                      const Image<uint8_t, Kernel::Dst::rowPointers>& dst, MoxiSize size) {
    constexpr int cellRows = Kernel::cellRows, cellWidth = Kernel::cellWidth;
    if constexpr (cellRows == 2)
        eachRow(kernel, rowPairs(src), dst, {size.width, size.height / 2});
    else
        eachRow(kernel, src, dst, size);
    constexpr bool warns = cellRows * cellWidth == 4;
    return warns && (size.width % cellWidth || size.height % cellRows) ? moxStatusOddSize : moxStatusOk;
}

/// The pointers in plane arrays are tested before the size.
inline constexpr PlanesTested planesFirst = PlanesTested::beforeSize;

/// Tests the arguments and encodes the picture. Pixels come as one picture or as planes with one step; the destination is
/// one picture, or planes with a step each.
template <class Kernel, PlanesTested tested = PlanesTested::afterSize, class S, class D, class DstStep>
MoxStatus encode(S* src, int32_t srcStep, D* dst, DstStep dstStep, MoxiSize roiSize, MoxiSize smallest = {1, 1}) {
    using Dst = typename Kernel::Dst;
    if (MoxStatus s = checkPicture<tested, Kernel::Pixels::planes, Dst::planes>(src, dst, roiSize, smallest)) return s;
    const auto from = imageOf<typename Kernel::Pixels>(src, srcStep);
    if constexpr (Kernel::cellRows == 2)
        return encodeCells(Kernel{}, from, cells420(dst, dstStep), roiSize);
    else
        return encodeCells(Kernel{}, from, imageOf<Dst>(dst, dstStep), roiSize);
}

/// The same for a luma plane and a plane of chroma pairs.
template <class Kernel>
MoxStatus encode(const Mox8u* src, int32_t srcStep, Mox8u* dstY, int32_t dstYStep, Mox8u* dstChroma,
                 int32_t dstChromaStep, MoxiSize roiSize, MoxiSize smallest = {1, 1}) {
    if (MoxStatus s = firstOf(notNull(src, dstY, dstChroma), sizeAtLeast(roiSize, smallest.width, smallest.height)))
        return s;
    return encodeCells(Kernel{}, image(src, srcStep), cells420(dstY, dstYStep, dstChroma, dstChromaStep), roiSize);
}

}  // namespace q4
