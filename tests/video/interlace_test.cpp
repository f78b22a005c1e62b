#include "moxcc/chroma_filter.h"
#include "support/picture.h"
#include "support/support.h"

using namespace moxtest;

namespace {

void merge(const Picture& c, Picture& d, int k, int i, int h) {
    for (int n = 0; n < h / 4; ++n) {
        d.setChroma(i, 2 * n, k, (3 * c.chroma(i, 4 * n, k) + c.chroma(i, 4 * n + 2, k) + 2) >> 2);
        d.setChroma(i, 2 * n + 1, k, (c.chroma(i, 4 * n + 1, k) + 3 * c.chroma(i, 4 * n + 3, k) + 2) >> 2);
    }
}

void interpolate(const Picture& src, Picture& d, int k, int i, int h) {
    const auto c = [&](int r) { return src.chroma(i, r, k); };
    const auto set = [&](int r, int v) { d.setChroma(i, r, k, v); };
    set(0, c(0));
    set(1, c(1));
    for (int a = 0; 2 * a + 2 < h - 2; a += 2) {
        const int r = 2 * a + 2;
        set(r, (5 * c(a) + 3 * c(a + 2) + 4) >> 3);
        set(r + 1, (7 * c(a + 1) + c(a + 3) + 4) >> 3);
        set(r + 2, (c(a) + 7 * c(a + 2) + 4) >> 3);
        set(r + 3, (3 * c(a + 1) + 5 * c(a + 3) + 4) >> 3);
    }
    set(h - 2, c(h / 2 - 2));
    set(h - 1, c(h / 2 - 1));
}

void expectInterlace(const char* name, void (*rule)(const Picture&, Picture&, int kind, int column, int height)) {
    const auto reference = [&](const Picture& src, Picture& want, const Values&) {
        const int width = src.size().width & ~1, height = src.size().height & ~3;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) want.setLuma(x, y, src.luma(x, y));
        for (int i = 0; i < width / 2; ++i)
            for (const int k : {0, 1}) rule(src, want, k, i, height);
    };
    expect(name, reference, {.toWidth = 140, .maxHeight = 14});
}

TEST(Interlace, MatchesItsRule) {
    expectInterlace("moxiYCbCr422To420_Interlace_8u_P3R", merge);
    expectInterlace("moxiCbYCr422ToYCbCr420_Interlace_8u_C2P3R", merge);
    expectInterlace("moxiYCbCr420To422_Interlace_8u_P3R", interpolate);
    expectInterlace("moxiYCbCr420ToCbYCr422_Interlace_8u_P3C2R", interpolate);
}

}  // namespace
