// The one pixel loop: a layout read, a rule applied, a layout written, over the columns of a row; and the walk over
// rows.
//
// A family's table names the parts of each row kernel in a line:
//
//     using innerX = Split<C3<Mox8u>, C1<Mox8u>, 4, On<U16, VectorRule>, On<I32, TailRule>>;
//
// and an entry runs it over a picture: eachRow(innerX{...}, image(src, srcStep), image(dst, dstStep), roiSize).
#pragma once

#include <algorithm>
#include <cstring>

#include "frame/layout.h"
#include "moxcc/types.h"

namespace q4 {

// ---- columns of one row ---------------------------------------------------------------------------------------------

/// Pixels of a block: those whose narrowest samples fill a vector, unless the source's layout has a number of its own.
template <Layout Src, Layout Dst>
inline constexpr int blockPixels = [] {
    constexpr int narrowest = int(std::min(sizeof(typename Src::Sample), sizeof(typename Dst::Sample)));
    return Src::blockPixels ? Src::blockPixels : vectorBytes / std::min(narrowest, 2);
}();

/// Rows of one block outside the picture, to work on columns that do not fill a block.
template <Layout L, int N>
struct Staging {
    static constexpr ptrdiff_t rowBytes = (L::bytes(0, N) + vectorBytes - 1) & -vectorBytes;
    alignas(vectorBytes) uint8_t bytes[L::rowPointers][rowBytes];

    /// Columns that are not filled are computed with, too.
    MOX_INLINE void clear() {
        for (uint8_t(&row)[rowBytes] : bytes)
            for (ptrdiff_t i = 0; i < rowBytes; i += vectorBytes) store(row + i, zero<U8>());
    }

