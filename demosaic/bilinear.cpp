// Bilinear reconstruction of Bayer images, with a choice of direction for green.
#include "demosaic/bayer.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

/// (a + b + c + d + 2) >> 2 without leaving the samples' width: the mean of means is too large by one where a pair was
/// rounded up and the means themselves are rounded up.
template <class V>
MOX_INLINE V mean4(V a, V b, V c, V d) {
    const V ab = avg(a, b), cd = avg(c, d);
    return avg(ab, cd) - (((a ^ b) | (c ^ d)) & (ab ^ cd) & splat<V>(1));
}

/// A vector of pixels of a row along which sites of the row's own colour, red or blue, alternate with green ones. The
/// channels are the row's colour, green, and the other colour.
///
/// rows: five source rows around the one to make, column x of each where the pointer points at. greenSites: a mask of
/// the green sites. gradients: a mask of the columns where the direction of least change decides upon green; elsewhere
/// all four neighbours count, as they do where both directions change alike.
///
/// The reflected image makes this the rule for the outermost rows and columns, too: means over an absent neighbour and
/// its reflection count the existing one twice.
template <class T>
MOX_INLINE Block<T, 3, pixelsPerVector<T>> bilinear(const T* const (&rows)[5], Vec<T> greenSites, Vec<T> gradients) {
    using V = Vec<T>;
    const auto p = [&](int dx, int dy) { return load<V>(rows[2 + dy] + dx); };
    const V here = p(0, 0), left = p(-1, 0), right = p(1, 0), above = p(0, -1), below = p(0, 1);
    const V horizontal = avg(left, right), vertical = avg(above, below);
    const V cross = mean4(above, below, left, right);
    const V diagonal = mean4(p(-1, -1), p(1, -1), p(-1, 1), p(1, 1));

    const V gv = absDiff(p(0, -2), p(0, 2)) & gradients, gh = absDiff(p(-2, 0), p(2, 0)) & gradients;
    const V most = max(gv, gh);
    const V green = select(eq(gv, most), select(eq(gh, most), cross, horizontal), vertical);

    Block<T, 3, pixelsPerVector<T>> px;
    px.c[0].v[0] = select(greenSites, horizontal, here);
    px.c[1].v[0] = select(greenSites, here, green);
    px.c[2].v[0] = select(greenSites, vertical, diagonal);
    return px;
}

// ---- tiles ----------------------------------------------------------------------------------------------------------

template <class T>
struct BilinearTile {
    static constexpr int N = pixelsPerVector<T>;
    static constexpr int columns = 1024 / int(sizeof(T));
    static constexpr int reach = 2;  // of the rule, and so of its copies of rows beyond the tile

    struct Row {
        alignas(vectorBytes) T sample[columns + 2 * reach + N];
    };
    RowRing<Row, 8> source;
    Row interior = {};  // mask of the columns with two neighbours on each side
    const Row nowhere = {};

    void run(const MirroredImage<T>& image, BayerSites sites, ptrdiff_t x0, ptrdiff_t width, ptrdiff_t y0, ptrdiff_t y1,
             uint8_t* dst, ptrdiff_t dstStep) {
        for (ptrdiff_t i = 0; i < width; ++i)
            interior.sample[i] = T(x0 + i >= reach && x0 + i < image.width - reach ? -1 : 0);
        const Vec<T> evenSites = elementMask<T>([](int e) { return e % 2 == 0; });

        for (ptrdiff_t newest = y0 - reach; newest < y1 + reach; ++newest) {
            image.copy(x0 - reach, newest, width + 2 * reach, source[newest].sample);
            const ptrdiff_t y = newest - reach;
            if (y < y0) continue;

            const bool colourFirst = ((sites.colourColumns(y) ^ x0) & 1) == 0;
            const Vec<T> greenSites = evenSites ^ splat<Vec<T>>(T(colourFirst ? -1 : 0));
            const Row& gradients = y >= reach && y < image.height - reach ? interior : nowhere;
            const DstRows<1> to = {{dst + (y - y0) * dstStep}};
            if (sites.redRow(y))
                row<C3<T>>(y, greenSites, gradients, to, width);
            else
                row<Reversed<C3<T>>>(y, greenSites, gradients, to, width);
        }
    }

    /// Dst takes the row's own colour first.
    template <class Dst>
    void row(ptrdiff_t y, Vec<T> greenSites, const Row& gradients, const DstRows<1>& to, ptrdiff_t width) const {
        const T* rows[5];
        for (int dy = -2; dy <= 2; ++dy) rows[2 + dy] = source[y + dy].sample + reach;
        for (ptrdiff_t x = 0; x < width; x += N) {
            storeFirst<Dst, N>(to, x, width - x, bilinear<T>(rows, greenSites, load<Vec<T>>(gradients.sample + x)));
            for (const T*& r : rows) r += N;
        }
    }
};

// ---- entries --------------------------------------------------------------------------------------------------------

template <class T>
MoxStatus cfaToRGB(const T* src, MoxiRect srcRoi, MoxiSize srcSize, int32_t srcStep, T* dst, int32_t dstStep,
                   MoxBayerGrid grid) {
    if (MoxStatus s = firstOf(notNull(src, dst), sizeAtLeast(srcSize, 2, 2), gridKnown(grid))) return s;
    if (srcRoi.x < 0 || srcRoi.y < 0) return moxStatusOk;

    const ptrdiff_t xEnd = std::min<ptrdiff_t>(ptrdiff_t(srcRoi.x) + srcRoi.width, srcSize.width);
    const ptrdiff_t yEnd = std::min<ptrdiff_t>(ptrdiff_t(srcRoi.y) + srcRoi.height, srcSize.height);
    if (srcRoi.y >= yEnd) return moxStatusOk;

    const MirroredImage<T> image(src, wholeSamples<T>(srcStep), srcSize);
    BilinearTile<T> tile;
    uint8_t* to = reinterpret_cast<uint8_t*>(dst);
    for (ptrdiff_t x = srcRoi.x; x < xEnd; x += tile.columns, to += C3<T>::bytes(0, tile.columns))
        tile.run(image, BayerSites(grid), x, std::min<ptrdiff_t>(tile.columns, xEnd - x), srcRoi.y, yEnd, to,
                 wholeSamples<T>(dstStep));
    return moxStatusOk;
}

}  // namespace

template <>
constexpr auto entry<moxiCFAToRGB_8u_C1C3R> = cfaToRGB<Mox8u>;
template <>
constexpr auto entry<moxiCFAToRGB_16u_C1C3R> = cfaToRGB<Mox16u>;

}  // namespace q4

#include "bilinear.inc"
