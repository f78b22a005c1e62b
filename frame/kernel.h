// The one pixel loop: a layout read, a rule applied, a layout written, over the columns of a row; and the walk over
// rows.
//
// A family's table names the parts of each row kernel in a line:
//
//     using innerX = Split<C3<Mox8u>, C1<Mox8u>, 4, On<U16, VectorRule>, On<I32, TailRule>>;
//
// and an entry runs it over a picture: eachRow(innerX{...}, image(src, srcStep), image(dst, dstStep), roiSize).
#pragma once

#include <cstring>

#include "frame/layout.h"
#include "moxcc/types.h"

namespace q4 {

// ---- columns of one row ---------------------------------------------------------------------------------------------

/// Pixels of a block: those whose narrowest samples fill a vector, unless the source's layout has a number of its own.
template <class Src, class Dst>
inline constexpr int blockPixels = [] {
    constexpr size_t narrowest = sizeof(typename Src::Sample) < sizeof(typename Dst::Sample)
                                     ? sizeof(typename Src::Sample)
                                     : sizeof(typename Dst::Sample);
    if constexpr (requires { Src::blockPixels; })
        return Src::blockPixels;
    else
        return vectorBytes / int(narrowest > 2 ? 2 : narrowest);
}();

/// Bytes at the end of a row's last column that a source's layout does not need, and that need not exist. Such a layout
/// has a loadAtEnd too, which reads bytes before the block's columns in their place.
template <class Layout>
inline constexpr int spareBytes = [] {
    if constexpr (requires { Layout::spareBytes; })
        return Layout::spareBytes;
    else
        return 0;
}();

/// Rows of one block outside the picture, to work on columns that do not fill a block.
template <class Layout, int N>
struct Staging {
    static constexpr ptrdiff_t rowBytes = (Layout::bytes(0, N) + vectorBytes - 1) & -vectorBytes;
    alignas(vectorBytes) uint8_t bytes[Layout::planes][rowBytes];

    /// Columns that are not filled are computed with, too.
    MOX_INLINE void clear() {
        for (uint8_t(&row)[rowBytes] : bytes)
            for (ptrdiff_t i = 0; i < rowBytes; i += vectorBytes) store(row + i, zero<U8>());
    }

    DstRows<Layout::planes> rows() {
        DstRows<Layout::planes> r;
        for (int i = 0; i < Layout::planes; ++i) r.p[i] = bytes[i];
        return r;
    }
    template <class Byte>
    void fill(const RowsOf<Byte, Layout::planes>& from, ptrdiff_t x, ptrdiff_t n) {
        for (int i = 0; i < Layout::planes; ++i)
            std::memcpy(bytes[i], from.p[i] + Layout::bytes(i, x), size_t(Layout::bytes(i, n) - spareBytes<Layout>));
    }
    /// A layout that leaves some bytes alone has a copy() of its own.
    void drain(const DstRows<Layout::planes>& to, ptrdiff_t x, ptrdiff_t n) const {
        for (int i = 0; i < Layout::planes; ++i) {
            if constexpr (requires { Layout::copy(to.p[i], bytes[i], n); })
                Layout::copy(to.p[i] + Layout::bytes(i, x), bytes[i], n);
            else
                std::memcpy(to.p[i] + Layout::bytes(i, x), bytes[i], size_t(Layout::bytes(i, n)));
        }
    }
};

/// What a rule makes of the block at column x. Few rules ask for the column.
template <class D, class Rule, class In>
MOX_INLINE auto applyAt(const Rule& rule, const In& block, ptrdiff_t x) {
    if constexpr (requires { rule.template apply<D>(block, x); })
        return rule.template apply<D>(block, x);
    else
        return rule.template apply<D>(block);
}

/// Applies a rule to the whole blocks from column x to column end - 1 of rows that start at column `origin` of the
/// picture. A function of its own, so that its code stands once for the rows' own columns and for staged ones, and the
/// rule's constants are in registers.
template <class Src, class Dst, class Rule>
[[gnu::noinline]] void blocks(const SrcRows<Src::planes>& srcRows, const DstRows<Dst::planes>& dstRows, ptrdiff_t x,
                              ptrdiff_t end, ptrdiff_t origin, Rule rule) {
    constexpr int N = blockPixels<Src, Dst>;
    const auto src = srcRows;
    const auto dst = dstRows;
    for (; x < end; x += N)
        Dst::template store<N>(dst, x, applyAt<typename Dst::Sample>(rule, Src::template load<N>(src, x), origin + x));
}

/// Applies a rule to columns x to end - 1 of a row.
template <class Src, class Dst, class Rule>
MOX_INLINE void span(const SrcRows<Src::planes>& src, const DstRows<Dst::planes>& dst, ptrdiff_t x, ptrdiff_t end,
                     const Rule& rule) {
    constexpr int N = blockPixels<Src, Dst>;
    constexpr bool spare = spareBytes<Src> != 0;  // then the last block is never a whole one
    const ptrdiff_t whole = end - (spare ? (end - x - 1) % N + 1 : (end - x) % N);
    if (x < whole) blocks<Src, Dst>(src, dst, x, whole, 0, rule);
    if constexpr (spare) {
        if (end - whole == N && whole > 0) {
            const auto block = Src::template loadAtEnd<N>(src, whole);
            return Dst::template store<N>(dst, whole, applyAt<typename Dst::Sample>(rule, block, whole));
        }
    }
    if (whole < end) {  // the last columns, by the same code on a copy, so that nothing beyond the row is touched
        Staging<Src, N> in;
        Staging<Dst, N> out;
        in.clear();
        in.fill(src, whole, end - whole);
        if constexpr (Dst::keepsOld) out.fill(dst, whole, end - whole);
        blocks<Src, Dst>(in.rows(), out.rows(), 0, N, whole, rule);
        out.drain(dst, whole, end - whole);
    }
}

/// A row kernel with one rule for all columns.
template <class Src_, class Dst_, class Rule>
struct AllColumns {
    using Src = Src_;
    using Dst = Dst_;
    Rule rule;
    MOX_INLINE void row(const SrcRows<Src::planes>& src, const DstRows<Dst::planes>& dst, ptrdiff_t width) const {
        span<Src, Dst>(src, dst, 0, width, rule);
    }
};

/// A row kernel with one rule for the columns below the width rounded down to a multiple of `group`, and another for
/// the rest. The two need not agree to the last bit, which makes the split part of the result.
template <class Src_, class Dst_, int group, class Body, class Tail>
struct Split {
    using Src = Src_;
    using Dst = Dst_;
    Body body;
    Tail tail;
    MOX_INLINE void row(const SrcRows<Src::planes>& src, const DstRows<Dst::planes>& dst, ptrdiff_t width) const {
        const ptrdiff_t limit = width & -group;
        span<Src, Dst>(src, dst, 0, limit, body);
        span<Src, Dst>(src, dst, limit, width, tail);
    }
};

// ---- rows of a picture ----------------------------------------------------------------------------------------------

/// A picture in memory: the start of each plane's first row, and the distance to the next. Any step will do, zero and
/// negative ones included.
template <class Byte, int n>
struct Image {
    Byte* base[n];
    ptrdiff_t step[n];

