// Reconstruction of Bayer images by a variable number of gradients.
//
// Around each pixel eight gradients are measured; the directions with the smaller ones count, and the colours that the
// site lacks are its own sample plus the mean difference of colours over those directions.
#include "demosaic/bayer.h"
#include "frame/primitives.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

// A window gives the samples around a vector of sites: p(dx, dy) from two columns left to two columns right, and so for
// the rows. Rules are written for north and north-east; turned() leads to the six other directions.

template <class T, int columns, int parity>
struct Window {
    using V = Wide<T>;
    const SplitRow<T, columns>* const* rows;  // of the site's row
    ptrdiff_t i;
    MOX_INLINE V operator()(int dx, int dy) const { return rows[dy]->at(parity, i, dx); }
};

/// The window as seen after so many quarter turns clockwise.
template <int quarters, class P>
MOX_INLINE auto turned(P p) {
    return [p](int dx, int dy) __attribute__((always_inline)) {
        if constexpr (quarters == 0) return p(dx, dy);
        if constexpr (quarters == 1) return p(-dy, dx);
        if constexpr (quarters == 2) return p(-dx, -dy);
        if constexpr (quarters == 3) return p(dy, -dx);
    };
}

template <class V>
MOX_INLINE V distance(V a, V b) {
    return as<V>(abs(a - b));
}
template <class V>
MOX_INLINE V twice(V v) {
    return v + v;
}

template <class P>
MOX_INLINE auto northGradient(P p) {
    return twice(distance(p(0, -2), p(0, 0)) + distance(p(0, -1), p(0, 1))) + distance(p(-1, -2), p(-1, 0)) +
           distance(p(1, -2), p(1, 0)) + distance(p(-1, -1), p(-1, 1)) + distance(p(1, -1), p(1, 1));
}

// For both kinds of sites: the north-east gradient, and for north and north-east, two differences: of twice the two
// colours that the site lacks, as that direction has them, less twice its own colour.

template <class V>
MOX_INLINE Px<V, 2> less(V own, V a, V b) {
    return {{a - own, b - own}};
}

/// Red or blue sites lack green and the opposite colour.
struct ColourSite {
    template <class P>
    MOX_INLINE static auto northEastGradient(P p) {
        return twice(distance(p(2, -2), p(0, 0)) + distance(p(1, -1), p(-1, 1))) + distance(p(1, -2), p(0, -1)) +
               distance(p(0, -1), p(-1, 0)) + distance(p(2, -1), p(1, 0)) + distance(p(1, 0), p(0, 1));
    }
    template <class P>
    MOX_INLINE static auto north(P p) {
        return less(p(0, -2) + p(0, 0), twice(p(0, -1)), p(-1, -1) + p(1, -1));
    }
    template <class P>
    MOX_INLINE static auto northEast(P p) {
        return less(p(0, 0) + p(2, -2), shr<1>(p(0, -1) + p(1, -2) + p(1, 0) + p(2, -1)), twice(p(1, -1)));
    }
    static constexpr bool turnsSwap = false;
};

/// Green sites lack the colour of their row and that of their column, which a quarter turn swaps.
struct GreenSite {
    template <class P>
    MOX_INLINE static auto northEastGradient(P p) {
        return twice(distance(p(2, -2), p(0, 0)) + distance(p(1, -1), p(-1, 1)) + distance(p(1, -2), p(-1, 0)) +
                     distance(p(2, -1), p(0, 1)));
    }
    template <class P>
    MOX_INLINE static auto north(P p) {
        return less(p(0, -2) + p(0, 0), p(-1, -2) + p(1, -2), twice(p(0, -1)));
    }
    template <class P>
    MOX_INLINE static auto northEast(P p) {
        return less(twice(p(1, -1)), p(1, -2) + p(1, 0), p(0, -1) + p(2, -1));
    }
    static constexpr bool turnsSwap = true;
};

template <class V>
struct Differences {
    V sum[2];  // of the directions that count
    V count;   // of those directions
};

template <class Site, class P>
MOX_INLINE auto differences(P p) {
    using V = decltype(p(0, 0));
    return [&]<int... q>(std::integer_sequence<int, q...>) __attribute__((always_inline)) {
        const V gradients[] = {northGradient(turned<q>(p))..., Site::northEastGradient(turned<q>(p))...};
        V low = gradients[0], high = gradients[0];
        for (int i = 1; i < 8; ++i) low = min(low, gradients[i]), high = max(high, gradients[i]);
        const V limit = low + max(shr<1>(high), splat<V>(1));

        Differences<V> result = {};
        const auto add = [&](V gradient, int quarters, const Px<V, 2>& difference) __attribute__((always_inline)) {
            const V counts = gt(limit, gradient);
            const bool swap = Site::turnsSwap && quarters % 2 == 1;
            for (int i = 0; i < 2; ++i) result.sum[i] = result.sum[i] + (difference.c[swap ? 1 - i : i] & counts);
            result.count = result.count - counts;
        };
        (add(gradients[q], q, Site::north(turned<q>(p))), ...);
        (add(gradients[4 + q], q, Site::northEast(turned<q>(p))), ...);
        return result;
    }
    (std::make_integer_sequence<int, 4>());
}

