#include "moxcc/chroma_filter.h"

#include <algorithm>

#include "support/picture.h"
#include "support/support.h"

using namespace moxtest;

namespace {

int clamp255(int v) { return v < 0 ? 0 : v > 255 ? 255 : v; }
int up(int a, int b) { return (a + b + 1) >> 1; }
int down(int a, int b) { return (a + b) >> 1; }

// ---- four taps ------------------------------------------------------------------------------------------------------

TEST(ChromaFilter, InterpolatesRowsWithFourTaps) {
    const auto reference = [](const Picture& src, Picture& want, const Values&) {
        const int width = src.size().width & ~1, height = src.size().height & ~7, last = height / 2 - 1;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) want.setLuma(x, y, src.luma(x, y));
        for (const int k : {0, 1}) {
            for (int i = 0; i < width / 2; ++i) {
                const auto c = [&](int r) { return src.chroma(i, std::clamp(r, 0, last), k); };
                for (int r = 0; r <= last; ++r) {
                    want.setChroma(i, 2 * r, k, c(r));
                    want.setChroma(i, 2 * r + 1, k,
                                   clamp255((-c(r - 1) + 9 * c(r) + 9 * c(r + 1) - c(r + 2) + 8) >> 4));
                }
            }
        }
    };
    for (const char* name : {"moxiYCbCr420ToYCbCr422_Filter_8u_P3R", "moxiYCrCb420ToYCbCr422_Filter_8u_P3R",
                             "moxiYCbCr420ToYCbCr422_Filter_8u_P2P3R"})
        expect(name, reference, {.toWidth = 140, .maxHeight = 26});
}

// ---- slices ---------------------------------------------------------------------------------------------------------

int F(int a, int b, int c) { return (a + 2 * b + c) >> 2; }
int E(int a, int b) { return (3 * a + b) >> 2; }
int V1(int a, int b, int c) { return up(up(a, b), up(c, b)); }
int V2(int a, int b, int c) { return up(b, up(a, c)); }
int V3(int a, int b) { return up(a, up(a, b)); }
int F4(int a, int b, int c) { return clamp255((a + 2 * b + c + 4) >> 2); }
int E4(int a, int b) { return clamp255((3 * a + b + 4) >> 2); }

bool isWhole(int mode) { return (mode & 21) == 21; }

/// The source of a slice: just the rows that it may read.
struct SliceSource {
    SliceSource(int mode, int w, int h, int unit, Random& random)
        : above(isWhole(mode) || mode == 1 ? 0 : 3),
          chromaAbove(above ? 1 : 0),
          y(w, above + (isWhole(mode) || mode == 16 ? h : h - 1), 1, moxtest::Layout::random(random, unit), random),
          chroma(w, chromaAbove + h / 2, 1, moxtest::Layout::random(random, unit), random) {
        y.protect();
        chroma.protect();
    }
    int r(int x, int row) const { return y.get(x, row + above); }
    int c(int x, int row) const { return chroma.get(x, row + chromaAbove); }

    int above, chromaAbove;
    Plane<Mox8u> y, chroma;
};

/// The rows that a slice writes: from -2 (0 at the top), to h - 3 (h - 1 at the bottom). At least one row is set up.
struct Written {
    Written(int mode, int h)
        : begin(isWhole(mode) || mode == 1 ? 0 : -2), end(isWhole(mode) || mode == 16 ? h : h - 2) {}
    int rows() const { return std::max(end - begin, 2); }
    int begin, end;
};

