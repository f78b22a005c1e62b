// How subsampled video lies in memory: luma for every pixel, two chroma samples for each cell of pixels.
//
// These are layouts like those of frame/layout.h, each to be read and written. A block is a vector of luma for each row
// of the cells, and the chroma samples of these pixels in the low half of each lane (cells two pixels wide) or its low
// quarter (cells four wide); what the rest of a chroma vector holds means nothing. The two kinds of chroma are told
// apart by order only: a kernel that gives or takes them the other way round names Crossed<L>.
//
// A column that a layout is asked for is the first of a cell. The samples of n pixels are those of n columns of luma,
// and of all cells that these columns touch; of a packed pair that is cut in half, the first two bytes.
#pragma once

#include "frame/kernel.h"

namespace q4 {

inline constexpr int lumaPixels = vectorBytes;

// Pixels of 8 bits; x: a fourth sample that is not read, and keeps what it held.
using RGB = C3<Mox8u>;
using BGR = Reversed<RGB>;
using RGBA = C4<Mox8u>;
using BGRA = Reversed<RGBA>;
using RGBx = AC4<Mox8u>;
using BGRx = Reversed<RGBx>;
using PlanarRGB = P3<Mox8u>;

/// Luma of vectorBytes columns and the given number of rows, and their chroma, one sample of each kind for a cell of
/// cellWidth columns and all the rows.
template <int rows_, int cellWidth_>
struct YccBlock {
    static constexpr int rows = rows_;
    static constexpr int cellWidth = cellWidth_;
    U8 y[rows];
    U8 chroma[2];
};

/// The same for decoders, on 16-bit lanes: luma of the even and of the odd columns, and the chroma that an even column
/// shares with the odd one behind it.
template <int rows>
struct WideYccBlock {
    I16 even[rows], odd[rows];
    I16 chroma[2];
};

// ---- chroma planes --------------------------------------------------------------------------------------------------

/// The even and the odd bytes of each lane, in its low half.
MOX_INLINE void splitPairs(U8 pairs, U8 (&chroma)[2]) {
    const U8 sorted = shuffle(pairs, pattern(0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15));
    chroma[0] = sorted, chroma[1] = bytesDown<8>(sorted);
}
MOX_INLINE void splitPairs(U8 pairs, I16& even, I16& odd) {
    even = as<I16>(as<U16>(pairs) & splat<U16>(0xFF)), odd = as<I16>(shr<8>(as<U16>(pairs)));
}
MOX_INLINE U8 joinPairs(const U8 (&chroma)[2]) { return unpackLo<8>(chroma[0], chroma[1]); }

/// The low 1 / part of each lane, from and to consecutive bytes.
template <int part>
MOX_INLINE U8 loadPart(const uint8_t* p) {
    if constexpr (part == 1) return load<U8>(p);
    if constexpr (part == 2) return loadHalf<U8>(p);
    if constexpr (part == 4) return loadQuarter<U8>(p);
}
template <int part>
MOX_INLINE void storePart(uint8_t* p, U8 v) {
    if constexpr (part == 1) store(p, v);
    if constexpr (part == 2) storeHalf(p, v);
    if constexpr (part == 4) storeQuarter(p, v);
}

/// A plane for each kind of chroma.
template <int cellWidth_>
struct SeparateChroma {
    static constexpr int cellWidth = cellWidth_;
    static constexpr int planes = 2;
    static constexpr ptrdiff_t bytes(ptrdiff_t n) { return (n + cellWidth - 1) / cellWidth; }