    DstRows<L::rowPointers> rows() {
        DstRows<L::rowPointers> r;
        for (int i = 0; i < L::rowPointers; ++i) r.p[i] = bytes[i];
        return r;
    }
    template <class Byte>
    void fill(const RowsOf<Byte, L::rowPointers>& from, ptrdiff_t x, ptrdiff_t n) {
        for (int i = 0; i < L::rowPointers; ++i)
            std::memcpy(bytes[i], from.p[i] + L::bytes(i, x), size_t(L::bytes(i, n) - L::spareBytes));
    }
    /// A layout that leaves some bytes alone has a copy() of its own.
    void drain(const DstRows<L::rowPointers>& to, ptrdiff_t x, ptrdiff_t n) const {
        for (int i = 0; i < L::rowPointers; ++i) {
            if constexpr (requires { L::copy(to.p[i], bytes[i], n); })
                L::copy(to.p[i] + L::bytes(i, x), bytes[i], n);
            else
                std::memcpy(to.p[i] + L::bytes(i, x), bytes[i], size_t(L::bytes(i, n)));
        }
    }
};

/// Whether a rule asks for the column of a block. Few do.
template <class Rule, class D, class In>
concept AsksForColumn = requires(const Rule& rule, const In& block, ptrdiff_t x) {
    rule.template apply<D>(block, x);
};

/// What a rule makes of the block at column x.
template <class D, class Rule, class In>
MOX_INLINE auto applyAt(const Rule& rule, const In& block, [[maybe_unused]] ptrdiff_t x) {
    if constexpr (AsksForColumn<Rule, D, In>)
        return rule.template apply<D>(block, x);
    else
        return rule.template apply<D>(block);
}

/// Applies a rule to the whole blocks from column x to column end - 1 of rows that start at column `origin` of the
/// picture. A function of its own, so that its code stands once for the rows' own columns and for staged ones, and the
/// rule's constants are in registers.
template <Layout Src, Layout Dst, class Rule>
[[gnu::noinline]] void blocks(const SrcRows<Src::rowPointers>& srcRows, const DstRows<Dst::rowPointers>& dstRows,
                              ptrdiff_t x, ptrdiff_t end, ptrdiff_t origin, Rule rule) {
    constexpr int N = blockPixels<Src, Dst>;
    const auto src = srcRows;
    const auto dst = dstRows;
    for (; x < end; x += N)
        Dst::template store<N>(dst, x, applyAt<typename Dst::Sample>(rule, Src::template load<N>(src, x), origin + x));
}

/// Applies a rule to columns x to end - 1 of a row.
template <Layout Src, Layout Dst, class Rule>
MOX_INLINE void span(const SrcRows<Src::rowPointers>& src, const DstRows<Dst::rowPointers>& dst, ptrdiff_t x,
                     ptrdiff_t end, const Rule& rule) {
    constexpr int N = blockPixels<Src, Dst>;
    constexpr bool spare = Src::spareBytes != 0;  // then the last block is never a whole one
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
template <Layout Src_, Layout Dst_, class Rule>
struct AllColumns {
    using Src = Src_;
    using Dst = Dst_;
    Rule rule;

    template <class... Extra>
    MOX_INLINE static AllColumns of(Extra... extra) {
        return {partOf<Rule>(extra...)};
    }
    MOX_INLINE void row(const SrcRows<Src::rowPointers>& src, const DstRows<Dst::rowPointers>& dst,
                        ptrdiff_t width) const {
        span<Src, Dst>(src, dst, 0, width, rule);
    }
};

/// The columns that whole passes take, then at most one pass of each narrower width.
template <int pass, int... single>
struct Passes {
    static constexpr ptrdiff_t limit(ptrdiff_t width) { return ((width & -pass) + ... + (width & single)); }
};

/// In place of a rule: columns that are neither read nor written.
struct LeftAlone {};

/// A row kernel with a rule for the columns below a limit, one for the others of whole cells, and one for what is left
/// of a cell, such as the last pixel of an odd width. Rules need not agree to the last bit, which makes the limit part
/// of the result.
template <Layout Src_, Layout Dst_, class Limit, int cellWidth, class Below, class Above, class Rest = LeftAlone>
struct InParts {
    using Src = Src_;
    using Dst = Dst_;
    Below below;
    Above above;
    [[no_unique_address]] Rest rest;

    template <class... Extra>
    MOX_INLINE static InParts of(Extra... extra) {
        if constexpr (std::is_same_v<Rest, LeftAlone>)
            return {partOf<Below>(extra...), partOf<Above>(extra...), {}};
        else
            return {partOf<Below>(extra...), partOf<Above>(extra...), partOf<Rest>(extra...)};
    }
    MOX_INLINE void row(const SrcRows<Src::rowPointers>& src, const DstRows<Dst::rowPointers>& dst,
                        ptrdiff_t width) const {
        const ptrdiff_t whole = width & -cellWidth, limit = Limit::limit(whole);
        span<Src, Dst>(src, dst, 0, limit, below);
        span<Src, Dst>(src, dst, limit, whole, above);
        if constexpr (!std::is_same_v<Rest, LeftAlone>) span<Src, Dst>(src, dst, whole, width, rest);
    }
};

/// One rule for the columns below the width rounded down to a multiple of `group`, and another for the rest.
template <Layout Src, Layout Dst, int group, class Body, class Tail = Body>
using Split = InParts<Src, Dst, Passes<group>, 1, Body, Tail>;

// ---- rows of a picture ----------------------------------------------------------------------------------------------

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

/// Whether a kernel does the same to many short rows as to one long row of their columns: one rule for all columns,
/// which does not ask where they are.
template <class Kernel>
inline constexpr bool joinsRows = false;
template <class Src, class Dst, class Rule>
inline constexpr bool joinsRows<AllColumns<Src, Dst, Rule>> =
    !AsksForColumn<Rule, typename Dst::Sample,
                   decltype(Src::template load<blockPixels<Src, Dst>>(std::declval<SrcRows<Src::rowPointers>>(), 0))>;

/// Whether the rows of a picture follow one another without gaps.
template <Layout L, class Byte, int n>
MOX_INLINE bool withoutGaps(const Image<Byte, n>& image, MoxiSize size) {
    bool result = size.width % L::groupColumns == 0;
    for (int i = 0; i < n; ++i) result &= image.step[i] == L::bytes(i, size.width);
    return result;
}
template <Layout L, class Rows>
MOX_INLINE bool withoutGaps(const Rows&, MoxiSize) {
    return false;
}

/// Runs a row kernel over all rows of two pictures: images, or anything else that has a row(y).
template <class Kernel, class Src, class Dst>
inline void eachRow(const Kernel& kernel, const Src& src, const Dst& dst, MoxiSize size) {
    if constexpr (joinsRows<Kernel>)
        if (size.height > 1 && withoutGaps<typename Kernel::Src>(src, size) &&
            withoutGaps<typename Kernel::Dst>(dst, size))
            return kernel.row(src.row(0), dst.row(0), ptrdiff_t(size.width) * size.height);
    for (ptrdiff_t y = 0; y < size.height; ++y) kernel.row(src.row(y), dst.row(y), size.width);
}

/// A row kernel of single samples, over pixels of n.
template <int n, class Kernel>
struct Samples : Kernel {
    MOX_INLINE void row(const SrcRows<1>& src, const DstRows<1>& dst, ptrdiff_t width) const {
        Kernel::row(src, dst, n * width);
    }
};

/// A picture kernel for planes, one after the other, by a row kernel of single samples.
template <int planes, class Plane>
struct EachPlane : Plane {
    using Src = Planar<typename Plane::Src::Sample, planes>;
    using Dst = Planar<typename Plane::Dst::Sample, planes>;

    template <class... Extra>
    MOX_INLINE static EachPlane of(Extra... extra) {
        return {partOf<Plane>(extra...)};
    }
    void picture(const Image<const uint8_t, planes>& src, const Image<uint8_t, planes>& dst, MoxiSize size) const {
        const Plane& plane = *this;
        for (int i = 0; i < planes; ++i) eachRow(plane, src.plane(i), dst.plane(i), size);
    }
};

/// A call warns of pixels in no whole cell, which it leaves alone. Those of two rows are two columns wide; other
/// kernels that warn say what a cell is.
template <class Kernel>
constexpr MoxiSize cellOf() {
    if constexpr (requires { Kernel::warnsOutside; })
        return Kernel::warnsOutside;
    else
        return {Kernel::Src::rowsAtOnce, Kernel::Src::rowsAtOnce};
}

/// Runs a kernel over a picture: a picture kernel by itself, a row kernel over all rows, or all pairs of rows.
template <class Kernel, class Src, class Dst>
MOX_INLINE MoxStatus convertPicture(const Kernel& kernel, const Src& src, const Dst& dst, MoxiSize size) {
    if constexpr (requires { kernel.picture(src, dst, size); }) {
        kernel.picture(src, dst, size);
    } else {
        constexpr int rows = Kernel::Src::rowsAtOnce;
        static_assert(Kernel::Dst::rowsAtOnce == rows);
        eachRow(kernel, src, dst, {size.width & -rows, size.height / rows});
    }
    constexpr MoxiSize cell = cellOf<Kernel>();
    return size.width % cell.width || size.height % cell.height ? moxStatusOddSize : moxStatusOk;
}

}  // namespace q4