/// Luma of a packed slice's row y, column x.
int packedLuma(const SliceSource& s, int mode, int w, int h, int x, int y) {
    const auto r = [&](int row) { return s.r(x, row); };
    const bool narrow = x < w / 8 * 8, wide = x < w / 32 * 32;
    if (isWhole(mode)) {
        if (h == 2) return y == 0 ? E4(r(0), r(1)) : E4(r(1), r(0));
        if (y == 0) return E4(r(0), r(1));
        if (y == 1) return F4(r(0), r(1), r(2));
        if (y == h - 2) return F4(r(h - 3), r(h - 2), r(h - 1));
        if (y == h - 1) return E4(r(h - 1), r(h - 2));
        if (wide) return V1(r(y - 1), r(y), r(y + 1));
        if (x % 2 == 0) return clamp255(1 + ((down(r(y - 1), r(y + 1)) + r(y)) >> 1));
        return F4(r(y - 1), r(y), r(y + 1));
    }
    if (mode == 1 && y == 0) return narrow ? V3(r(0), r(1)) : E(r(0), r(1));
    if (mode == 16 && y == h - 1) return narrow ? V3(r(h - 1), r(h - 2)) : E(r(h - 1), r(h - 2));
    const bool edge = (mode == 1 && y == 1) || (mode == 16 && y == h - 2);
    return (edge ? narrow : wide) ? V1(r(y - 1), r(y), r(y + 1)) : F(r(y - 1), r(y), r(y + 1));
}

/// Chroma byte x of a packed slice's row y.
int packedChroma(const SliceSource& s, int mode, int w, int h, int x, int y) {
    const auto c = [&](int row) { return s.c(x, row); };
    const int column = x & ~1;
    const bool narrow = column < w / 8 * 8, wide = column < w / 32 * 32;
    const int j = (y + 2) / 2 - 1, K = h / 2 - 1;
    if (isWhole(mode)) {
        if (h == 2) return c(0);
        if (y < 2) return down(c(0), c(1));
        if (y >= h - 2) return down(c(K - 1), c(K));
        return wide ? up(c(j), c(j + 1)) : down(c(j), c(j + 1));
    }
    if (mode == 16 && y >= h - 2) return narrow ? up(c(K - 1), c(K)) : down(c(K - 1), c(K));
    return (mode == 1 && y < 2 ? narrow : wide) ? up(c(j), c(j + 1)) : down(c(j), c(j + 1));
}

/// Luma of a planar slice's row y, column x.
int planarLuma(const SliceSource& s, int mode, bool aligned, int w, int h, int x, int y) {
    const auto r = [&](int row) { return s.r(x, row); };
    const bool named = x < w / 16 * 16;
    const auto inner = [&](auto rule) { return named ? rule(r(y - 1), r(y), r(y + 1)) : F(r(y - 1), r(y), r(y + 1)); };
    if (isWhole(mode)) {
        if (h == 2) return y == 0 ? E4(r(0), r(1)) : E4(r(1), r(0));
        return y == 0 ? E(r(0), r(1)) : y == h - 1 ? E(r(h - 1), r(h - 2)) : inner(V1);
    }
    if (mode == 1 && y == 0) return named ? V3(r(0), r(1)) : E(r(0), r(1));
    if (mode == 1) return aligned ? inner(V1) : inner(V2);
    if (mode == 4) return inner(V1);
    if (y == h - 1) return aligned ? V3(r(h - 1), r(h - 2)) : E(r(h - 1), r(h - 2));
    return aligned ? inner(V1) : inner(F);
}

/// Byte x of the pairs that a planar slice's chroma row j is split from.
int planarChroma(const SliceSource& s, int mode, bool aligned, int w, int h, int x, int j) {
    const auto c = [&](int row) { return s.c(x, row); };
    const bool named = x / 2 < w / 2 / 16 * 16;
    const int K = h / 2 - 1;
    if (isWhole(mode)) {
        if (h == 2) return c(0);
        if (j == K) return down(c(K - 1), c(K));
        return named ? up(c(j), c(j + 1)) : down(c(j), c(j + 1));
    }
    if (mode == 16) {
        const int a = j == K ? K - 1 : j;
        return aligned ? up(c(a), c(a + 1)) : down(c(a), c(a + 1));
    }
    return named ? up(c(j), c(j + 1)) : down(c(j), c(j + 1));
}

constexpr int modes[] = {moxSliceFirst, moxSliceMiddle, moxSliceLast, moxSliceAll, 23, 85};