/// Applies a rule on 32-bit lanes to narrower ones; its results are samples.
template <class V, class Rule>
MOX_INLINE V onI32(Rule rule, V a, V b) {
    if constexpr (std::is_same_v<V, I32>)
        return rule(a, b);
    else
        return narrowI16(rule(widenLo(a), widenLo(b)), rule(widenHi(a), widenHi(b)));
}

/// The gains of B, G and R.
struct Gains {
    F32 gain[3];
};

/// No gains: all are 1.
struct NoGains {};

template <class T>
MOX_INLINE I32 clippedI32(I32 v) {
    return min(max(v, zero<I32>()), splat<I32>(std::numeric_limits<T>::max()));
}

/// A sample with its channel's gain. Products beyond 32 bits convert to the lowest integer, and so clip to 0.
template <class T>
MOX_INLINE Wide<T> scaled(Wide<T> sample, const Gains& gains, int channel) {
    return onI32([&](I32 v, I32) { return clippedI32<T>(nearest(toF32(v) * gains.gain[channel])); }, sample, sample);
}
template <class T>
MOX_INLINE Wide<T> scaled(Wide<T> sample, NoGains, int) {
    return sample;
}

/// A site's own sample and the two colours it lacks, clipped.
template <class T, class Site, class P>
MOX_INLINE Px<Wide<T>, 3> reconstruct(P p) {
    using V = Wide<T>;
    const V own = p(0, 0);
    const Differences<V> d = differences<Site>(p);
    const auto lacking = [&](V sum) {
        return clipped<T>(own + onI32([](I32 s, I32 n) { return nearest(toF32(s) / toF32(n)); }, sum, twice(d.count)));
    };
    return {{own, lacking(d.sum[0]), lacking(d.sum[1])}};
}

// ---- tiles ----------------------------------------------------------------------------------------------------------

template <class T>
struct VngTile {
    static constexpr int N = pixelsPerVector<T>;
    static constexpr int columns = 512 / int(sizeof(T));
    static constexpr int reach = 2;  // of the window
    static constexpr int rowColumns = columns + 2 * reach + N;

    using Row = SplitRow<T, rowColumns>;
    RowRing<Row, 8> source;
    alignas(vectorBytes) T latest[rowColumns] = {};

    template <class Gain>
    void run(const MirroredImage<T>& image, BayerSites sites, ptrdiff_t x0, ptrdiff_t width, ptrdiff_t y0, ptrdiff_t y1,
             const Gain& gains, const Image<uint8_t, 1>& dst) {
        for (ptrdiff_t newest = y0 - reach; newest < y1 + reach; ++newest) {
            image.copy(x0 - reach, newest, width + 2 * reach, latest);
            source[newest].split(latest, width + 2 * reach);
            const ptrdiff_t y = newest - reach;
            if (y < y0) continue;
            const DstRows<1> to = dst.row(y - y0);
            if ((sites.colourColumns(y) ^ x0) & 1)
                row<1>(y, sites.redRow(y), gains, to, width);
            else
                row<0>(y, sites.redRow(y), gains, to, width);
        }
    }

    /// parity: of the columns of red or blue, counted from the tile's first.
    template <int parity, class Gain>
    void row(ptrdiff_t y, bool red, const Gain& gains, const DstRows<1>& to, ptrdiff_t width) const {
        using V = Wide<T>;
        const Row* rows[5];
        for (int dy = -2; dy <= 2; ++dy) rows[2 + dy] = &source[y + dy];
        const int own = red ? 2 : 0, opposite = 2 - own;  // channels
        for (ptrdiff_t x = 0; x < width; x += N) {
            const ptrdiff_t i = (x + reach) / 2;
            const auto colour = reconstruct<T, ColourSite>(Window<T, rowColumns, parity>{rows + 2, i});
            const auto green = reconstruct<T, GreenSite>(Window<T, rowColumns, 1 - parity>{rows + 2, i});
            const auto join = [&](V atColour, V atGreen, int channel) {
                const V a = scaled<T>(atColour, gains, channel), b = scaled<T>(atGreen, gains, channel);
                return parity == 0 ? joined<T>(a, b) : joined<T>(b, a);
            };
            Block<T, 3, N> block;
            block.c[own].v[0] = join(colour.c[0], green.c[1], own);
            block.c[1].v[0] = join(colour.c[1], green.c[0], 1);
            block.c[opposite].v[0] = join(colour.c[2], green.c[2], opposite);
            storeFirst<AC4<T>, N>(to, x, width - x, block);
        }
    }
};