    MOX_INLINE static void load(const uint8_t* const* rows, ptrdiff_t x, U8 (&chroma)[2]) {
        for (int i = 0; i < 2; ++i) chroma[i] = loadPart<cellWidth>(rows[i] + bytes(x));
    }
    MOX_INLINE static void loadWide(const uint8_t* const* rows, ptrdiff_t x, I16 (&chroma)[2]) {
        static_assert(cellWidth == 2 || cellWidth == 4);
        for (int i = 0; i < 2; ++i) {
            const uint8_t* p = rows[i] + bytes(x);
            if constexpr (cellWidth == 2) {
                chroma[i] = as<I16>(loadWidened(p));
            } else {
                const U8 v = loadPart<cellWidth>(p);
                chroma[i] = as<I16>(widenLo(unpackLo<8>(v, v)));
            }
        }
    }
    MOX_INLINE static void store(uint8_t* const* rows, ptrdiff_t x, const U8 (&chroma)[2]) {
        for (int i = 0; i < 2; ++i) storePart<cellWidth>(rows[i] + bytes(x), chroma[i]);
    }
    MOX_INLINE static void storeDealt(uint8_t* const* rows, ptrdiff_t x, const U8 (&chroma)[2]) {
        static_assert(cellWidth == 2);
        storeHalvesDealt(rows[0] + bytes(x), rows[1] + bytes(x), chroma[0], chroma[1]);
    }
};

/// One plane of chroma pairs.
template <int cellWidth_>
struct PairedChroma {
    static constexpr int cellWidth = cellWidth_;
    static constexpr int planes = 1;
    static constexpr ptrdiff_t bytes(ptrdiff_t n) { return (n + cellWidth - 1) / cellWidth * 2; }

    MOX_INLINE static void load(const uint8_t* const* rows, ptrdiff_t x, U8 (&chroma)[2]) {
        splitPairs(loadPart<cellWidth / 2>(rows[0] + bytes(x)), chroma);
    }
    MOX_INLINE static void loadWide(const uint8_t* const* rows, ptrdiff_t x, I16 (&chroma)[2]) {
        static_assert(cellWidth == 2);
        splitPairs(q4::load<U8>(rows[0] + bytes(x)), chroma[0], chroma[1]);
    }
    MOX_INLINE static void store(uint8_t* const* rows, ptrdiff_t x, const U8 (&chroma)[2]) {
        storePart<cellWidth / 2>(rows[0] + bytes(x), joinPairs(chroma));
    }
    MOX_INLINE static void storeDealt(uint8_t* const* rows, ptrdiff_t x, const U8 (&chroma)[2]) {
        static_assert(cellWidth == 2);
        q4::store(rows[0] + bytes(x), undeal<4>(joinPairs(chroma)));
    }
};

// ---- layouts --------------------------------------------------------------------------------------------------------

/// A plane of luma and chroma beside it. The row pointers are those of the luma rows of a row of cells, then of chroma.
template <int lumaRows, class Chroma>
struct LumaPlane : LayoutOf<1 + Chroma::planes> {
    using Sample = uint8_t;
    using LayoutOf<1 + Chroma::planes>::planes;
    static constexpr int rowPointers = lumaRows + Chroma::planes;
    static constexpr int rowsAtOnce = lumaRows;
    static constexpr int groupColumns = Chroma::cellWidth;
    static constexpr ptrdiff_t bytes(int row, ptrdiff_t n) { return row < lumaRows ? n : Chroma::bytes(n); }
    using BlockType = YccBlock<lumaRows, Chroma::cellWidth>;

    template <class Byte>
    MOX_INLINE static Image<Byte, rowPointers> rowsOf(const Image<Byte, planes>& image) {
        Image<Byte, rowPointers> result;
        for (int i = 0; i < rowPointers; ++i) {
            const int plane = i < lumaRows ? 0 : i - lumaRows + 1;
            result.base[i] = image.base[plane] + (plane == 0 ? i * image.step[0] : 0);
            result.step[i] = image.step[plane] * (plane == 0 ? lumaRows : 1);
        }
        return result;
    }