TEST(ChromaFilter, SoftensSlicesIntoPackedRows) {
    forEachSize(
        [&](MoxiSize size, Random& random) {
            ++size.height;
            const int w = size.width & ~1, h = size.height & ~1;
            for (const int mode : modes) {
                const SliceSource src(mode, w, h, 1, random);
                const Written rows(mode, h);
                const Plane<Mox8u> before(2 * w, rows.rows(), 1, random);
                Plane<Mox8u> want = before;
                for (int y = rows.begin; y < rows.end; ++y) {
                    for (int x = 0; x < w; ++x) {
                        const auto set = [&](int byte, int v) {
                            want.set(byte, y - rows.begin, static_cast<Mox8u>(v));
                        };
                        set(2 * x, packedLuma(src, mode, w, h, x, y));
                        set(2 * x + 1, packedChroma(src, mode, w, h, x, y));
                    }
                }
                forEachLibrary([&](const Library& lib) {
                    Plane<Mox8u> got = before;
                    ASSERT_EQ(MOX_CALL(lib, moxiYCbCr420ToYCbCr422_Filter_8u_P2C2R)(
                                  src.y.row(src.above), src.y.step(), src.chroma.row(src.chromaAbove),
                                  src.chroma.step(), got.row(-rows.begin), got.step(), size, mode),
                              moxStatusOk);
                    ASSERT_TRUE(same(got, want)) << "mode " << mode;
                });
            }
        },
        2, 100, 9);
}

/// Where the planar form looks at alignment, calls that satisfy it, or all but a condition or two, are as likely as
/// not.
TEST(ChromaFilter, SoftensSlicesIntoPlanes) {
    int alignedCalls = 0, oneConditionShort = 0;
    const auto run = [&](MoxiSize size, int unit, Random& random) {
        const int w = size.width & ~1, h = size.height & ~1;
        for (const int mode : modes) {
            const auto anyUnit = [&] { return unit > 1 && random.oneIn(12) ? unit / 2 : unit; };
            const SliceSource src(mode, w, h, anyUnit(), random);
            const Written rows(mode, h);
            std::vector<Plane<Mox8u>> before;
            before.reserve(3);
            before.emplace_back(w, rows.rows(), 1, moxtest::Layout::random(random, anyUnit()), random);
            for (int i = 0; i < 2; ++i)
                before.emplace_back(w / 2, rows.rows() / 2, 1, moxtest::Layout::random(random, anyUnit()), random);
            const auto start = [&](const Plane<Mox8u>& plane, int i) {
                return plane.row(i == 0 ? -rows.begin : -rows.begin / 2);
            };

            const auto on = [](uintptr_t to, auto value) { return uintptr_t(value) % to == 0 ? 0 : 1; };
            int failed = (size.width % 64 > 1) + on(16, h) + on(16, src.y.step()) + on(16, src.y.row(src.above)) +
                         on(16, src.chroma.row(src.chromaAbove)) + on(32, src.chroma.step());
            for (int i = 0; i < 3; ++i) failed += on(16, start(before[i], i)) + on(32, before[i].step());
            const bool aligned = failed == 0;
            alignedCalls += aligned;
            oneConditionShort += failed == 1;

            std::vector<Plane<Mox8u>> want(before);
            for (int y = rows.begin; y < rows.end; ++y) {
                for (int x = 0; x < w; ++x) {
                    want[0].set(x, y - rows.begin, static_cast<Mox8u>(planarLuma(src, mode, aligned, w, h, x, y)));
                }
            }
            for (int j = rows.begin / 2; j < rows.end / 2; ++j) {
                for (int x = 0; x < w; ++x) {
                    want[1 + x % 2].set(x / 2, j - rows.begin / 2,
                                        static_cast<Mox8u>(planarChroma(src, mode, aligned, w, h, x, j)));
                }
            }
            forEachLibrary([&](const Library& lib) {
                std::vector<Plane<Mox8u>> got(before);
                Mox8u* planes[3];
                int32_t steps[3];
                for (int i = 0; i < 3; ++i) planes[i] = start(got[i], i), steps[i] = got[i].step();
                ASSERT_EQ(MOX_CALL(lib, moxiYCbCr420ToYCrCb420_Filter_8u_P2P3R)(
                              src.y.row(src.above), src.y.step(), src.chroma.row(src.chromaAbove), src.chroma.step(),
                              planes, steps, size, mode),
                          moxStatusOk);
                for (int i = 0; i < 3; ++i)
                    ASSERT_TRUE(same(got[i], want[i])) << "mode " << mode << ", plane " << i << ", aligned " << aligned;
            });
        }
    };
    forEachSize([&](MoxiSize size, Random& random) { run({size.width, size.height + 1}, 1, random); }, 2, 100, 9);
    Random random(1);
    for (int i = 0; i < 60 && !::testing::Test::HasFailure(); ++i) {
        const int wider = random.oneIn(8) ? 2 : static_cast<int>(random.between(0, 1));
        const int higher = random.oneIn(8) ? 2 : static_cast<int>(random.between(0, 1));
        run({static_cast<int>(random.between(1, 3)) * 64 + wider, static_cast<int>(random.between(1, 2)) * 16 + higher},
            32, random);
    }
    EXPECT_GT(alignedCalls, 50);
    EXPECT_GT(oneConditionShort, 50);
}

