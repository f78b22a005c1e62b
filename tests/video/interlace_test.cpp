#include "moxcc/chroma_filter.h"

#include "video/pictures.h"

using namespace moxtest;
using namespace moxtest::video;

namespace {

int chromaOf(const Picture& p, int k, int i, int r) { return p.get(chroma(p.layout(), k, i, r)); }

void merge(const Picture& c, Picture& d, int k, int i, int h) {
    for (int n = 0; n < h / 4; ++n) {
        const auto set = [&](int r, int v) { d.set(chroma(d.layout(), k, i, r), static_cast<Mox8u>(v >> 2)); };
        set(2 * n, 3 * chromaOf(c, k, i, 4 * n) + chromaOf(c, k, i, 4 * n + 2) + 2);
        set(2 * n + 1, chromaOf(c, k, i, 4 * n + 1) + 3 * chromaOf(c, k, i, 4 * n + 3) + 2);
    }
}

void interpolate(const Picture& src, Picture& d, int k, int i, int h) {
    const auto c = [&](int r) { return chromaOf(src, k, i, r); };
    const auto set = [&](int r, int v) { d.set(chroma(d.layout(), k, i, r), static_cast<Mox8u>(v)); };
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

struct Form {
    AnyFunction function;
    Sampling from;
    VideoLayout src;
    Sampling to;
    VideoLayout dst;
    void (*reference)(const Picture& src, Picture& dst, int kind, int column, int height);
};
const Form forms[] = {
    {FORM(moxiYCbCr422To420_Interlace_8u_P3R), s422, P3, s420, P3, merge},
    {FORM(moxiCbYCr422ToYCbCr420_Interlace_8u_C2P3R), s422, C2chromaFirst, s420, P3, merge},
    {FORM(moxiYCbCr420To422_Interlace_8u_P3R), s420, P3, s422, P3, interpolate},
    {FORM(moxiYCbCr420ToCbYCr422_Interlace_8u_P3C2R), s420, P3, s422, C2chromaFirst, interpolate},
};

TEST(Interlace, MatchesItsRule) {
    for (const Form& form : forms) {
        forEachSize(
            [&](MoxiSize size, Random& random) {
                size.height += 3;
                const MoxiSize cut = {size.width & ~1, size.height & ~3};
                const Picture src(form.src, form.from, cut, random), before(form.dst, form.to, cut, random);
                const auto reference = [&](const Picture& from, Picture& to) {
                    for (int y = 0; y < cut.height; ++y) {
                        for (int x = 0; x < cut.width; ++x)
                            to.set(luma(form.dst, x, y), from.get(luma(form.src, x, y)));
                    }
                    for (int i = 0; i < cut.width / 2; ++i) {
                        for (int k = 0; k < 2; ++k) form.reference(from, to, k, i, cut.height);
                    }
                };
                const bool whole = size.width == cut.width && size.height == cut.height;
                expectSame(form.function, src, before, size, reference, whole ? moxStatusOk : moxStatusOddSize);
            },
            2, 140, 14);
    }
}

}  // namespace
