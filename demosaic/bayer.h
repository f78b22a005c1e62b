// What the reconstructions of Bayer images share: where the colours stand, the image continued beyond its edges, the
// rows that a tile keeps, and rows split into columns of equal parity.
//
// They all work in tiles: some hundred columns at a time, row by row, on copies of the last few source rows that lie on
// the stack. The copies are continued beyond the image and padded, so that edges, small images and last columns need no
// code of their own, and nothing outside the image is ever read.
#pragma once

#include <algorithm>
#include <cstring>
#include <limits>

#include "frame/entry.h"
#include "frame/kernel.h"
#include "moxcc/demosaic.h"

namespace q4 {

// ---- where the colours stand ----------------------------------------------------------------------------------------

inline auto gridKnown(MoxBayerGrid grid) {
    return require([=] { return grid >= moxBayerGridBGGR && grid <= moxBayerGridGRBG; }, moxStatusBadArg);
}

/// Red stands at every other column of every other row, blue at the others of the other rows, green elsewhere.
struct BayerSites {
    int redX, redY;  // parities of column and row

    explicit BayerSites(MoxBayerGrid grid)
        : redX(grid == moxBayerGridBGGR || grid == moxBayerGridGRBG),
          redY(grid == moxBayerGridBGGR || grid == moxBayerGridGBRG) {}

    bool redRow(ptrdiff_t y) const { return (y & 1) == redY; }
    /// The parity of the columns of row y that hold red or blue.
    int colourColumns(ptrdiff_t y) const { return redRow(y) ? redX : redX ^ 1; }
};

// ---- the image, continued -------------------------------------------------------------------------------------------

/// The index inside 0 to n - 1 that stands for i: reflected at the first and the last, which are not repeated. Parity,
/// and so colour, is kept. An image of a few samples may need several reflections.
inline ptrdiff_t mirrored(ptrdiff_t i, ptrdiff_t n) {
    while (i < 0 || i >= n) i = i < 0 ? -i : 2 * (n - 1) - i;
    return i;
}

/// A one-channel source, continued by reflection on all sides.
template <class T>
struct MirroredImage {
    const uint8_t* base;
    ptrdiff_t step;
    ptrdiff_t width, height;

    MirroredImage(const T* src, ptrdiff_t srcStep, MoxiSize size)
        : base(reinterpret_cast<const uint8_t*>(src)), step(srcStep), width(size.width), height(size.height) {}

    /// Copies n samples of row y from column x on.
    void copy(ptrdiff_t x, ptrdiff_t y, ptrdiff_t n, T* to) const {
        const uint8_t* const row = base + mirrored(y, height) * step;
        const auto take = [&](ptrdiff_t at, ptrdiff_t column, ptrdiff_t count) {
            std::memcpy(to + at, row + column * ptrdiff_t(sizeof(T)), size_t(count) * sizeof(T));
        };
        const ptrdiff_t first = std::clamp<ptrdiff_t>(-x, 0, n), end = std::clamp<ptrdiff_t>(width - x, first, n);
        for (ptrdiff_t i = 0; i < first; ++i) take(i, mirrored(x + i, width), 1);
        take(first, x + first, end - first);
        for (ptrdiff_t i = end; i < n; ++i) take(i, mirrored(x + i, width), 1);
    }
};

// ---- tiles ----------------------------------------------------------------------------------------------------------

/// The last few rows of something that is made row by row. count is a power of two.
template <class Row, int count>
struct RowRing {
    static_assert((count & (count - 1)) == 0);
    Row rows[count] = {};
    Row& operator[](ptrdiff_t y) { return rows[y & (count - 1)]; }
    const Row& operator[](ptrdiff_t y) const { return rows[y & (count - 1)]; }
};

template <class T>
inline constexpr int pixelsPerVector = Vec<T>::count;

/// Stores the first n pixels of a block, or all if n is more than it holds.
template <class Dst, int N, class T, int C>
MOX_INLINE void storeFirst(const DstRows<1>& row, ptrdiff_t x, ptrdiff_t n, const Block<T, C, N>& block) {
    if (n >= N) return Dst::template store<N>(row, x, block);
    Staging<Dst, N> part;
    if constexpr (Dst::keepsOld) part.fill(row, x, n);
    Dst::template store<N>(part.rows(), 0, block);
    part.drain(row, x, n);
}

// ---- rows split by parity -------------------------------------------------------------------------------------------

// Sites of one kind are every other pixel. Where their rules differ much, a row is held as two: the samples of its even
// and of its odd columns, each widened so that sums of a few samples fit. A vector of samples falls into such halves,
// and halves join to one, without any element leaving its place.

template <class T>
using Wide = std::conditional_t<sizeof(T) == 1, I16, I32>;

template <class T>
MOX_INLINE Wide<T> evenOf(Vec<T> v) {
    return as<Wide<T>>(v) & splat<Wide<T>>(std::numeric_limits<T>::max());
}
template <class T>
MOX_INLINE Wide<T> oddOf(Vec<T> v) {
    return as<Wide<T>>(shr<8 * sizeof(T)>(as<std::conditional_t<sizeof(T) == 1, U16, U32>>(v)));
}
/// even holds no more than samples; the high bits of odd are dropped.
template <class T>
MOX_INLINE Vec<T> joined(Wide<T> even, Wide<T> odd) {
    return as<Vec<T>>(even | shl<8 * sizeof(T)>(odd));
}

template <class T>
MOX_INLINE Wide<T> clipped(Wide<T> v) {
    return min(max(v, zero<Wide<T>>()), splat<Wide<T>>(std::numeric_limits<T>::max()));
}

/// One half of a split row of so many columns.
template <class T, int columns>
struct HalfRow {
    using V = Wide<T>;
    alignas(vectorBytes) typename V::Sample sample[columns / 2];

    /// The samples beside those of index i on, at distance dx, of a site whose column has the given parity.
    MOX_INLINE V at(int parity, ptrdiff_t i, int dx) const { return load<V>(sample + i + ((parity + dx) >> 1)); }
    MOX_INLINE void set(ptrdiff_t i, V v) { store(sample + i, v); }
};

template <class T, int columns>
struct SplitRow {
    using V = Wide<T>;
    HalfRow<T, columns> half[2];

    /// Sample dx columns from the site: a vector of them, for the sites 2 * i + parity and every second from there.
    MOX_INLINE V at(int parity, ptrdiff_t i, int dx) const { return half[(parity + dx) & 1].at(parity, i, dx); }

    /// Splits n samples, up to a whole vector more.
    void split(const T* from, ptrdiff_t n) {
        for (ptrdiff_t x = 0; x < n; x += pixelsPerVector<T>) {
            const Vec<T> v = load<Vec<T>>(from + x);
            half[0].set(x / 2, evenOf(v));
            half[1].set(x / 2, oddOf(v));
        }
    }
};

}  // namespace q4
