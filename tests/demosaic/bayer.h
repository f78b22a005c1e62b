// What the tests of all reconstructions share: the plain view of a Bayer image, the regions to convert, and the
// comparison of the exports with a plain reconstruction.
#ifndef DEMOSAIC_BAYER_H
#define DEMOSAIC_BAYER_H

#include <algorithm>

#include "moxcc/demosaic.h"
#include "support/support.h"

namespace moxtest {

enum Colour { red, green, blue };

inline Colour colourAt(MoxBayerGrid grid, int x, int y) {
    static const char* const patterns[] = {"BGGR", "RGGB", "GBRG", "GRBG"};
    const char c = patterns[grid][(x & 1) + 2 * (y & 1)];
    return c == 'R' ? red : c == 'G' ? green : blue;
}

/// Samples of noise, of coarse noise (in which gradients tie), of extremes, of edges, of one value, of almost one value
/// (in which gradients are as small as the least threshold), or of a check of extremes with a few others among them (in
/// which 16-bit distances of chroma leave 31 bits).
template <class T>
void fillBayer(Plane<T>& src, Random& random) {
    const auto kind = random.between(0, 6);
    const T low = random.sample<T>(), high = random.sample<T>(), top = std::numeric_limits<T>::max();
    const auto checkWidth = random.between(1, 3), checkHeight = random.between(1, 3);
    int site = -1;
    src.fill([&]() -> T {
        ++site;
        switch (kind) {
            case 0:
                return random.sample<T>();
            case 1:
                return static_cast<T>(low + random.between(0, 3));
            case 2:
                return random.oneIn(2) ? T(0) : top;
            case 3:
                return random.oneIn(5) ? low : high;
            case 4:
                return random.oneIn(25) ? T(low ^ 1) : low;
            case 5: {
                const auto x = site % src.columns() / checkWidth, y = site / src.columns() / checkHeight;
                return random.oneIn(50) ? random.sample<T>() : (x ^ y) & 1 ? top : T(0);
            }
            default:
                return low;
        }
    });
}

struct Case {
    MoxiSize size;  // of the source
    MoxiRect roi;
    MoxBayerGrid grid;
};

/// Sources of all sizes from smallest x smallest to 24 x 24 with a few regions each, all regions of some small sources,
/// and some larger sources, on all grids.
template <class Body>
void forEachCase(int smallest, const Body& body) {
    Random random(7);
    const auto run = [&](MoxiSize size, MoxiRect roi) {
        if (!::testing::Test::HasFailure()) body(Case{size, roi, MoxBayerGrid(random.bits() % 4)}, random);
    };
    const auto someRegion = [&](MoxiSize size) {
        const auto x = int(random.between(0, size.width - 1)), y = int(random.between(0, size.height - 1));
        return MoxiRect{x, y, int(random.between(1, size.width - x)), int(random.between(1, size.height - y))};
    };
    for (int height = smallest; height <= 24; ++height) {
        for (int width = smallest; width <= 24; ++width) {
            run({width, height}, {0, 0, width, height});
            for (int i = 0; i < 4; ++i) run({width, height}, someRegion({width, height}));
        }
    }
    // Every span of columns with some spans of rows, and the other way round.
    for (const int n : {smallest, 7, 12, 17}) {
        for (int first = 0; first < n; ++first) {
            for (int count = 1; count <= n - first; ++count) {
                const MoxiSize size = {n, 13}, turned = {13, n};
                const MoxiRect other = someRegion(size);
                run(size, {first, other.y, count, other.height});
                run(turned, {other.y, first, other.height, count});
            }
        }
    }
    for (int i = 0; i < 40; ++i) {
        const MoxiSize size = {int(random.between(25, 150)), int(random.between(smallest, 40))};
        run(size, someRegion(size));
    }
    run({1100, 9}, {0, 0, 1100, 9});
    run({1100, 21}, {3, 1, 1090, 20});
    run({40, 300}, {1, 0, 38, 299});
}

/// Calls convert(lib, src, case, dst) for each case, and compares with reference(src, case, want).
template <class T, class Convert, class Reference>
void expectReconstruction(int smallest, int channels, const Convert& convert, const Reference& reference) {
    forEachCase(smallest, [&](const Case& c, Random& random) {
        Plane<T> src(c.size.width, c.size.height, 1, random);
        fillBayer(src, random);
        Plane<T> want(c.roi.width, c.roi.height, channels, random);
        const Plane<T> before = want;
        reference(src, c, want);
        src.protect();
        forEachLibrary([&](const Library& lib) {
            Plane<T> got = before;
            ASSERT_EQ(convert(lib, src, c, got), moxStatusOk);
            ASSERT_TRUE(same(got, want)) << "source " << c.size.width << " x " << c.size.height << ", region "
                                         << c.roi.x << ", " << c.roi.y << ", " << c.roi.width << " x " << c.roi.height
                                         << ", grid " << c.grid;
        });
    });
}

}  // namespace moxtest

#endif