    template <int N>
    MOX_INLINE static BlockType load(const SrcRows<rowPointers>& rows, ptrdiff_t x) {
        static_assert(N == lumaPixels);
        BlockType block;
        for (int i = 0; i < lumaRows; ++i) block.y[i] = q4::load<U8>(rows.p[i] + x);
        Chroma::load(rows.p + lumaRows, x, block.chroma);
        return block;
    }
    template <int N>
    MOX_INLINE static WideYccBlock<lumaRows> loadWide(const SrcRows<rowPointers>& rows, ptrdiff_t x) {
        static_assert(N == lumaPixels);
        WideYccBlock<lumaRows> block;
        for (int i = 0; i < lumaRows; ++i) splitPairs(q4::load<U8>(rows.p[i] + x), block.even[i], block.odd[i]);
        Chroma::loadWide(rows.p + lumaRows, x, block.chroma);
        return block;
    }
    template <int N>
    MOX_INLINE static void store(const DstRows<rowPointers>& rows, ptrdiff_t x, const BlockType& block) {
        static_assert(N == lumaPixels);
        for (int i = 0; i < lumaRows; ++i) q4::store(rows.p[i] + x, block.y[i]);
        Chroma::store(rows.p + lumaRows, x, block.chroma);
    }
};

using Planar422 = LumaPlane<1, SeparateChroma<2>>;
using Planar420 = LumaPlane<2, SeparateChroma<2>>;
using Planar411 = LumaPlane<1, SeparateChroma<4>>;
using SemiPlanar420 = LumaPlane<2, PairedChroma<2>>;

enum class Packing { lumaFirst, chromaFirst };

/// 4:2:2 in one row of bytes that are luma and chroma in turn.
template <Packing order, bool dealt = false>
struct Packed422 : LayoutOf<1> {
    using Sample = uint8_t;
    static constexpr int groupColumns = 2;
    static constexpr ptrdiff_t bytes(int, ptrdiff_t n) { return 2 * n; }
    using BlockType = YccBlock<1, 2>;

    template <int N>
    MOX_INLINE static BlockType load(const SrcRows<1>& rows, ptrdiff_t x) {
        const Halves in = halves<N>(rows, x);
        BlockType block = {{everySecond<luma>(in)}, {}};
        splitPairs(everySecond<1 - luma>(in), block.chroma);
        return block;
    }
    template <int N>
    MOX_INLINE static WideYccBlock<1> loadWide(const SrcRows<1>& rows, ptrdiff_t x) {
        const Halves in = halves<N>(rows, x);
        WideYccBlock<1> block;
        widenBytes<luma>(in, block.even[0], block.odd[0]);
        widenBytes<1 - luma>(in, block.chroma[0], block.chroma[1]);
        return block;
    }
    template <int N>
    MOX_INLINE static void store(const DstRows<1>& rows, ptrdiff_t x, const BlockType& block) {
        static_assert(N == lumaPixels);
        const U8 pairs = joinPairs(block.chroma);
        const U8 first = luma == 0 ? block.y[0] : pairs, second = luma == 0 ? pairs : block.y[0];
        storeHalves(rows.p[0] + 2 * x, {{unpackLo<8>(first, second), unpackHi<8>(first, second)}});
    }

    struct Cell {
        uint8_t bytes[4];
    };
    /// The cell of the last pixel of an odd width, of which p holds luma and the first chroma: the second chroma is
    /// that of the pair before, or, if there is none, the first for both.
    static Cell lastCell(const uint8_t* p, bool pairBefore) {
        constexpr int first = 1 - luma;
        Cell cell;
        cell.bytes[luma] = cell.bytes[luma + 2] = p[luma];
        cell.bytes[first] = p[first];
        cell.bytes[first + 2] = pairBefore ? p[first - 2] : p[first];
        return cell;
    }

  private:
    static constexpr int luma = order == Packing::lumaFirst ? 0 : 1;

    /// The bytes of the first and of the second half of each lane's pixels.
    struct Halves {
        U8 v[2];
    };
    template <int N>
    MOX_INLINE static Halves halves(const SrcRows<1>& rows, ptrdiff_t x) {
        static_assert(N == lumaPixels);
        const uint8_t* p = rows.p[0] + 2 * x;
        if constexpr (dealt)
            return {{deal<8>(q4::load<U8>(p)), deal<8>(q4::load<U8>(p + vectorBytes))}};
        else
            return {{q4::load<U8, 32>(p), q4::load<U8, 32>(p + 16)}};
    }
    MOX_INLINE static void storeHalves(uint8_t* p, const Halves& half) {
        if constexpr (dealt)
            q4::store(p, undeal<8>(half.v[0])), q4::store(p + vectorBytes, undeal<8>(half.v[1]));
        else
            storePair<32>(p, half.v[0], half.v[1]);
    }

