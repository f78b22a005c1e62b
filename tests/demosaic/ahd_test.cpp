#include <cstdlib>
#include <vector>

#include "demosaic/bayer.h"

using namespace moxtest;

namespace {

// A value for each pixel of an image and of a margin around it.
template <class Value>
class Field {
  public:
    template <class Make>
    Field(int width, int height, int margin, const Make& make) : stride_(width + 2 * margin), margin_(margin) {
        for (int y = -margin; y < height + margin; ++y)
            for (int x = -margin; x < width + margin; ++x) values_.push_back(make(x, y));
    }
    const Value& operator()(int x, int y) const { return values_[size_t((y + margin_) * stride_ + x + margin_)]; }

  private:
    int stride_, margin_;
    std::vector<Value> values_;
};

struct Rgb {
    int c[3];
};
struct Yuv {
    int y, u, v;
};
enum Direction { h, v };

// Both reconstructions of the whole image, and the votes, stage by stage.
template <class T>
struct PlainAhd {
    int w, height;
    MoxBayerGrid grid;
    Field<int> e;
    Field<int> g[2];
    Field<Rgb> rgb[2];
    Field<Yuv> yuv[2];
    Field<int> d;

    static int mirror(int i, int n) {
        while (i < 0 || i >= n) i = i < 0 ? -i : 2 * (n - 1) - i;
        return i;
    }
    static int clip(int value) { return std::clamp<int>(value, 0, std::numeric_limits<T>::max()); }

    int greenAlong(int x, int y, int dx, int dy) const {
        if (colourAt(grid, x, y) == green) return e(x, y);
        const int a = e(x - dx, y - dy), b = e(x + dx, y + dy), c = e(x, y);
        const int t = ((a + b) >> 1) + ((c - e(x - 2 * dx, y - 2 * dy) - (e(x + 2 * dx, y + 2 * dy) - c)) >> 2);
        return std::clamp(t, std::min(a, b), std::max(a, b));
    }
    Rgb colours(Direction direction, int x, int y) const {
        const Field<int>& gd = g[direction];
        const auto diff = [&](int dx, int dy) { return e(x + dx, y + dy) - gd(x + dx, y + dy); };
        const Colour own = colourAt(grid, x, y);
        Rgb result;
        result.c[green] = gd(x, y);
        if (own == green) {
            result.c[colourAt(grid, x + 1, y)] = clip(gd(x, y) + ((diff(-1, 0) + diff(1, 0)) >> 1));
            result.c[colourAt(grid, x, y + 1)] = clip(gd(x, y) + ((diff(0, -1) + diff(0, 1)) >> 1));
        } else {
            result.c[own] = e(x, y);
            const int around = diff(-1, -1) + diff(1, -1) + diff(-1, 1) + diff(1, 1);
            result.c[2 - own] = clip(gd(x, y) + (around >> 2));
        }
        return result;
    }
    static Yuv toYuv(const Rgb& p) {
        const auto [r, gr, b] = p.c;
        return {(66 * r + 129 * gr + 25 * b + 128) >> 8, (-38 * r - 74 * gr + 112 * b + 128) >> 8,
                (112 * r - 94 * gr - 18 * b + 128) >> 8};
    }
    int votes(int x, int y) const {
        const int dx[] = {-1, 1, 0, 0}, dy[] = {0, 0, -1, 1};
        int l[2][4], a[2][4];
        for (const Direction k : {h, v}) {
            for (int n = 0; n < 4; ++n) {
                const Yuv &q = yuv[k](x, y), &p = yuv[k](x + dx[n], y + dy[n]);
                const unsigned du = unsigned(p.u - q.u), dv = unsigned(p.v - q.v);
                l[k][n] = std::abs(p.y - q.y);
                a[k][n] = int(du * du + dv * dv);  // wraps, and is compared as signed
            }
        }
        const int leps = std::min(std::max(l[h][0], l[h][1]), std::max(l[v][2], l[v][3]));
        const int aeps = std::min(std::max(a[h][0], a[h][1]), std::max(a[v][2], a[v][3]));
        int count[2] = {};
        for (const Direction k : {h, v})
            for (int n = 0; n < 4; ++n) count[k] += l[k][n] <= leps && a[k][n] <= aeps;
        return count[h] - count[v];
    }

    PlainAhd(const Plane<T>& src, MoxBayerGrid gr)
        : w(src.columns()),
          height(src.rows()),
          grid(gr),
          e(w, height, 5, [&](int x, int y) { return int(src.get(mirror(x, w), mirror(y, height))); }),
          g{{w, height, 3, [&](int x, int y) { return greenAlong(x, y, 1, 0); }},
            {w, height, 3, [&](int x, int y) { return greenAlong(x, y, 0, 1); }}},
          rgb{{w, height, 2, [&](int x, int y) { return colours(h, x, y); }},
              {w, height, 2, [&](int x, int y) { return colours(v, x, y); }}},
          yuv{{w, height, 2, [&](int x, int y) { return toYuv(rgb[h](x, y)); }},
              {w, height, 2, [&](int x, int y) { return toYuv(rgb[v](x, y)); }}},
          d(w, height, 1, [&](int x, int y) { return votes(x, y); }) {}