    MOX_INLINE RowsOf<Byte, n> row(ptrdiff_t y) const {
        RowsOf<Byte, n> r;
        for (int i = 0; i < n; ++i) r.p[i] = base[i] + y * step[i];
        return r;
    }
    /// As a source.
    MOX_INLINE operator Image<const uint8_t, n>() const requires(!std::is_const_v<Byte>) {
        Image<const uint8_t, n> source;
        for (int i = 0; i < n; ++i) source.base[i] = base[i], source.step[i] = step[i];
        return source;
    }
};

template <class T>
using ByteOf = std::conditional_t<std::is_const_v<T>, const uint8_t, uint8_t>;

template <class T>
MOX_INLINE Image<ByteOf<T>, 1> image(T* pixels, ptrdiff_t step) {
    return {{reinterpret_cast<ByteOf<T>*>(pixels)}, {step}};
}
/// n planes that share one step.
template <int n, class T>
MOX_INLINE Image<ByteOf<T>, n> image(T* const* planes, ptrdiff_t step) {
    Image<ByteOf<T>, n> result;
    for (int i = 0; i < n; ++i) result.base[i] = reinterpret_cast<ByteOf<T>*>(planes[i]), result.step[i] = step;
    return result;
}
/// n planes with a step each.
template <int n, class T>
MOX_INLINE Image<ByteOf<T>, n> image(T* const* planes, const int32_t* steps) {
    Image<ByteOf<T>, n> result;
    for (int i = 0; i < n; ++i) result.base[i] = reinterpret_cast<ByteOf<T>*>(planes[i]), result.step[i] = steps[i];
    return result;
}

/// A byte step rounded down to whole samples, for the families that count steps in samples.
template <class T>
MOX_INLINE ptrdiff_t wholeSamples(int32_t step) {
    return step & -ptrdiff_t(sizeof(T));
}

/// Whether a kernel does the same to many short rows as to one long row of their columns.
template <class Kernel>
inline constexpr bool joinsRows = false;
template <class Src, class Dst, class Rule>
inline constexpr bool joinsRows<AllColumns<Src, Dst, Rule>> = true;

/// The columns of which a layout has whole numbers only, where others follow.
template <class Layout>
inline constexpr int groupColumns = [] {
    if constexpr (requires { Layout::groupColumns; })
        return Layout::groupColumns;
    else
        return 1;
}();

/// Whether the rows of a picture follow one another without gaps.
template <class Layout, class Byte, int n>
MOX_INLINE bool withoutGaps(const Image<Byte, n>& image, MoxiSize size) {
    bool result = size.width % groupColumns<Layout> == 0;
    for (int i = 0; i < n; ++i) result &= image.step[i] == Layout::bytes(i, size.width);
    return result;
}
template <class Layout, class Rows>
MOX_INLINE bool withoutGaps(const Rows&, MoxiSize) {
    return false;
}

/// Runs a row kernel over all rows of two pictures: images, or anything else that has a row(y). A rule that asks for the
/// column is not for this function.
template <class Kernel, class Src, class Dst>
inline void eachRow(const Kernel& kernel, const Src& src, const Dst& dst, MoxiSize size) {
    if constexpr (joinsRows<Kernel>)
        if (size.height > 1 && withoutGaps<typename Kernel::Src>(src, size) &&
            withoutGaps<typename Kernel::Dst>(dst, size))
            return kernel.row(src.row(0), dst.row(0), ptrdiff_t(size.width) * size.height);
    for (ptrdiff_t y = 0; y < size.height; ++y) kernel.row(src.row(y), dst.row(y), size.width);
}

}  // namespace q4