    /// Every second byte, from the first or the second on.
    template <int first>
    MOX_INLINE static U8 everySecond(const Halves& in) {
        const auto of = [](U8 v) { return as<I16>(first == 0 ? as<U16>(v) & splat<U16>(0xFF) : shr<8>(as<U16>(v))); };
        return narrowU8(of(in.v[0]), of(in.v[1]));
    }
    /// Bytes i and i + 2 of each cell of four.
    template <int i>
    MOX_INLINE static void widenBytes(const Halves& in, I16& first, I16& second) {
        const U8 apart = pattern(i, -1, i + 4, -1, i + 8, -1, i + 12, -1, i + 2, -1, i + 6, -1, i + 10, -1, i + 14, -1);
        const I16 a = as<I16>(shuffle(in.v[0], apart)), b = as<I16>(shuffle(in.v[1], apart));
        first = unpackLo<64>(a, b), second = unpackHi<64>(a, b);
    }
};

using YCbCr422 = Packed422<Packing::lumaFirst>;
using CbYCr422 = Packed422<Packing::chromaFirst>;

/// A layout with its two kinds of chroma exchanged.
template <Layout L>
struct Crossed : L {
    template <int N>
    MOX_INLINE static auto load(const SrcRows<L::rowPointers>& rows, ptrdiff_t x) {
        auto block = L::template load<N>(rows, x);
        std::swap(block.chroma[0], block.chroma[1]);
        return block;
    }
    template <int N>
    MOX_INLINE static auto loadWide(const SrcRows<L::rowPointers>& rows, ptrdiff_t x) {
        auto block = L::template loadWide<N>(rows, x);
        std::swap(block.chroma[0], block.chroma[1]);
        return block;
    }
    template <int N>
    MOX_INLINE static void store(const DstRows<L::rowPointers>& rows, ptrdiff_t x, auto block) {
        std::swap(block.chroma[0], block.chroma[1]);
        L::template store<N>(rows, x, block);
    }
};

using YCrCb422 = Crossed<YCbCr422>;
using PlanarYCrCb420 = Crossed<Planar420>;
using SemiPlanarYCrCb420 = Crossed<SemiPlanar420>;

template <Packing order>
struct Dealt<Packed422<order>> : Packed422<order, true> {};

/// Written only.
template <int lumaRows, class Chroma>
struct Dealt<LumaPlane<lumaRows, Chroma>> : LumaPlane<lumaRows, Chroma> {
    template <int N>
    MOX_INLINE static void store(const DstRows<lumaRows + Chroma::planes>& rows, ptrdiff_t x, const auto& block) {
        for (int i = 0; i < lumaRows; ++i) q4::store(rows.p[i] + x, undeal<4>(block.y[i]));
        Chroma::storeDealt(rows.p + lumaRows, x, block.chroma);
    }
};
template <Layout L>
struct Dealt<Crossed<L>> : Crossed<Dealt<L>> {};

// ---- pairs of rows --------------------------------------------------------------------------------------------------

template <class B>
struct RowPair {
    B row[2];
};
template <class B>
RowPair(B, B) -> RowPair<B>;

template <class T, int N>
MOX_INLINE auto withFourth(const RowPair<Block<T, 3, N>>& in, T value) {
    return RowPair{withFourth(in.row[0], value), withFourth(in.row[1], value)};
}

/// A picture whose rows are pairs of rows, as TwoRows takes them.
template <class Byte, int n>
MOX_INLINE Image<Byte, 2 * n> rowPairs(const Image<Byte, n>& rows) {
    Image<Byte, 2 * n> pairs;
    for (int i = 0; i < 2 * n; ++i) {
        pairs.base[i] = rows.base[i % n] + i / n * rows.step[i % n];
        pairs.step[i] = 2 * rows.step[i % n];
    }
    return pairs;
}

/// Two rows of any layout at a time. The row pointers are those of the upper row, then those of the lower.
template <Layout L>
struct TwoRows : LayoutOf<L::planes> {
    using Row = L;
    using Sample = typename L::Sample;
    static constexpr int rowPointers = 2 * L::rowPointers;
    static constexpr int rowsAtOnce = 2;
    static constexpr int channels = L::channels;
    static constexpr bool keepsOld = L::keepsOld;
    static constexpr int spareBytes = L::spareBytes;
    static constexpr int groupColumns = L::groupColumns;
    static constexpr ptrdiff_t bytes(int row, ptrdiff_t n) { return L::bytes(row % L::rowPointers, n); }

    template <class Byte>
    MOX_INLINE static Image<Byte, rowPointers> rowsOf(const Image<Byte, L::planes>& image) {
        return rowPairs(image);
    }