    // A strip of columns x0 to x1 - 1, rows y0 to y1 - 1; the region's own pixels are stored.
    void strip(int x0, int x1, int y0, int y1, const MoxiRect& region, Plane<T>& dst) const {
        const int right = region.x + region.width;
        for (int y = std::max(y0, region.y); y < std::min(y1, region.y + region.height); ++y) {
            int carry = 1;
            for (int x = x0; x < std::min(x1, right); ++x) {
                int s = 0;
                for (int dy = -1; dy <= 1; ++dy)
                    for (int dx = -1; dx <= 1; ++dx) s += d(x + dx, y + dy);
                if (s != 0) carry = s;
                if (x < region.x) continue;
                for (int c = 0; c < 3; ++c)
                    dst.set(x - region.x, y - region.y, c, static_cast<T>(rgb[carry < 0 ? v : h](x, y).c[c]));
            }
        }
    }

    void strips(const MoxiRect& region, Plane<T>& dst) const {
        const int x = region.x, y = region.y, xe = x + region.width, ye = y + region.height;
        int xs = std::max(x, 5), ys = std::max(y, 5);
        int iw = std::max(std::min(w - 5, xe) - xs, 0), ih = std::max(std::min(height - 5, ye) - ys, 0);
        if (colourAt(grid, xs, 0) != red && colourAt(grid, xs, 1) != red) ++xs, --iw;
        if (colourAt(grid, 0, ys) != red && colourAt(grid, 1, ys) != red) ++ys, --ih;
        iw &= ~1, ih &= ~1;
        if (iw >= 1 && ih >= 1) strip(xs, xs + iw, ys, ys + ih, region, dst);
        if (ys > y) strip(x, xe, y, ys, region, dst);
        if (ys + ih < ye) strip(x, xe, ys + ih, ye, region, dst);
        if (xs > x && ih >= 1) strip(x, xs, ys, ys + ih, region, dst);
        if (xs + iw < xe && ih >= 1) strip(xs + iw, xe, ys, ys + ih, region, dst);
    }
};

template <class T>
void plainAhd(const Plane<T>& src, const Case& c, Plane<T>& want) {
    PlainAhd<T>(src, c.grid).strips(c.roi, want);
}

// The scratch is no longer than needed, and lies at any address between pages that may not be touched.
template <class T>
struct Scratch {
    Random random{3};
    Plane<Mox8u> plane;
    explicit Scratch(int width) : plane(rowSize(width), 30, 1, Layout{.gap = 1, .guard = Guard::after}, random) {}

    static int rowSize(int width) {
        int32_t step;
        const int64_t size = moxiDemosaicAHDGetBufferSize(width, sizeof(T), &step);
        EXPECT_EQ(size, 30 * step);
        return step;
    }
};

template <class T, class Function>
void expectAhd(Symbol<Function> function) {
    expectReconstruction<T>(
        5, 3,
        [&](const Library& lib, const Plane<T>& src, const Case& c, Plane<T>& dst) {
            const Scratch<T> scratch(c.roi.width);
            return lib(function)(src.data(), c.roi, c.size, src.step(), dst.data(), dst.step(), c.grid,
                                 scratch.plane.data(), scratch.plane.step());
        },
        plainAhd<T>);
}

TEST(Ahd, MatchesItsRule8u) { expectAhd<Mox8u>(MOX_EXPORT(moxiDemosaicAHD_8u_C1C3R)); }
TEST(Ahd, MatchesItsRule16u) { expectAhd<Mox16u>(MOX_EXPORT(moxiDemosaicAHD_16u_C1C3R)); }

TEST(Ahd, RegionIsCut) {
    Random random(1);
    Plane<Mox16u> src(20, 14, 1, random), want(20, 9, 3, random);
    const Plane<Mox16u> before = want;
    const Case c = {{20, 14}, {0, 5, 20, 9}, moxBayerGridGBRG};
    plainAhd(src, c, want);
    Scratch<Mox16u> scratch(20);
    forEachLibrary([&](const Library& lib) {
        Plane<Mox16u> got = before;
        const auto call = [&](MoxiRect roi, Mox8u* buffer) {
            EXPECT_EQ(MOX_CALL(lib, moxiDemosaicAHD_16u_C1C3R)(src.data(), roi, c.size, src.step(), got.data(),
                                                               got.step(), c.grid, buffer, scratch.plane.step()),
                      moxStatusOk);
        };
        for (const MoxiRect roi : {MoxiRect{3, 3, 0, 2}, {3, 3, 2, -4}, {20, 3, 2, 2}, {3, INT32_MAX, 2, INT32_MAX}})
            call(roi, nullptr);
        ASSERT_TRUE(same(got, before));
        // A negative origin does not shorten the region; the far side is cut however far it lies.
        call({-7, 5, 20, INT32_MAX}, scratch.plane.data());
        ASSERT_TRUE(same(got, want));
    });
}

}  // namespace
