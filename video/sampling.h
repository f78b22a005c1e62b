// The arguments of one side of a video conversion: a packed picture, a luma plane with a plane of chroma pairs, or
// three planes. Each tells its pointer checks, its rows, and how its chroma lies in memory. Planes are read from the
// arrays only after the checks have passed.
#pragma once

#include <algorithm>

#include "frame/checks.h"
#include "frame/primitives.h"
#include "frame/video_layouts.h"

namespace q4 {

// ---- rows -----------------------------------------------------------------------------------------------------------

/// The row pointers of both, as one.
template <class Byte, int n, int m>
MOX_INLINE RowsOf<Byte, n + m> join(const RowsOf<Byte, n>& a, const RowsOf<Byte, m>& b) {
    RowsOf<Byte, n + m> both;
    for (int i = 0; i < n + m; ++i) both.p[i] = i < n ? a.p[i] : b.p[i - n];
    return both;
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

// ---- sides ----------------------------------------------------------------------------------------------------------

template <class Byte, class Layout>
struct PackedSide {
    static constexpr bool hasLumaPlane = false;
    using Rows = Layout;
    Byte* pixels;
    int32_t step;

    auto notNull() const { return q4::notNull(pixels); }
    auto rows() const { return image(pixels, step); }
    template <int cellHeight>
    auto row(ptrdiff_t y) const {
        return rows().row(y);
    }
};
template <class Layout, class Byte>
PackedSide<Byte, Layout> packed(Byte* pixels, int32_t step) {
    return {pixels, step};
}

template <class Byte>
struct SemiPlanarSide {
    static constexpr bool hasLumaPlane = true;
    using ChromaRows = Interleaved<Mox8u, 2>;
    template <int cellWidth>
    using Chroma = PairedChroma<cellWidth>;
    Byte* y;
    int32_t yStep;
    Byte* pairs;
    int32_t pairsStep;

    auto notNull() const { return q4::notNull(y, pairs); }
    auto luma() const { return image(y, yStep); }
    auto chroma() const { return image(pairs, pairsStep); }
    auto rows() const { return join(luma(), chroma()); }
    template <int cellHeight>
    auto row(ptrdiff_t at) const {
        return join(luma().row(at), chroma().row(at / cellHeight));
    }
};
template <class Byte>
SemiPlanarSide<Byte> twoPlanes(Byte* y, int32_t yStep, Byte* pairs, int32_t pairsStep) {
    return {y, yStep, pairs, pairsStep};
}

template <class Byte>
struct PlanarSide {
    static constexpr bool hasLumaPlane = true;
    using ChromaRows = Planar<Mox8u, 2>;
    template <int cellWidth>
    using Chroma = SeparateChroma<cellWidth>;
    Byte* const* planes;
    const int32_t* steps;
    int firstChroma = 1;

    auto notNull() const {
        return [planes = planes] { return firstOf(q4::notNull(planes), planesNotNull<3>(planes)); };
    }
    auto luma() const { return image(planes[0], steps[0]); }
    auto chroma() const { return join(plane(firstChroma), plane(3 - firstChroma)); }
    auto plane(int i) const { return image(planes[i], steps[i]); }
    auto rows() const { return join(luma(), chroma()); }
    template <int cellHeight>
    auto row(ptrdiff_t at) const {
        return join(luma().row(at), chroma().row(at / cellHeight));
    }
};
template <class Byte>
PlanarSide<Byte> threePlanes(Byte* const* planes, const int32_t* steps) {
    return {planes, steps};
}
/// The chroma planes change places, each with its step.
template <class Byte>
PlanarSide<Byte> crossed(PlanarSide<Byte> side) {
    side.firstChroma = 3 - side.firstChroma;
    return side;
}

template <class Byte>
MOX_INLINE MoxStatus copyPlane(const Image<const Byte, 1>& src, const Image<Byte, 1>& dst, MoxiSize size) {
    return moxiCopy_8u_C1R(src.base[0], int32_t(src.step[0]), dst.base[0], int32_t(dst.step[0]), size);
}

// ---- rules that move samples ----------------------------------------------------------------------------------------

struct Twice {
    template <class D, class B>
    MOX_INLINE RowPair<B> apply(const B& in) const {
        return {{in, in}};
    }
};

}  // namespace q4