TEST(ChromaFilter, SlicesOfUnknownModesDoNothing) {
    Random random(1);
    const Plane<Mox8u> y(4, 4, 1, random), c(4, 2, 1, random), packed(8, 4, 1, random), dstY(4, 4, 1, random),
        cb(2, 2, 1, random), cr(2, 2, 1, random);
    Mox8u* planes[3] = {dstY.data(), cb.data(), cr.data()};
    const int32_t steps[3] = {dstY.step(), cb.step(), cr.step()};
    const MoxiSize roi = {4, 4};
    forEachLibrary([&](const Library& lib) {
        const Plane<Mox8u> before = packed, beforeY = dstY;
        for (const int mode : {0, 2, 3, 5, 17, 20, 64, -22}) {
            EXPECT_EQ(MOX_CALL(lib, moxiYCbCr420ToYCbCr422_Filter_8u_P2C2R)(y.data(), y.step(), c.data(), c.step(),
                                                                            packed.data(), packed.step(), roi, mode),
                      moxStatusOk);
            EXPECT_EQ(MOX_CALL(lib, moxiYCbCr420ToYCrCb420_Filter_8u_P2P3R)(y.data(), y.step(), c.data(), c.step(),
                                                                            planes, steps, roi, mode),
                      moxStatusOk);
        }
        EXPECT_TRUE(same(packed, before));
        EXPECT_TRUE(same(dstY, beforeY));
    });
}

// ---- to BGR ---------------------------------------------------------------------------------------------------------

TEST(ChromaFilter, InterpolatesColumnsOnTheWayToBgr) {
    const auto reference = [](const Picture& src, Picture& want, const Values& values) {
        const int pairs = src.size().width / 2, wholeSums = (pairs - 1) & ~7;
        for (int row = 0; row < (src.size().height & ~1); ++row) {
            for (int x = 0; x < 2 * pairs; ++x) {
                const auto c = [&](int kind) {
                    const int own = src.chroma(x / 2, row / 2, kind);
                    return x % 2 == 0 || x / 2 == pairs - 1 ? own : up(own, src.chroma(x / 2 + 1, row / 2, kind));
                };
                const int y = src.luma(x, row) - 16, u = c(0) - 128, v = c(1) - 128;
                int b, g, r;
                if (x / 2 >= wholeSums) {
                    r = (4769 * y + 6537 * v) >> 12;
                    g = (4769 * y - 3330 * v - 1605 * u) >> 12;
                    b = (4769 * y + 8263 * u) >> 12;
                } else {
                    const auto term = [](int value, int k) { return (128 * value * k) >> 16; };
                    r = (term(y, 4769) + term(v, 6537)) >> 3;
                    g = (term(y, 4769) - (term(u, 1605) + term(v, 3330))) >> 3;
                    b = (term(y, 4769) + term(u, 8263)) >> 3;
                }
                const int rgb[] = {r, g, b, static_cast<int>(values.alpha)};
                for (int k = 0; k < 4; ++k) want.setColour(x, row, k, clamp255(rgb[k]));
            }
        }
    };
    expect("moxiYCrCb420ToBGR_Filter_8u_P3C4R", reference);
    Random random(2);
    for (const int width : {2, 16, 34})
        expectAt("moxiYCrCb420ToBGR_Filter_8u_P3C4R", {width, manyPixels / width / 2 * 2}, random, reference);
}

}  // namespace
