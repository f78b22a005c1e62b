#include <emmintrin.h>

#include <cmath>
#include <cstdlib>
#include <vector>

#include "demosaic/bayer.h"

using namespace moxtest;

namespace {

struct Term {
    int weight, ax, ay, bx, by;
};
struct Entry {
    std::vector<std::pair<int, int>> a, b, c;
};

// In the order N, E, S, W, NE, SE, NW, SW.
const std::vector<Term> straightTerms[4] = {
    {{2, 0, -2, 0, 0}, {2, 0, -1, 0, 1}, {1, -1, -2, -1, 0}, {1, 1, -2, 1, 0}, {1, -1, -1, -1, 1}, {1, 1, -1, 1, 1}},
    {{2, 0, 0, 2, 0}, {2, -1, 0, 1, 0}, {1, 0, -1, 2, -1}, {1, 0, 1, 2, 1}, {1, -1, -1, 1, -1}, {1, -1, 1, 1, 1}},
    {{2, 0, 0, 0, 2}, {2, 0, -1, 0, 1}, {1, -1, 0, -1, 2}, {1, 1, 0, 1, 2}, {1, -1, -1, -1, 1}, {1, 1, -1, 1, 1}},
    {{2, -2, 0, 0, 0}, {2, -1, 0, 1, 0}, {1, -2, -1, 0, -1}, {1, -2, 1, 0, 1}, {1, -1, -1, 1, -1}, {1, -1, 1, 1, 1}}};
const std::vector<Term> diagonalTerms[2][4] = {
    {{{2, 2, -2, 0, 0}, {2, 1, -1, -1, 1}, {1, 1, -2, 0, -1}, {1, 0, -1, -1, 0}, {1, 2, -1, 1, 0}, {1, 1, 0, 0, 1}},
     {{2, 0, 0, 2, 2}, {2, -1, -1, 1, 1}, {1, 0, -1, 1, 0}, {1, -1, 0, 0, 1}, {1, 1, 0, 2, 1}, {1, 0, 1, 1, 2}},
     {{2, -2, -2, 0, 0}, {2, -1, -1, 1, 1}, {1, -1, -2, 0, -1}, {1, -2, -1, -1, 0}, {1, 0, -1, 1, 0}, {1, -1, 0, 0, 1}},
     {{2, 0, 0, -2, 2}, {2, 1, -1, -1, 1}, {1, 0, -1, -1, 0}, {1, -1, 0, -2, 1}, {1, 1, 0, 0, 1}, {1, 0, 1, -1, 2}}},
    {{{2, 2, -2, 0, 0}, {2, 1, -1, -1, 1}, {2, 1, -2, -1, 0}, {2, 2, -1, 0, 1}},
     {{2, 0, 0, 2, 2}, {2, -1, -1, 1, 1}, {2, 0, -1, 2, 1}, {2, -1, 0, 1, 2}},
     {{2, -2, -2, 0, 0}, {2, -1, -1, 1, 1}, {2, -1, -2, 1, 0}, {2, -2, -1, 0, 1}},
     {{2, 0, 0, -2, 2}, {2, 1, -1, -1, 1}, {2, 0, -1, -2, 1}, {2, 1, 0, -1, 2}}}};

// Four samples make twice a colour by a shift.
const Entry atColour[8] = {{{{0, -2}, {0, 0}}, {{0, -1}, {0, -1}}, {{-1, -1}, {1, -1}}},
                           {{{0, 0}, {2, 0}}, {{1, 0}, {1, 0}}, {{1, -1}, {1, 1}}},
                           {{{0, 0}, {0, 2}}, {{0, 1}, {0, 1}}, {{-1, 1}, {1, 1}}},
                           {{{-2, 0}, {0, 0}}, {{-1, 0}, {-1, 0}}, {{-1, -1}, {-1, 1}}},
                           {{{0, 0}, {2, -2}}, {{0, -1}, {1, -2}, {1, 0}, {2, -1}}, {{1, -1}, {1, -1}}},
                           {{{0, 0}, {2, 2}}, {{0, 1}, {1, 0}, {1, 2}, {2, 1}}, {{1, 1}, {1, 1}}},
                           {{{-2, -2}, {0, 0}}, {{-2, -1}, {-1, -2}, {-1, 0}, {0, -1}}, {{-1, -1}, {-1, -1}}},
                           {{{-2, 2}, {0, 0}}, {{-2, 1}, {-1, 0}, {-1, 2}, {0, 1}}, {{-1, 1}, {-1, 1}}}};
const Entry atGreen[8] = {{{{-1, -2}, {1, -2}}, {{0, -2}, {0, 0}}, {{0, -1}, {0, -1}}},
                          {{{1, 0}, {1, 0}}, {{0, 0}, {2, 0}}, {{2, -1}, {2, 1}}},
                          {{{-1, 2}, {1, 2}}, {{0, 0}, {0, 2}}, {{0, 1}, {0, 1}}},
                          {{{-1, 0}, {-1, 0}}, {{-2, 0}, {0, 0}}, {{-2, -1}, {-2, 1}}},
                          {{{1, -2}, {1, 0}}, {{1, -1}, {1, -1}}, {{0, -1}, {2, -1}}},
                          {{{1, 0}, {1, 2}}, {{1, 1}, {1, 1}}, {{0, 1}, {2, 1}}},
                          {{{-1, -2}, {-1, 0}}, {{-1, -1}, {-1, -1}}, {{-2, -1}, {0, -1}}},
                          {{{-1, 0}, {-1, 2}}, {{-1, 1}, {-1, 1}}, {{-2, 1}, {0, 1}}}};

// By the instruction, as the rounding mode and values beyond 32 bits are part of the rule.
int toInt(float v) { return _mm_cvtss_si32(_mm_set_ss(v)); }

template <class T>
int saturated(int v) {
    return std::clamp<int>(v, 0, std::numeric_limits<T>::max());
}

// Red, green and blue of one interior pixel, without gains.
template <class T>
void plainPixel(const Plane<T>& src, MoxBayerGrid grid, int x, int y, int (&rgb)[3]) {
    const auto p = [&](int dx, int dy) { return int(src.get(x + dx, y + dy)); };
    const Colour own = colourAt(grid, x, y);

    int gradient[8];
    for (int d = 0; d < 8; ++d) {
        gradient[d] = 0;
        for (const Term& t : d < 4 ? straightTerms[d] : diagonalTerms[own == green][d - 4])
            gradient[d] += t.weight * std::abs(p(t.ax, t.ay) - p(t.bx, t.by));
    }
    const auto [low, high] = std::minmax_element(gradient, gradient + 8);
    const int limit = *low + std::max(*high >> 1, 1);

    int n = 0, a = 0, b = 0, c = 0;
    const auto entry = [&](const std::vector<std::pair<int, int>>& samples) {
        int sum = 0;
        for (const auto& [dx, dy] : samples) sum += p(dx, dy);
        return samples.size() == 4 ? sum >> 1 : sum;
    };
    for (int d = 0; d < 8; ++d) {
        if (gradient[d] >= limit) continue;
        const Entry& e = own == green ? atGreen[d] : atColour[d];
        ++n, a += entry(e.a), b += entry(e.b), c += entry(e.c);
    }
    const auto colour = [&](int sum) {
        const int ownSum = own == green ? b : a;
        const volatile float difference = float(sum - ownSum), twice = float(2 * n);
        return saturated<T>(p(0, 0) + toInt(difference / twice));
    };
    rgb[own] = p(0, 0);
    if (own == green) {
        rgb[colourAt(grid, x + 1, y)] = colour(a);
        rgb[colourAt(grid, x, y + 1)] = colour(c);
    } else {
        rgb[green] = colour(b);
        rgb[colourAt(grid, x + 1, y + 1)] = colour(c);
    }
}

template <class T>
void plainVng(const Plane<T>& src, const Case& c, const float* scale, Plane<T>& want) {
    const int w = c.size.width, h = c.size.height;
    const int x = c.roi.x, y = c.roi.y, xe = x + c.roi.width, ye = y + c.roi.height;
    const int x0 = std::max(x, 2), y0 = std::max(y, 2);
    const int x1 = xe < w - 2 ? xe - 1 : w - 3, y1 = ye < h - 2 ? ye - 1 : h - 3;
    if (x0 > x1 || y0 > y1) return;
    for (int row = y0; row <= y1; ++row) {
        for (int column = x0; column <= x1; ++column) {
            int rgb[3];
            plainPixel(src, c.grid, column, row, rgb);
            for (int k = 0; k < 3; ++k) {
                const volatile float product = float(rgb[2 - k]) * (scale ? scale[k] : 1.0f);
                want.set(column - x, row - y, k, static_cast<T>(saturated<T>(toInt(product))));
            }
        }
    }
    const auto repeat = [&](int fromX, int fromY, int toX, int toY) {
        for (int k = 0; k < 4; ++k) want.set(toX - x, toY - y, k, want.get(fromX - x, fromY - y, k));
    };
    for (int row = y0; row <= y1; ++row) {
        if (x == 0) repeat(x0, row, x0 - 2, row);
        if (x <= 1) repeat(x0, row, x0 - 1, row);
        if (xe > w - 2) repeat(x1, row, x1 + 1, row);
        if (xe > w - 1) repeat(x1, row, x1 + 2, row);
    }
    for (int column = x; column < xe; ++column) {
        if (y == 0) repeat(column, y0, column, y0 - 2);
        if (y <= 1) repeat(column, y0, column, y0 - 1);
        if (ye > h - 2) repeat(column, y1, column, y1 + 1);
        if (ye > h - 1) repeat(column, y1, column, y1 + 2);
    }
}

template <class T, class Function>
void expectVng(Symbol<Function> function, const float* scale) {
    expectReconstruction<T>(
        5, 4,
        [&](const Library& lib, const Plane<T>& src, const Case& c, Plane<T>& dst) {
            return lib(function)(src.data(), c.roi, c.size, src.step(), scale, dst.data(), dst.step(), c.grid);
        },
        [&](const Plane<T>& src, const Case& c, Plane<T>& want) { plainVng(src, c, scale, want); });
}

TEST(Vng, MatchesItsRule) { expectVng<Mox8u>(MOX_EXPORT(moxiCFAToBGRA_VNG_8u_C1C4R_L), nullptr); }

TEST(Vng, GainsOfAnyKind) {
    const float kinds[][3] = {{1, 1, 1.5f}, {0.5f, 1, 1}, {1, -1, 1}, {1e10f, -1e10f, 40000}, {NAN, INFINITY, 0.1f}};
    for (const auto& scale : kinds) {
        expectVng<Mox8u>(MOX_EXPORT(moxiCFAToBGRA_VNG_8u_C1C4R_L), scale);
        expectVng<Mox16u>(MOX_EXPORT(moxiCFAToBGRA_VNG_16u_C1C4R_L), scale);
    }
}

TEST(Vng, FollowsTheRoundingMode) {
    const float scale[] = {0.5f, 1.0f, 1.1f};
    for (const uint32_t mode : mxcsr::roundings) {
        underMxcsr(mode, [&] {
            expectVng<Mox8u>(MOX_EXPORT(moxiCFAToBGRA_VNG_8u_C1C4R_L), scale);
            expectVng<Mox16u>(MOX_EXPORT(moxiCFAToBGRA_VNG_16u_C1C4R_L), nullptr);
        });
    }
}

TEST(Vng, RegionsWithoutInteriorAreLeft) {
    Random random(2);
    const Plane<Mox16u> src(8, 8, 1, random), before(8, 8, 4, random);
    forEachLibrary([&](const Library& lib) {
        const Plane<Mox16u> dst = before;
        for (const MoxiRect roi : {MoxiRect{0, 0, 0, 5}, {0, 0, 5, -1}, {0, 0, 2, 8}, {0, 6, 8, 2}})
            EXPECT_EQ(MOX_CALL(lib, moxiCFAToBGRA_VNG_16u_C1C4R_L)(src.data(), roi, {8, 8}, src.step(), nullptr,
                                                                   dst.data(), dst.step(), moxBayerGridGRBG),
                      moxStatusOk);
        EXPECT_TRUE(same(dst, before));
    });
}

}  // namespace
