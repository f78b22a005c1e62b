#include <cstdlib>

#include "demosaic/bayer.h"

using namespace moxtest;

namespace {

// One pixel after the other by the definition's own cases: corner, edge, frame, interior.
template <class T>
class PlainBilinear {
  public:
    PlainBilinear(const Plane<T>& src, MoxBayerGrid grid) : src_(src), grid_(grid), w_(src.columns()), h_(src.rows()) {}

    unsigned sample(Colour wanted, int x, int y) const {
        const Colour own = colourAt(grid_, x, y);
        if (wanted == own) return p(x, y);
        if (own == green) return wanted == colourAt(grid_, x + 1, y) ? alongRow(x, y) : alongColumn(x, y);
        return wanted == green ? greenAt(x, y) : opposite(x, y);
    }

  private:
    unsigned p(int x, int y) const { return src_.get(x, y); }
    static unsigned avg2(unsigned a, unsigned b) { return (a + b + 1) >> 1; }
    static unsigned avg4(unsigned a, unsigned b, unsigned c, unsigned d) { return (a + b + c + d + 2) >> 2; }

    unsigned alongRow(int x, int y) const {
        if (x == 0) return p(1, y);
        if (x == w_ - 1) return p(w_ - 2, y);
        return avg2(p(x - 1, y), p(x + 1, y));
    }
    unsigned alongColumn(int x, int y) const {
        if (y == 0) return p(x, 1);
        if (y == h_ - 1) return p(x, h_ - 2);
        return avg2(p(x, y - 1), p(x, y + 1));
    }

    bool outerColumn(int x) const { return x == 0 || x == w_ - 1; }
    bool outerRow(int y) const { return y == 0 || y == h_ - 1; }
    int innerX(int x) const { return x == 0 ? 1 : w_ - 2; }
    int innerY(int y) const { return y == 0 ? 1 : h_ - 2; }

    unsigned opposite(int x, int y) const {
        if (outerColumn(x) && outerRow(y)) return p(innerX(x), innerY(y));
        if (outerRow(y)) return avg2(p(x - 1, innerY(y)), p(x + 1, innerY(y)));
        if (outerColumn(x)) return avg2(p(innerX(x), y - 1), p(innerX(x), y + 1));
        return avg4(p(x - 1, y - 1), p(x + 1, y - 1), p(x - 1, y + 1), p(x + 1, y + 1));
    }
    unsigned greenAt(int x, int y) const {
        if (outerColumn(x) && outerRow(y)) return avg2(p(innerX(x), y), p(x, innerY(y)));
        if (outerRow(y)) return (p(x - 1, y) + p(x + 1, y) + 2 * p(x, innerY(y)) + 2) >> 2;
        if (outerColumn(x)) return (p(x, y - 1) + p(x, y + 1) + 2 * p(innerX(x), y) + 2) >> 2;
        const unsigned all = avg4(p(x, y - 1), p(x - 1, y), p(x + 1, y), p(x, y + 1));
        if (x < 2 || x > w_ - 3 || y < 2 || y > h_ - 3) return all;
        const int gv = std::abs(int(p(x, y - 2)) - int(p(x, y + 2)));
        const int gh = std::abs(int(p(x - 2, y)) - int(p(x + 2, y)));
        if (gv < gh) return avg2(p(x, y - 1), p(x, y + 1));
        if (gh < gv) return avg2(p(x - 1, y), p(x + 1, y));
        return all;
    }

    const Plane<T>& src_;
    MoxBayerGrid grid_;
    int w_, h_;
};

template <class T>
void plainBilinear(const Plane<T>& src, const Case& c, Plane<T>& want) {
    const PlainBilinear<T> plain(src, c.grid);
    for (int y = 0; y < c.roi.height; ++y)
        for (int x = 0; x < c.roi.width; ++x)
            for (const Colour colour : {red, green, blue})
                want.set(x, y, colour, static_cast<T>(plain.sample(colour, c.roi.x + x, c.roi.y + y)));
}

template <class T, class Function>
void expectBilinear(Symbol<Function> function) {
    expectReconstruction<T>(
        2, 3,
        [&](const Library& lib, const Plane<T>& src, const Case& c, Plane<T>& dst) {
            return lib(function)(src.data(), c.roi, c.size, src.step(), dst.data(), dst.step(), c.grid);
        },
        plainBilinear<T>);
}

TEST(Bilinear, MatchesItsRule8u) { expectBilinear<Mox8u>(MOX_EXPORT(moxiCFAToRGB_8u_C1C3R)); }
TEST(Bilinear, MatchesItsRule16u) { expectBilinear<Mox16u>(MOX_EXPORT(moxiCFAToRGB_16u_C1C3R)); }

TEST(Bilinear, RegionIsCutOnTheRightAndBelow) {
    Random random(1);
    Plane<Mox16u> src(20, 10, 1, random), want(4, 3, 3, random);
    const Plane<Mox16u> before = want;
    const Case c = {{20, 10}, {16, 7, 4, 3}, moxBayerGridGBRG};
    plainBilinear(src, c, want);
    forEachLibrary([&](const Library& lib) {
        Plane<Mox16u> got = before;
        const auto call = [&](MoxiRect roi, int more) {
            EXPECT_EQ(MOX_CALL(lib, moxiCFAToRGB_16u_C1C3R)(src.data(), roi, c.size, src.step() + more, got.data(),
                                                            got.step() + more, c.grid),
                      moxStatusOk);
        };
        // Nothing to do.
        for (const MoxiRect roi : {MoxiRect{3, 3, 0, 2},
                                   {3, 3, 2, 0},
                                   {3, 3, -4, 2},
                                   {3, 3, 2, -4},
                                   {20, 3, 2, 2},
                                   {3, 10, 2, 2},
                                   {-1, 3, 2, 2},
                                   {3, -1, 2, 2}})
            call(roi, 0);
        ASSERT_TRUE(same(got, before));
        // The far side is cut however far it lies; an odd step loses its low bit.
        call({16, 7, INT32_MAX, INT32_MAX}, 1);
        ASSERT_TRUE(same(got, want));
    });
}

}  // namespace
