#include "moxcc/v210.h"

#include <cmath>

#include "support/picture.h"
#include "support/support.h"

using namespace moxtest;

namespace {

enum Result { gray, redHigh, blueHigh };

/// The n-th sample of a row; the samples run Cb Y Cr Y for each pair, three to a word.
int sample(const Picture& src, int y, int n) { return src.get<Mox32u>(n / 3, y) >> (n % 3 * 10) & 0x3FF; }

int field(float v, int most) {
    const float down = std::floor(v);
    const float part = v - down;
    const int n = static_cast<int>(down);
    const int rounded = part > 0.5f || (part == 0.5f && n % 2 != 0) ? n + 1 : n;
    return rounded < 0 ? 0 : rounded > most ? most : rounded;
}

void reference(Result result, const Picture& src, Picture& want) {
    for (int y = 0; y < want.size().height; ++y) {
        for (int x = 0; x < want.size().width; ++x) {
            const int luma = sample(src, y, 2 * x + 1);
            if (result == gray) {
                want.set(x, y, 0, static_cast<Mox16u>(luma));
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
            want.set(x, y, 0, static_cast<Mox16u>(result == redHigh ? r << 11 | g << 5 | b : b << 11 | g << 5 | r));
        }
    }
}

/// Dark luma and weak chroma more often than chance: results within the fields.
void fillDark(Picture& src, Random& random) {
    if (random.oneIn(2)) return;
    src.fill<Mox32u>([&] {
        const auto any = [&] { return random.bits() % 64; };
        const auto grey = [&] { return 512 - 24 + random.bits() % 48; };
        return Mox32u(random.oneIn(2) ? grey() | any() << 10 | grey() << 20 : any() | grey() << 10 | any() << 20);
    });
}

void expectWords(const char* name, Result result) {
    expect(name, [=](const Picture& src, Picture& want, const Values&) { reference(result, src, want); },
           {.toWidth = 110, .roundings = {std::begin(mxcsr::roundings), std::end(mxcsr::roundings)}, .fill = fillDark});
}

TEST(V210, MatchesItsRule) {
    expectWords("moxiYUV422v210ToGray_709HDTV_32u16u_C3C1", gray);
    expectWords("moxiYUV422v210ToBGR_709HDTV_32u16u_C3", redHigh);
    expectWords("moxiYUV422v210ToRGB_709HDTV_32u16u_C3", blueHigh);
}

}  // namespace