    template <class Byte>
    MOX_INLINE static RowsOf<Byte, L::rowPointers> one(const RowsOf<Byte, rowPointers>& rows, int row) {
        RowsOf<Byte, L::rowPointers> r;
        for (int i = 0; i < L::rowPointers; ++i) r.p[i] = rows.p[row * L::rowPointers + i];
        return r;
    }
    template <int N>
    MOX_INLINE static auto load(const SrcRows<rowPointers>& rows, ptrdiff_t x) {
        return RowPair{L::template load<N>(one(rows, 0), x), L::template load<N>(one(rows, 1), x)};
    }
    template <int N>
    MOX_INLINE static auto loadAtEnd(const SrcRows<rowPointers>& rows, ptrdiff_t x) {
        return RowPair{L::template loadAtEnd<N>(one(rows, 0), x), L::template loadAtEnd<N>(one(rows, 1), x)};
    }
    template <int N, class B>
    MOX_INLINE static void store(const DstRows<rowPointers>& rows, ptrdiff_t x, const RowPair<B>& pair) {
        for (int i = 0; i < 2; ++i) L::template store<N>(one(rows, i), x, pair.row[i]);
    }
};

template <Layout L>
struct Dealt<TwoRows<L>> : TwoRows<Dealt<L>> {};

/// Two columns of any layout of 8-bit channels for each column asked for: the even ones, then the odd.
template <Layout L>
struct TwoColumns : LayoutOf<L::planes> {
    using Sample = typename L::Sample;
    static constexpr ptrdiff_t bytes(int plane, ptrdiff_t n) { return L::bytes(plane, 2 * n); }

    template <int N>
    MOX_INLINE static auto load(const SrcRows<L::planes>& rows, ptrdiff_t x) {
        const auto wide = L::template load<2 * N>(rows, 2 * x);
        RowPair<Block<Sample, wide.channels, N>> pair;
        for (int c = 0; c < wide.channels; ++c) {
            U8 part[2];
            deinterleave(wide.c[c].v, part);
            for (int i = 0; i < 2; ++i) pair.row[i].c[c].v[0] = part[i];
        }
        return pair;
    }
    template <int N, int C>
    MOX_INLINE static void store(const DstRows<L::planes>& rows, ptrdiff_t x,
                                 const RowPair<Block<Sample, C, N>>& pair) {
        Block<Sample, C, 2 * N> wide;
        for (int c = 0; c < C; ++c) interleave({pair.row[0].c[c].v[0], pair.row[1].c[c].v[0]}, wide.c[c].v);
        L::template store<2 * N>(rows, 2 * x, wide);
    }
};

/// The even columns of planes of bytes; read only. The odd column behind the last need not exist.
template <int C>
struct EvenColumns : LayoutOf<C> {
    using Sample = uint8_t;
    static constexpr int channels = C;
    static constexpr int spareBytes = 1;
    static constexpr ptrdiff_t bytes(int, ptrdiff_t n) { return 2 * n; }

    template <int N, bool atEnd = false>
    MOX_INLINE static Block<uint8_t, C, N> load(const SrcRows<C>& rows, ptrdiff_t x) {
        static_assert(N == vectorBytes);
        const auto even = [](const uint8_t* p) {
            return as<I16>(atEnd ? shr<8>(q4::load<U16, 32>(p - 1)) : q4::load<U16, 32>(p) & splat<U16>(0xFF));
        };
        Block<uint8_t, C, N> block;
        for (int c = 0; c < C; ++c) {
            const uint8_t* p = rows.p[c] + 2 * x;
            block.c[c].v[0] = narrowU8(even(p), even(p + 16));
        }
        return block;
    }
    template <int N>
    MOX_INLINE static auto loadAtEnd(const SrcRows<C>& rows, ptrdiff_t x) {
        return load<N, true>(rows, x);
    }
};

/// The planes of both pictures, as one.
template <class Byte, int n, int m>
MOX_INLINE Image<Byte, n + m> join(const Image<Byte, n>& a, const Image<Byte, m>& b) {
    Image<Byte, n + m> both;
    for (int i = 0; i < n; ++i) both.base[i] = a.base[i], both.step[i] = a.step[i];
    for (int i = 0; i < m; ++i) both.base[n + i] = b.base[i], both.step[n + i] = b.step[i];
    return both;
}

}  // namespace q4