/// The interior rectangle: columns x0 to x1 and rows y0 to y1.
template <class T, class Gain>
void ownCFAToBGRA_VNG_C1C4R_L(const MirroredImage<T>& image, BayerSites sites, ptrdiff_t x0, ptrdiff_t x1, ptrdiff_t y0,
                              ptrdiff_t y1, const Gain& gains, Image<uint8_t, 1> dst) {
    VngTile<T> tile;
    for (ptrdiff_t x = x0; x <= x1; x += tile.columns, dst.base[0] += C4<T>::bytes(0, tile.columns))
        tile.run(image, sites, x, std::min<ptrdiff_t>(tile.columns, x1 + 1 - x), y0, y1 + 1, gains, dst);
}

// ---- entries --------------------------------------------------------------------------------------------------------

template <class T>
MoxStatus cfaToBGRA(const T* src, MoxiRect srcRoi, MoxiSize srcSize, int32_t srcStep, const Mox32f* scale, T* dst,
                    int32_t dstStep, MoxBayerGrid grid) {
    if (MoxStatus s = firstOf(notNull(src, dst), sizeAtLeast(srcSize, 5, 5), gridKnown(grid))) return s;
    if (srcRoi.width < 1 || srcRoi.height < 1) return moxStatusOk;

    // The window fits in the interior only.
    const ptrdiff_t x = srcRoi.x, y = srcRoi.y, xEnd = x + srcRoi.width, yEnd = y + srcRoi.height;
    const ptrdiff_t x0 = std::max<ptrdiff_t>(x, 2), x1 = std::min<ptrdiff_t>(xEnd, srcSize.width - 2) - 1;
    const ptrdiff_t y0 = std::max<ptrdiff_t>(y, 2), y1 = std::min<ptrdiff_t>(yEnd, srcSize.height - 2) - 1;
    if (x0 > x1 || y0 > y1) return moxStatusOk;

    Image<uint8_t, 1> to = image(dst, dstStep);
    const auto pixel = [&](ptrdiff_t atX, ptrdiff_t atY) { return to.row(atY - y).p[0] + C4<T>::bytes(0, atX - x); };
    const MirroredImage<T> from(src, srcStep, srcSize);
    const Image<uint8_t, 1> interior = {{pixel(x0, y0)}, {dstStep}};
    if (!scale || (scale[0] == 1 && scale[1] == 1 && scale[2] == 1))
        ownCFAToBGRA_VNG_C1C4R_L(from, BayerSites(grid), x0, x1, y0, y1, NoGains{}, interior);
    else
        ownCFAToBGRA_VNG_C1C4R_L(from, BayerSites(grid), x0, x1, y0, y1,
                                 Gains{{splat<F32>(scale[0]), splat<F32>(scale[1]), splat<F32>(scale[2])}}, interior);

    // The frame repeats whole pixels of the interior: first its columns, then its rows over the region's full width.
    const auto repeatColumn = [&](bool wanted, ptrdiff_t column, ptrdiff_t as) {
        if (wanted)
            moxiCopy_8u_C1R(pixel(column, y0), dstStep, pixel(as, y0), dstStep,
                            {int32_t(C4<T>::bytes(0, 1)), int32_t(y1 + 1 - y0)});
    };
    repeatColumn(x == 0, x0, x0 - 2);
    repeatColumn(x == 0 || x == 1, x0, x0 - 1);
    repeatColumn(xEnd > srcSize.width - 2, x1, x1 + 1);
    repeatColumn(xEnd > srcSize.width - 1, x1, x1 + 2);

    const auto repeatRow = [&](bool wanted, ptrdiff_t row, ptrdiff_t as) {
        if (wanted)
            moxiCopy_8u_C1R(pixel(x, row), dstStep, pixel(x, as), dstStep, {int32_t(C4<T>::bytes(0, srcRoi.width)), 1});
    };
    repeatRow(y == 0, y0, y0 - 2);
    repeatRow(y == 0 || y == 1, y0, y0 - 1);
    repeatRow(yEnd > srcSize.height - 2, y1, y1 + 1);
    repeatRow(yEnd > srcSize.height - 1, y1, y1 + 2);
    return moxStatusOk;
}

}  // namespace

template <>
constexpr auto entry<moxiCFAToBGRA_VNG_8u_C1C4R_L> = cfaToBGRA<Mox8u>;
template <>
constexpr auto entry<moxiCFAToBGRA_VNG_16u_C1C4R_L> = cfaToBGRA<Mox16u>;

}  // namespace q4

#include "vng.inc"
