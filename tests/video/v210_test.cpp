#include "moxcc/v210.h"

#include <cmath>

#include "support/support.h"

using namespace moxtest;

namespace {

Layout topDown(Random& random, int unit) {
    Layout layout = Layout::random(random, unit);
    layout.bottomUp = false;  // steps below 1 are refused
    return layout;
}

struct Form {
    Symbol<decltype(moxiYUV422v210ToBGR_709HDTV_32u16u_C3)> function;
    enum { gray, redHigh, blueHigh } result;

    int words(int width) const {
        const int partial[2][6] = {{0, 1, 2, 2, 3, 4}, {0, 1, 2, 3, 3, 4}};
        return width / 6 * 4 + partial[result != gray][width % 6];
    }
};

const Form forms[] = {{MOX_EXPORT(moxiYUV422v210ToGray_709HDTV_32u16u_C3C1), Form::gray},
                      {MOX_EXPORT(moxiYUV422v210ToBGR_709HDTV_32u16u_C3), Form::redHigh},
                      {MOX_EXPORT(moxiYUV422v210ToRGB_709HDTV_32u16u_C3), Form::blueHigh}};

/// The n-th sample of a row; the samples run Cb Y Cr Y for each pair, three to a word.
int sample(const Plane<Mox32u>& src, int y, int n) { return src.get(n / 3, y) >> (n % 3 * 10) & 0x3FF; }

int field(float v, int most) {
    const float down = std::floor(v);
    const float part = v - down;
    const int n = static_cast<int>(down);
    const int rounded = part > 0.5f || (part == 0.5f && n % 2 != 0) ? n + 1 : n;
    return rounded < 0 ? 0 : rounded > most ? most : rounded;
}

void reference(const Form& form, const Plane<Mox32u>& src, Plane<Mox16u>& want) {
    for (int y = 0; y < want.rows(); ++y) {
        for (int x = 0; x < want.columns(); ++x) {
            const int luma = sample(src, y, 2 * x + 1);
            if (form.result == Form::gray) {
                want.set(x, y, static_cast<Mox16u>(luma));
                continue;
            }
            const auto l = static_cast<float>(luma);
            const float u = static_cast<float>(sample(src, y, x / 2 * 4)) - 512.0f;
            const float v = static_cast<float>(sample(src, y, x / 2 * 4 + 2)) - 512.0f;
            const float red = 1.54f * v + l;
            const float greenPart = -0.459f * v + l;
            const float green = greenPart + -0.183f * u;
            const float blue = l + 1.816f * u;
            const int r = field(red, 31), g = field(green, 63), b = field(blue, 31);
            want.set(x, y,
                     static_cast<Mox16u>(form.result == Form::redHigh ? r << 11 | g << 5 | b : b << 11 | g << 5 | r));
        }
    }
}

TEST(V210, MatchesItsRule) {
    for (const Form& form : forms) {
        forEachSize(
            [&](MoxiSize roi, Random& random) {
                Plane<Mox32u> src(form.words(roi.width), roi.height, 1, topDown(random, 4), random);
                // Dark luma and weak chroma more often than chance: results within the fields.
                if (roi.width % 2) {
                    src.fill([&] {
                        const auto any = [&] { return random.bits() % 64; };
                        const auto grey = [&] { return 512 - 24 + random.bits() % 48; };
                        const bool chromaFirst = random.oneIn(2);
                        return chromaFirst ? grey() | any() << 10 | grey() << 20 : any() | grey() << 10 | any() << 20;
                    });
                }
                src.protect();
                const Plane<Mox16u> before(roi.width, roi.height, 1, topDown(random, 2), random);
                for (const uint32_t mode : mxcsr::roundings) {
                    Plane<Mox16u> want = before;
                    underMxcsr(mode, [&] { reference(form, src, want); });
                    forEachLibrary([&](const Library& lib) {
                        Plane<Mox16u> got = before;
                        underMxcsr(mode, [&] {
                            EXPECT_EQ(lib(form.function)(src.data(), src.step() / 4, got.data(), got.step() / 2, roi),
                                      moxStatusOk);
                        });
                        ASSERT_TRUE(same(got, want)) << roundingName(mode);
                    });
                }
            },
            1, 110, 3);
    }
}

}  // namespace
