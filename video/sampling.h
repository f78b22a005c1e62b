// Pictures of subsampled video whose planes are worked on by themselves, or their chroma beside their luma: packed, a
// luma plane with a plane of chroma pairs, or three planes.
#pragma once

#include <algorithm>

#include "frame/entry.h"
#include "frame/primitives.h"
#include "frame/video_layouts.h"

namespace q4 {

// ---- layouts of pictures --------------------------------------------------------------------------------------------

/// One chroma sample of each kind for a cell of pixels.
template <int width, int height>
struct Sampling {
    static constexpr int cellWidth = width, cellHeight = height;
};
using S422 = Sampling<2, 1>;
using S420 = Sampling<2, 2>;
using S411 = Sampling<4, 1>;

/// Three planes. As rows: one of luma, and those of its chroma.
template <class S>
struct PlanarIn : LumaPlane<1, SeparateChroma<S::cellWidth>> {
    using Sampling = S;
    using ChromaRows = Planar<Mox8u, 2>;
};
/// Three planes, of which the chroma planes change places, each with its step.
template <class S>
struct CrossedPlanarIn : PlanarIn<S> {
    template <class Byte>
    MOX_INLINE static Image<Byte, 3> rowsOf(const Image<Byte, 3>& image) {
        return {{image.base[0], image.base[2], image.base[1]}, {image.step[0], image.step[2], image.step[1]}};
    }
};
/// A plane of luma and one of chroma pairs.
template <class S>
struct SemiPlanarIn : LumaPlane<1, PairedChroma<S::cellWidth>> {
    using Sampling = S;
    using ChromaRows = Interleaved<Mox8u, 2>;
};

/// What is not packed.
template <class L>
inline constexpr bool hasLumaPlane = requires {
    typename L::ChromaRows;
};

template <class L>
struct SamplingOfLayout {
    using Type = S422;  // packed
};
template <class L>
requires hasLumaPlane<L>
struct SamplingOfLayout<L> {
    using Type = typename L::Sampling;
};
template <class L>
using SamplingOf = typename SamplingOfLayout<L>::Type;

// ---- planes and rows ------------------------------------------------------------------------------------------------

template <class Byte, int n>
MOX_INLINE Image<Byte, 1> lumaOf(const Image<Byte, n>& image) {
    return image.plane(0);
}
template <class Byte, int n>
MOX_INLINE Image<Byte, n - 1> chromaOf(const Image<Byte, n>& image) {
    Image<Byte, n - 1> chroma;
    for (int i = 1; i < n; ++i) chroma.base[i - 1] = image.base[i], chroma.step[i - 1] = image.step[i];
    return chroma;
}

/// The row pointers of both, as one.
template <class Byte, int n, int m>
MOX_INLINE RowsOf<Byte, n + m> join(const RowsOf<Byte, n>& a, const RowsOf<Byte, m>& b) {
    RowsOf<Byte, n + m> both;
    for (int i = 0; i < n + m; ++i) both.p[i] = i < n ? a.p[i] : b.p[i - n];
    return both;
}
/// A row of luma, and of the chroma of its cells.
template <class L, class Byte, int n>
MOX_INLINE RowsOf<Byte, n> rowWithChroma(const Image<Byte, n>& image, ptrdiff_t y) {
    if constexpr (hasLumaPlane<L>)
        return join(lumaOf(image).row(y), chromaOf(image).row(y / L::Sampling::cellHeight));
    else
        return image.row(y);
}

/// Rows from the given one on.
template <class Byte, int n>
MOX_INLINE Image<Byte, n> from(Image<Byte, n> rows, ptrdiff_t y) {
    for (int i = 0; i < n; ++i) rows.base[i] += y * rows.step[i];
    return rows;
}
/// Every second row.
template <class Byte, int n>
MOX_INLINE Image<Byte, n> evenRows(Image<Byte, n> rows) {
    for (int i = 0; i < n; ++i) rows.step[i] *= 2;
    return rows;
}
/// Each row twice.
template <class Byte, int n>
struct RepeatedRows {
    Image<Byte, n> image;
    MOX_INLINE RowsOf<Byte, n> row(ptrdiff_t y) const { return image.row(y / 2); }
};
template <class Byte, int n>
MOX_INLINE RepeatedRows<Byte, n> repeatedRows(const Image<Byte, n>& image) {
    return {image};
}

/// Up to a vector of samples, each the one after a column's own; after the last column comes itself.
struct NextColumns {
    Mox8u samples[vectorBytes];
    const Mox8u* of(const uint8_t* columns, ptrdiff_t n) {
        std::copy_n(columns + 1, n - 1, samples);
        samples[n - 1] = columns[n - 1];
        return samples;
    }
};

inline void copyPlane(const Image<const uint8_t, 1>& src, const Image<uint8_t, 1>& dst, MoxiSize size) {
    moxiCopy_8u_C1R(src.base[0], int32_t(src.step[0]), dst.base[0], int32_t(dst.step[0]), size);
}

// ---- rules ----------------------------------------------------------------------------------------------------------

struct Twice {
    template <class D, class B>
    MOX_INLINE RowPair<B> apply(const B& in) const {
        return {{in, in}};
    }
};

/// Means of two samples, a half rounded up or down.
struct Up {
    MOX_INLINE static U8 mean(U8 a, U8 b) { return avg(a, b); }
};
struct Down {
    MOX_INLINE static U8 mean(U8 a, U8 b) { return avgDown(a, b); }
};

// ---- entries --------------------------------------------------------------------------------------------------------

/// Plane pointers are tested behind a size below 1 x 1, and before one below the smallest.
inline constexpr Order sizeTwice = {{Test::pointers, Test::anySize, Test::planes, Test::size}};

}  // namespace q4
